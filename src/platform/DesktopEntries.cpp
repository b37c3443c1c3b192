// SPDX-License-Identifier: MIT
#include "platform/DesktopEntries.h"

#include "platform/desktopEntry.h"
#include "platform/gio.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QStandardPaths>
#include <QThread>

#include <chrono>
#include <future>
#include <utility>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

constexpr auto farewellPatience = 500ms;
constexpr int mostKept = 128;
constexpr qsizetype mostWaiting = 128;
constexpr qint64 largestIconFile = 1'000'000; // bytes
constexpr int largestIcon = 1'024; // pixels
constexpr QSize shownIcon(64, 64); // pixels

/// Applications install their icons here, whatever theme the user has.
QStringList iconFolders()
{
    QStringList folders;
    const QStringList dataFolders = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    for (const char *folder : {"icons/hicolor/64x64/apps", "icons/hicolor/128x128/apps", "icons/hicolor/scalable/apps",
             "icons/hicolor/48x48/apps", "icons/hicolor/256x256/apps", "icons/hicolor/32x32/apps", "pixmaps"}) {
        for (const QString &dataFolder : dataFolders) {
            folders.append(dataFolder + u'/' + QLatin1String(folder));
        }
    }
    return folders;
}

/// Empty if there is no such icon.
QString findIconFile(const QString &iconName)
{
    if (iconName.isEmpty() || QDir::isAbsolutePath(iconName)) {
        return iconName;
    }
    const QStringList folders = iconName.contains(u'/') ? QStringList() : iconFolders();
    for (const QString &folder : folders) {
        for (const char *suffix : {".png", ".svg", ".xpm"}) {
            if (const QString file = folder + u'/' + iconName + QLatin1String(suffix); QFileInfo(file).isFile()) {
                return file;
            }
        }
    }
    return {};
}

/// Null if there is no such icon, or if it is none.
std::shared_ptr<const QImage> readIcon(const QString &iconName)
{
    const QFileInfo file(findIconFile(iconName));
    if (!file.isFile() || file.size() > largestIconFile) {
        return nullptr;
    }
    QImageReader reader(file.filePath());
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > largestIcon || size.height() > largestIcon) {
        return nullptr;
    }
    if (size.width() > shownIcon.width() || size.height() > shownIcon.height()) {
        reader.setScaledSize(size.scaled(shownIcon, Qt::KeepAspectRatio).expandedTo({1, 1}));
    }
    QImage icon = reader.read();
    return icon.isNull() ? nullptr : std::make_shared<const QImage>(std::move(icon));
}

DesktopEntryFacts readFacts(const QString &identifier)
{
    const DesktopEntry entry = findDesktopEntry(identifier);
    if (!entry) {
        return {};
    }
    const std::unique_ptr<char, decltype(Gio::free)> icon(
        gio()->string(entry.get(), G_KEY_FILE_DESKTOP_KEY_ICON), gio()->free);
    const QString iconName = QString::fromUtf8(icon.get());
    return {.iconName = iconName,
        .icon = readIcon(iconName),
        .isDBusActivatable = gio()->boolean(entry.get(), G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE) != FALSE};
}

QHash<QString, DesktopEntryFacts> readAll(const QStringList &identifiers)
{
    QHash<QString, DesktopEntryFacts> read;
    for (const QString &identifier : identifiers) {
        read.insert(identifier, readFacts(identifier));
    }
    return read;
}
} // namespace

DesktopEntries::DesktopEntries(QObject *parent)
    : QObject(parent)
    , m_known(mostKept)
{
}

DesktopEntries::~DesktopEntries()
{
    // A file system may hang, and a thread cannot be ended from outside.
    if (m_thread) {
        m_thread->wait(QDeadlineTimer(farewellPatience));
    }
}

std::optional<DesktopEntryFacts> DesktopEntries::facts(const QString &identifier)
{
    if (const DesktopEntryFacts *known = m_known.object(identifier)) {
        return *known;
    }
    if (!m_waiting.contains(identifier) && !m_underWay.contains(identifier) && m_waiting.size() < mostWaiting) {
        m_waiting.append(identifier);
        readWaiting();
    }
    return std::nullopt;
}

void DesktopEntries::readWaiting()
{
    if (m_thread || m_waiting.isEmpty()) {
        return;
    }
    m_underWay = std::exchange(m_waiting, {});
    std::promise<QHash<QString, DesktopEntryFacts>> promise;
    const auto read = promise.get_future().share();
    m_thread = QThread::create([identifiers = m_underWay, promise = std::move(promise)]() mutable {
        promise.set_value(readAll(identifiers));
    });
    connect(m_thread, &QThread::finished, this, [this, read] { keep(read.get()); });
    connect(m_thread, &QThread::finished, m_thread, &QObject::deleteLater);
    m_thread->start();
}

void DesktopEntries::keep(const QHash<QString, DesktopEntryFacts> &read)
{
    m_thread.clear();
    const QStringList identifiers = std::exchange(m_underWay, {});
    for (const QString &identifier : identifiers) {
        m_known.insert(identifier, new DesktopEntryFacts(read.value(identifier)));
    }
    readWaiting();
    for (const QString &identifier : identifiers) {
        Q_EMIT factsKnown(identifier);
    }
}

} // namespace tunedeck

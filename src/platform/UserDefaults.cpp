// SPDX-License-Identifier: MIT
#include "platform/UserDefaults.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QLoggingCategory>
#include <QSignalBlocker>
#include <QStandardPaths>
#include <QStringList>

#include <utility>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

Q_LOGGING_CATEGORY(log, "tunedeck.settings", QtWarningMsg)

constexpr qsizetype longestString = 1000;
constexpr qsizetype longestList = 1000;
/// A program that writes the file in place truncates it first. After this time it is complete.
constexpr auto settleTime = 50ms;
constexpr auto retryInterval = 500ms;
constexpr auto farewellPatience = 500ms;

QString fileInConfigurationFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/tunedeck/tunedeck.conf");
}

/// The file returns numbers and Booleans as text, and a list of one text as that text. Converting them at once keeps a
/// value equal to itself after it was written and read.
QVariant asStored(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QStringList: {
        const QStringList texts = value.toStringList();
        return texts.size() > 1 ? value : QVariant(texts.value(0));
    }
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return value.toString();
    default:
        return value;
    }
}

std::optional<qlonglong> asInteger(const QVariant &value)
{
    bool isNumber = false;
    const qlonglong number = value.toString().toLongLong(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

std::optional<bool> asBool(const QVariant &value)
{
    const QString text = value.toString();
    const auto is = [&text](QLatin1String name) { return text.compare(name, Qt::CaseInsensitive) == 0; };
    if (is(QLatin1String("true")) || is(QLatin1String("yes"))) {
        return true;
    }
    if (is(QLatin1String("false")) || is(QLatin1String("no"))) {
        return false;
    }
    const auto number = asInteger(value);
    return number ? std::optional(*number != 0) : std::nullopt;
}

std::optional<QString> asString(const QVariant &value)
{
    if (value.typeId() != QMetaType::QString) {
        return std::nullopt;
    }
    return value.toString().left(longestString);
}

std::optional<QStringList> asStringList(const QVariant &value)
{
    if (value.typeId() != QMetaType::QString && value.typeId() != QMetaType::QStringList) {
        return std::nullopt;
    }
    QStringList texts = value.toStringList().mid(0, longestList);
    if (texts == QStringList(QString())) {
        return QStringList();
    }
    for (QString &text : texts) {
        text.truncate(longestString);
    }
    return texts;
}
} // namespace

UserDefaults::UserDefaults(QObject *parent)
    : UserDefaults(fileInConfigurationFolder(), parent)
{
}

UserDefaults::UserDefaults(const QString &path, QObject *parent)
    : QObject(parent)
    , m_file(path)
{
    m_reloadTimer.setSingleShot(true);
    m_reloadTimer.setInterval(settleTime);
    m_saveTimer.setSingleShot(true);
    connect(&m_reloadTimer, &QTimer::timeout, this, &UserDefaults::reload);
    connect(&m_saveTimer, &QTimer::timeout, this, [this] { save(0ms); });

    // Further changes do not restart the timer, so that a file that changes all the time is followed too.
    const auto reloadSoon = [this] {
        if (!m_reloadTimer.isActive()) {
            m_reloadTimer.start();
        }
    };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, reloadSoon);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, reloadSoon);
    connect(this, &UserDefaults::valueChanged, this, [this](const QString &key) {
        if (key == SettingsKey::appearanceUpdatesDockIcon) {
            Q_EMIT appearanceUpdatesDockIconChanged();
        }
    });
    watch();
    m_stored = m_file.readOrSetAside();
}

UserDefaults::~UserDefaults()
{
    const QSignalBlocker blocker(this);
    save(farewellPatience);
}

bool UserDefaults::storedBool(const QString &key)
{
    const QVariantHash values = SettingsFile(fileInConfigurationFolder()).read().value_or(QVariantHash());
    return asBool(values.value(key)).value_or(false);
}

void UserDefaults::registerDefaults(const QVariantHash &defaults)
{
    for (const auto &[key, value] : defaults.asKeyValueRange()) {
        m_registered.insert(key, asStored(value));
    }
}

bool UserDefaults::boolForKey(const QString &key) const
{
    return firstFitting(key, asBool);
}

qlonglong UserDefaults::integerForKey(const QString &key) const
{
    return firstFitting(key, asInteger);
}

QString UserDefaults::stringForKey(const QString &key) const
{
    return firstFitting(key, asString);
}

QStringList UserDefaults::stringListForKey(const QString &key) const
{
    return firstFitting(key, asStringList);
}

void UserDefaults::setBool(const QString &key, bool value)
{
    setValue(key, value);
}

void UserDefaults::setValue(const QString &key, const QVariant &value)
{
    m_unsaved.insert(key, asStored(value));
    m_saveTimer.start(0ms);
    Q_EMIT valueChanged(key);
}

void UserDefaults::setSystemValue(const QString &key, const QVariant &value)
{
    const QVariant before = fallback(key);
    if (value.isValid()) {
        m_system.insert(key, asStored(value));
    } else {
        m_system.remove(key);
    }
    const bool userHasOwn = m_unsaved.contains(key) || m_stored.contains(key);
    if (!userHasOwn && fallback(key) != before) {
        Q_EMIT valueChanged(key);
    }
}

void UserDefaults::bind(const QString &key, QObject *context, std::function<void(bool)> setter)
{
    setter(boolForKey(key));
    connect(
        this, &UserDefaults::valueChanged, context, [this, key, setter = std::move(setter)](const QString &changed) {
            if (changed == key) {
                setter(boolForKey(key));
            }
        });
}

bool UserDefaults::appearanceUpdatesDockIcon() const
{
    return boolForKey(SettingsKey::appearanceUpdatesDockIcon);
}

void UserDefaults::setAppearanceUpdatesDockIcon(bool value)
{
    setBool(SettingsKey::appearanceUpdatesDockIcon, value);
}

template <typename T> T UserDefaults::firstFitting(const QString &key, std::optional<T> (*fit)(const QVariant &)) const
{
    for (const QVariant &value :
        {m_unsaved.value(key, m_stored.value(key)), m_system.value(key), m_registered.value(key)}) {
        if (const auto fitting = fit(value)) {
            return *fitting;
        }
    }
    return {};
}

QVariant UserDefaults::fallback(const QString &key) const
{
    return m_system.value(key, m_registered.value(key));
}

void UserDefaults::reload()
{
    watch();
    const QVariantHash before = std::exchange(m_stored, m_file.readOrSetAside());

    QVariantHash all = before;
    all.insert(m_stored);
    QStringList changedKeys;
    for (auto key = all.keyBegin(); key != all.keyEnd(); ++key) {
        const QVariant otherwise = fallback(*key);
        if (before.value(*key, otherwise) != m_stored.value(*key, otherwise) && !m_unsaved.contains(*key)) {
            changedKeys.append(*key);
        }
    }
    for (const QString &key : std::as_const(changedKeys)) {
        Q_EMIT valueChanged(key);
    }
}

void UserDefaults::save(std::chrono::milliseconds patience)
{
    if (m_unsaved.isEmpty()) {
        return;
    }
    watch();
    if (!m_file.makeRoomForLock()) {
        reportUnwritable();
        return;
    }
    QLockFile lock(m_file.lockPath());
    if (!lock.tryLock(static_cast<int>(patience.count()))) {
        if (lock.error() == QLockFile::LockFailedError) {
            m_saveTimer.start(retryInterval);
        } else {
            reportUnwritable();
        }
        return;
    }
    // Other processes may have written since. Their values are kept.
    reload();
    QVariantHash values = m_stored;
    values.insert(m_unsaved);
    if (!m_file.write(values)) {
        reportUnwritable();
        return;
    }
    m_stored = values;
    m_unsaved.clear();
}

/// Watches the file and its folder. Editors and QSettings replace the file, which ends the watch of the file; the
/// folder's watch reports the new one. Only the file's watch reports a write in place. Creates the folder if it is
/// missing.
void UserDefaults::watch()
{
    const QString folder = QFileInfo(m_file.path()).path();
    QDir().mkpath(folder);
    for (const QString &path : {folder, m_file.path()}) {
        if (QFileInfo::exists(path)) {
            m_watcher.addPath(path);
        }
    }
}

void UserDefaults::reportUnwritable()
{
    if (!std::exchange(m_unwritableReported, true)) {
        qCDebug(log) << "cannot write" << m_file.path() << "so settings last for this run only";
    }
}

} // namespace tunedeck

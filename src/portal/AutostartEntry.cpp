// SPDX-License-Identifier: MIT
#include "portal/AutostartEntry.h"

#include "platform/BundleInfo.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace tunedeck {

namespace {
/// The entry's last line tells whether anybody has changed the lines before it since this program wrote them.
constexpr char markStart[] = "X-Tunedeck-Unchanged=";
/// No entry is longer, in bytes.
constexpr qint64 longestEntry = 65'536;

QString entryIn(const QString &folder)
{
    return QStringLiteral("%1/%2.desktop").arg(folder, applicationId);
}

QByteArray markOf(const QByteArray &lines)
{
    return markStart + QCryptographicHash::hash(lines, QCryptographicHash::Sha256).toHex() + '\n';
}

QByteArray entryWith(const QString &command)
{
    const QByteArray lines = QStringLiteral("[Desktop Entry]\nType=Application\nName=%1\nIcon=%2\nExec=%3\n")
                                 .arg(bundleInfo(u"CFBundleName").value_or(QString()), applicationId, command)
                                 .toUtf8();
    return lines + markOf(lines);
}

/// No value if it cannot be read. What is no plain file, such as a pipe, is not read: it could keep the thread.
std::optional<QByteArray> readEntry(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    return file.read(longestEntry);
}

bool isThere(const QString &path)
{
    const QFileInfo file(path);
    return file.exists() || file.isSymLink();
}

bool isOurs(const QByteArray &entry)
{
    const qsizetype mark = entry.lastIndexOf(markStart);
    return mark >= 0 && entry.mid(mark) == markOf(entry.left(mark));
}

/// Whether a portal has made the entry in the same folder, and nobody has added to it since.
bool isPortals(const QByteArray &entry)
{
    constexpr std::array<QByteArrayView, 2> marks = {"X-XDP-Autostart", "X-Flatpak"};
    constexpr std::array<QByteArrayView, 4> others = {"Type", "Name", "Exec", "DBusActivatable"};
    bool isMarked = false;
    QList<QByteArray> lines = entry.trimmed().split('\n');
    if (lines.takeFirst() != "[Desktop Entry]") {
        return false;
    }
    for (const QByteArray &line : std::as_const(lines)) {
        const QByteArray key = line.left(line.indexOf('='));
        const bool isMark = std::ranges::find(marks, key) != marks.end();
        if (!isMark && std::ranges::find(others, key) == others.end()) {
            return false;
        }
        isMarked = isMarked || isMark;
    }
    return isMarked;
}

/// Whether the entry is another's: a user's own, or one that a user has changed.
bool isUsers(const QString &path)
{
    const std::optional<QByteArray> entry = readEntry(path);
    return !entry || (!isOurs(*entry) && !isPortals(*entry));
}
} // namespace

QString autostartFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/autostart");
}

bool hasUsersAutostartEntry(const QString &folder)
{
    const QString path = entryIn(folder);
    return isThere(path) && isUsers(path);
}

AutostartChange addAutostartEntry(const QString &folder, const QString &command)
{
    const QString path = entryIn(folder);
    if (isThere(path) && isUsers(path)) {
        return AutostartChange::KeptUsersEntry;
    }
    if (!QDir().mkpath(folder)) {
        return AutostartChange::NotWritable;
    }
    QSaveFile file(path);
    const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(entryWith(command)) > 0 && file.commit();
    return isWritten ? AutostartChange::Done : AutostartChange::NotWritable;
}

AutostartChange removeAutostartEntry(const QString &folder)
{
    const QString path = entryIn(folder);
    if (!isThere(path)) {
        return AutostartChange::Done;
    }
    if (isUsers(path)) {
        return AutostartChange::KeptUsersEntry;
    }
    return QFile::remove(path) ? AutostartChange::Done : AutostartChange::NotWritable;
}

} // namespace tunedeck

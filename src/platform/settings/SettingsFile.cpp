// SPDX-License-Identifier: MIT
#include "platform/settings/SettingsFile.h"

#include "platform/settings/parsedSettings.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

#include <cstdio>
#include <utility>

namespace tunedeck {

namespace {
constexpr qint64 largestFile = 1024 * 1024;
/// A lock holds the names of a process and of a computer.
constexpr qint64 largestLock = 4096;
/// Linux follows no more.
constexpr int mostLinks = 40;

/// Replaces a file at `to`. QFile::rename() does not replace, and copies if it cannot rename, which may block.
bool rename(const QString &from, const QString &to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

/// Removes a file of any kind, or an empty folder. Returns whether nothing is at `path` then.
bool clear(const QString &path)
{
    std::remove(QFile::encodeName(path).constData());
    const QFileInfo rest(path);
    return !rest.exists() && !rest.isSymLink();
}

bool mayBeLock(const QFileInfo &file)
{
    return file.isFile() && !file.isSymLink() && file.size() <= largestLock;
}
} // namespace

SettingsFile::SettingsFile(QString path)
    : m_path(std::move(path))
{
}

QString SettingsFile::lockPath() const
{
    return m_path + QStringLiteral(".lock");
}

bool SettingsFile::makeRoomForLock() const
{
    return mayBeLock(QFileInfo(lockPath())) || clear(lockPath());
}

std::optional<QVariantHash> SettingsFile::read() const
{
    const QFileInfo file(m_path);
    if (!file.exists()) {
        return QVariantHash();
    }
    // This check comes before the file is opened: opening a pipe waits for a writer.
    if (!file.isFile()) {
        return std::nullopt;
    }
    QFile opened(m_path);
    if (!opened.open(QIODevice::ReadOnly)) {
        return QVariantHash();
    }
    // One byte more than allowed shows that the file is too large.
    const QByteArray content = opened.read(largestFile + 1);
    return content.size() <= largestFile ? parsedSettings(content) : std::nullopt;
}

QVariantHash SettingsFile::readOrSetAside() const
{
    const std::optional<QVariantHash> values = read();
    if (!values) {
        setAside();
    }
    return values.value_or(QVariantHash());
}

/// QSettings waits forever for the lock of the file that it writes, and after a failure it writes again on every read.
/// Therefore it writes another file beside the settings file, which no other process locks.
bool SettingsFile::write(const QVariantHash &values) const
{
    const QFileInfo file(m_path);
    // A broken file that could not be set aside is not lost.
    if (!read() || (file.exists() && (!file.isReadable() || !file.isWritable()))) {
        return false;
    }
    const std::optional<QString> target = this->target();
    if (!target) {
        return false;
    }
    const QString next = *target + QStringLiteral(".new");
    const QString lockOfNext = next + QStringLiteral(".lock");
    if (!clear(next) || !clear(lockOfNext)) {
        return false;
    }

    QSettings settings(next, QSettings::IniFormat);
    settings.clear();
    for (const auto &[key, value] : values.asKeyValueRange()) {
        settings.setValue(key, value);
    }
    settings.sync();
    return settings.status() == QSettings::NoError && rename(next, *target);
}

void SettingsFile::setAside() const
{
    const QString broken = m_path + QStringLiteral(".broken");
    if (!rename(m_path, broken) && clear(broken)) {
        rename(m_path, broken);
    }
}

/// The file to write, which may be missing. No value if the links lead nowhere: QSettings would create the folder, even
/// where the disk with the user's settings is mounted later.
std::optional<QString> SettingsFile::target() const
{
    QString path = m_path;
    for (int i = 0; i < mostLinks; ++i) {
        const QFileInfo file(path);
        if (!file.isSymLink()) {
            return QFileInfo(file.path()).isDir() ? std::optional(path) : std::nullopt;
        }
        path = file.symLinkTarget();
    }
    return std::nullopt;
}

} // namespace tunedeck

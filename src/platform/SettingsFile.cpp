// SPDX-License-Identifier: MIT
#include "platform/SettingsFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStringList>

#include <cstdio>
#include <utility>

namespace tunedeck {

namespace {
constexpr qint64 largestFile = 1024 * 1024;

/// Replaces a file at `to`. QFile::rename() does not replace, and copies if it cannot rename, which may block.
bool rename(const QString &from, const QString &to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}
} // namespace

SettingsFile::SettingsFile(QString path)
    : m_path(std::move(path))
{
}

std::optional<QVariantHash> SettingsFile::read() const
{
    const QFileInfo file(m_path);
    if (!file.exists()) {
        return QVariantHash();
    }
    // This check comes before the file is opened: opening a pipe waits for a writer.
    if (!file.isFile() || file.size() > largestFile) {
        return std::nullopt;
    }
    const QSettings settings(m_path, QSettings::IniFormat);
    QVariantHash values;
    const QStringList keys = settings.allKeys();
    for (const QString &key : keys) {
        values.insert(key, settings.value(key));
    }
    // QSettings parses lines, and finds errors in them, only when a value is read.
    return settings.status() == QSettings::FormatError ? std::nullopt : std::optional(values);
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
/// Therefore it only reads the settings file, and writes another file beside it that no other process locks.
bool SettingsFile::write(const QVariantHash &values) const
{
    const QFileInfo file(m_path);
    if (file.exists() && (!file.isFile() || !file.isWritable())) {
        return false;
    }
    // Some users keep their settings elsewhere and link to them. A link stays a link.
    const QString target = file.exists() ? file.canonicalFilePath() : m_path;
    const QString next = target + QStringLiteral(".new");
    QFile::remove(next);

    QSettings settings(next, QSettings::IniFormat);
    settings.clear();
    for (const auto &[key, value] : values.asKeyValueRange()) {
        settings.setValue(key, value);
    }
    settings.sync();
    return settings.status() == QSettings::NoError && rename(next, target);
}

void SettingsFile::setAside() const
{
    const QString broken = m_path + QStringLiteral(".broken");
    QFile::remove(broken);
    rename(m_path, broken);
}

} // namespace tunedeck

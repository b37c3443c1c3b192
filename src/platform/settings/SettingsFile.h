// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariantHash>

#include <optional>

namespace tunedeck {

/// The file with the user's settings. Neither what is in the file, nor what is there instead of it or instead of the
/// files that a write needs beside it, blocks a call or is an error.
///
/// Users who keep their settings elsewhere make a link. A write keeps the link and replaces the file that it leads to,
/// or creates that file if its folder exists.
class SettingsFile {
public:
    /// There may be no file at `path` yet.
    explicit SettingsFile(QString path);

    [[nodiscard]] const QString &path() const { return m_path; }
    /// The path of the lock that a process holds while it writes the file.
    [[nodiscard]] QString lockPath() const;
    /// Removes what is at that path if it is no lock: opening a pipe waits for a writer, and a device may have no end.
    /// Returns false if it cannot be removed.
    [[nodiscard]] bool makeRoomForLock() const;
    /// Empty if there is no file. No value if it is unreadable.
    [[nodiscard]] std::optional<QVariantHash> read() const;
    /// Empty also if the file is unreadable, which is then kept with ".broken" appended to its name. If that name is
    /// taken by a folder with something in it, the unreadable file stays where it is.
    [[nodiscard]] QVariantHash readOrSetAside() const;
    /// Replaces all values at once. Call it with the lock held. Returns false if the file cannot be written or is
    /// unreadable, and then leaves it as it is.
    [[nodiscard]] bool write(const QVariantHash &values) const;

private:
    void setAside() const;
    [[nodiscard]] std::optional<QString> target() const;

    QString m_path;
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariantHash>

#include <optional>

namespace tunedeck {

/// The file with the user's settings. Neither what is in the file, nor what is there instead of a file, blocks a call
/// or is an error.
class SettingsFile {
public:
    /// There may be no file at `path` yet.
    explicit SettingsFile(QString path);

    [[nodiscard]] const QString &path() const { return m_path; }
    /// Empty if there is no file. No value if it is unreadable.
    [[nodiscard]] std::optional<QVariantHash> read() const;
    /// Empty also if the file is unreadable, which is then kept with ".broken" appended to its name.
    [[nodiscard]] QVariantHash readOrSetAside() const;
    /// Replaces all values at once. Returns false if the file cannot be written, and then leaves it as it is.
    [[nodiscard]] bool write(const QVariantHash &values) const;

private:
    void setAside() const;

    QString m_path;
};

} // namespace tunedeck

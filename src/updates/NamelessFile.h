// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <memory>

namespace tunedeck {

/// A file that nobody else can open by a name until it is complete. Only its owner may read and write it until then,
/// and no program that this one starts inherits it.
///
/// File systems that know no files without a name, such as those of some memory cards, get a hidden one, which stays
/// behind if the program is killed.
class NamelessFile {
public:
    /// Null if no file can be made in `folder`.
    [[nodiscard]] static std::unique_ptr<NamelessFile> create(const QString &folder);
    ~NamelessFile();
    NamelessFile(const NamelessFile &) = delete;
    NamelessFile &operator=(const NamelessFile &) = delete;

    [[nodiscard]] int descriptor() const { return m_descriptor; }
    /// False if not all could be written.
    [[nodiscard]] bool write(QByteArrayView bytes) const;

    enum class Naming { Done, IsTaken, Failed };
    /// Gives the file its name, and lets everybody read it. Never replaces another file.
    [[nodiscard]] Naming giveName(const QString &path);

private:
    NamelessFile(int descriptor, const QByteArray &hiddenPath);

    const int m_descriptor;
    QByteArray m_hiddenPath; ///< empty if it has no name
};

} // namespace tunedeck

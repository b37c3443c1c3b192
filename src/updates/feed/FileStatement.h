// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tunedeck {

/// The statement of an update's makers about its file. They sign its text.
struct FileStatement {
    /// The build number.
    QString build;
    /// The version that users see.
    QString version;
    qint64 length = 0; ///< in bytes
    QByteArray sha512; ///< 64 bytes

    /// The signed text: a line that no other signed text begins with, and a line for each field. Empty if a field is
    /// missing, or a version has other characters than ASCII letters, digits and . _ + ~ and -.
    [[nodiscard]] QByteArray text() const;

    [[nodiscard]] bool operator==(const FileStatement &other) const = default;
};

/// A statement with its Ed25519 signature of 64 bytes. It is kept beside the file that it is about.
struct SignedFileStatement {
    FileStatement statement;
    QByteArray signature;

    /// The content of the file with the signature: the statement's text and a line with the signature in Base64.
    [[nodiscard]] QByteArray text() const;
    /// No value if `text` is not exactly such a content.
    [[nodiscard]] static std::optional<SignedFileStatement> fromText(const QByteArray &text);
};

} // namespace tunedeck

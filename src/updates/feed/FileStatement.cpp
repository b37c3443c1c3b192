// SPDX-License-Identifier: MIT
#include "updates/feed/FileStatement.h"

#include "updates/feed/fromBase64.h"

#include <QByteArrayList>
#include <QRegularExpression>

namespace tunedeck {

namespace {
constexpr int lines = 7; ///< of a signed statement, with the empty text after the last line end

bool isPlainVersion(const QString &text)
{
    static const QRegularExpression plain(QStringLiteral("\\A[A-Za-z0-9._+~-]{1,100}\\z"));
    return plain.match(text).hasMatch();
}

/// Empty if `line` does not begin with `name`.
QByteArray valueIn(const QByteArray &line, const QByteArray &name)
{
    return line.startsWith(name) ? line.mid(name.size()) : QByteArray();
}
} // namespace

QByteArray FileStatement::text() const
{
    if (!isPlainVersion(build) || !isPlainVersion(version) || length <= 0 || sha512.size() != hashSize) {
        return {};
    }
    return "Tunedeck file 1\nbuild: " + build.toLatin1() + "\nversion: " + version.toLatin1()
        + "\nlength: " + QByteArray::number(length) + "\nsha512: " + sha512.toHex() + '\n';
}

QByteArray SignedFileStatement::text() const
{
    return statement.text() + "signature: " + signature.toBase64() + '\n';
}

std::optional<SignedFileStatement> SignedFileStatement::fromText(const QByteArray &text)
{
    const QByteArrayList parts = text.split('\n');
    if (parts.size() != lines) {
        return std::nullopt;
    }
    SignedFileStatement read;
    read.statement.build = QString::fromLatin1(valueIn(parts.at(1), "build: "));
    read.statement.version = QString::fromLatin1(valueIn(parts.at(2), "version: "));
    read.statement.length = valueIn(parts.at(3), "length: ").toLongLong();
    read.statement.sha512 = QByteArray::fromHex(valueIn(parts.at(4), "sha512: "));
    read.signature = fromBase64(valueIn(parts.at(5), "signature: "), signatureSize);
    const bool isExact = !read.signature.isEmpty() && !read.statement.text().isEmpty() && read.text() == text;
    return isExact ? std::optional(read) : std::nullopt;
}

} // namespace tunedeck

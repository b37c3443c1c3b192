// SPDX-License-Identifier: MIT
#include "updates/safeReleaseNotes.h"

#include "platform/directionControls.h"
#include "require.h"
#include "updates/feed/isSecureAddress.h"

#include <QByteArray>
#include <QRegularExpression>
#include <QStringList>
#include <QUrl>

using namespace tunedeck;
using fuzz::require;

namespace {
constexpr qsizetype longestNotes = 65'536;

void checkCharacters(const QString &clean)
{
    for (const char32_t character : clean.toUcs4()) {
        require(!isDirectionControl(character), "the notes do not turn the text around them");
        require(character >= U' ' || character == U'\n' || character == U'\t', "the notes have no control characters");
    }
}

void checkLink(const QString &attributes)
{
    static const QRegularExpression link(QStringLiteral("\\A href=\"([^\"<>]*)\"\\z"));
    const QRegularExpressionMatch match = link.match(attributes);
    require(match.hasMatch(), "a link has an address and nothing else");
    const QString address = match.captured(1).replace(QStringLiteral("&amp;"), QStringLiteral("&"));
    require(isSecureAddress(QUrl(address)), "a link leads to a secure address");
}

/// Returns how many elements there are.
int checkTags(const QString &clean)
{
    static const QRegularExpression tag(QStringLiteral("<(/?)([a-z0-9]+)([^<>]*)>"));
    static const QRegularExpression known(
        QStringLiteral("\\A(a|b|blockquote|br|code|dd|dl|dt|em|h[1-6r]|i|li|ol|p|pre|strong|tt|ul)\\z"));
    int elements = 0;
    qsizetype tags = 0;
    QStringList open;
    for (auto matches = tag.globalMatch(clean); matches.hasNext(); ++tags) {
        const QRegularExpressionMatch match = matches.next();
        const QString name = match.captured(2);
        require(known.match(name).hasMatch(), "the notes have known elements only");
        if (!match.captured(1).isEmpty()) {
            require(!open.isEmpty() && open.takeLast() == name, "elements are closed in their order");
            continue;
        }
        ++elements;
        if (name == u"a") {
            checkLink(match.captured(3));
        } else {
            require(match.capturedLength(3) == 0, "only links have attributes");
        }
        if (name != u"br" && name != u"hr") {
            open.append(name);
        }
        require(open.size() <= 16, "elements are not deep");
    }
    require(open.isEmpty(), "all elements are closed");
    require(clean.count(u'<') == tags && clean.count(u'>') == tags, "text has no angle brackets");
    return elements;
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString notes = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size)).left(longestNotes);
    const QString clean = safeReleaseNotes(notes);
    checkCharacters(clean);
    require(checkTags(clean) <= 2'000, "elements are limited");
    require(safeReleaseNotes(clean) == clean, "what is safe stays as it is");
    return 0;
}

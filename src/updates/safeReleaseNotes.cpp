// SPDX-License-Identifier: MIT
#include "updates/safeReleaseNotes.h"

#include "platform/directionControls.h"
#include "updates/feed/isSecureAddress.h"
#include "updates/feed/markup.h"

#include <QList>
#include <QRegularExpression>
#include <QStringList>
#include <QUrl>

#include <algorithm>
#include <array>
#include <utility>

namespace tunedeck {

namespace {
constexpr int maximumElements = 2'000;
constexpr qsizetype maximumDepth = 16;
constexpr qsizetype maximumTag = 2'048;

constexpr std::array<QStringView, 21> allowedElements{u"b", u"blockquote", u"code", u"dd", u"dl", u"dt", u"em", u"h1",
    u"h2", u"h3", u"h4", u"h5", u"h6", u"i", u"li", u"ol", u"p", u"pre", u"strong", u"tt", u"ul"};
constexpr std::array<QStringView, 2> emptyElements{u"br", u"hr"};
/// Elements whose content is dropped too.
constexpr std::array<QStringView, 17> elementsWithoutText{u"applet", u"audio", u"canvas", u"head", u"iframe", u"math",
    u"noembed", u"noframes", u"noscript", u"object", u"script", u"select", u"style", u"svg", u"template", u"title",
    u"video"};

template <std::size_t size> bool contains(const std::array<QStringView, size> &names, QStringView name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool isReadable(char32_t character)
{
    switch (QChar::category(character)) {
    case QChar::Other_Control:
        return character == U'\t' || character == U'\n';
    case QChar::Other_Surrogate:
    case QChar::Other_PrivateUse:
    case QChar::Other_NotAssigned:
        return false;
    default:
        return character != QChar::ObjectReplacementCharacter && character <= QChar::LastValidCodePoint
            && !isDirectionControl(character);
    }
}

/// `text` without control characters and others with a special meaning in text layout.
QString readable(QStringView text)
{
    QString kept;
    const QList<uint> characters = text.toUcs4();
    for (const char32_t character : characters) {
        if (isReadable(character)) {
            kept += QChar::fromUcs4(character);
        }
    }
    return kept;
}

/// Decodes a reference such as "&#64;" or "&#x40;". Empty if the character must not be shown.
QString characterFrom(QStringView reference)
{
    const bool isHexadecimal = reference.mid(2, 1).compare(u"x", Qt::CaseInsensitive) == 0;
    const QStringView digits = reference.sliced(isHexadecimal ? 3 : 2).chopped(1);
    const char32_t character = digits.toUInt(nullptr, isHexadecimal ? 16 : 10);
    return isReadable(character) ? QString::fromUcs4(&character, 1) : QString();
}

/// Cleans `html`, which has no tags. The result is HTML again.
QString safeText(QStringView html)
{
    static const QRegularExpression reference(
        QStringLiteral("&(#[0-9]{1,7}|#[xX][0-9a-fA-F]{1,6}|([a-zA-Z][a-zA-Z0-9]{1,9}));"));
    QString text;
    qsizetype at = 0;
    for (auto matches = reference.globalMatch(html.toString()); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        text += readable(html.sliced(at, match.capturedStart() - at)).toHtmlEscaped();
        text += match.hasCaptured(2) ? match.captured() : characterFrom(match.capturedView()).toHtmlEscaped();
        at = match.capturedEnd();
    }
    return text + readable(html.sliced(at)).toHtmlEscaped();
}

/// The start tag of a link, if it leads to an address that is safe to open.
QString linkTag(QStringView tag)
{
    static const QRegularExpression href(QStringLiteral("\\shref\\s*=\\s*(?:\"([^\"]*)\"|'([^']*)'|([^\\s>\"']+))"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = href.match(tag.toString());
    QString address = match.captured(match.lastCapturedIndex()).trimmed();
    const QUrl url(address.replace(QStringLiteral("&amp;"), QStringLiteral("&")), QUrl::StrictMode);
    if (!isSecureAddress(url)) {
        return {};
    }
    return QStringLiteral("<a href=\"%1\">").arg(QString::fromLatin1(url.toEncoded()).toHtmlEscaped());
}

class NotesCleaner {
public:
    explicit NotesCleaner(QStringView html)
        : m_rest(html)
    {
    }

    QString cleaned()
    {
        while (!m_rest.isEmpty()) {
            if (m_rest.startsWith(u"<!--")) {
                take(lengthUpTo(m_rest, u"-->"));
            } else if (isTag()) {
                readTag(take(lengthOfTag(m_rest)));
            } else {
                const qsizetype next = m_rest.indexOf(u'<', 1);
                m_clean += safeText(take(next < 0 ? m_rest.size() : next));
            }
        }
        closeDownTo(0);
        return m_clean;
    }

private:
    /// Otherwise the "<" is part of the text.
    [[nodiscard]] bool isTag() const
    {
        static const QRegularExpression tag(QStringLiteral("^<[/!?]?[a-zA-Z]"));
        return tag.match(m_rest.left(3).toString()).hasMatch();
    }

    QStringView take(qsizetype length) { return std::exchange(m_rest, m_rest.sliced(length)).first(length); }

    void readTag(QStringView tag)
    {
        static const QRegularExpression nameAtStart(QStringLiteral("^<(/?)([a-zA-Z][a-zA-Z0-9]*)"));
        const QRegularExpressionMatch match = nameAtStart.match(tag.toString());
        const QString name = match.captured(2).toLower();
        if (!match.capturedView(1).isEmpty()) {
            close(name);
        } else if (contains(elementsWithoutText, name)) {
            take(lengthUpTo(m_rest, QStringLiteral("</%1").arg(name)));
            take(m_rest.isEmpty() ? 0 : lengthOfTag(m_rest));
        } else if (contains(emptyElements, name)) {
            add(QStringLiteral("<%1>").arg(name));
        } else if (name == u"a" && tag.size() <= maximumTag) {
            open(name, linkTag(tag));
        } else if (contains(allowedElements, name)) {
            open(name, QStringLiteral("<%1>").arg(name));
        }
    }

    bool add(const QString &tag)
    {
        if (tag.isEmpty() || m_elements == maximumElements) {
            return false;
        }
        ++m_elements;
        m_clean += tag;
        return true;
    }

    void open(const QString &name, const QString &tag)
    {
        if (m_open.size() < maximumDepth && add(tag)) {
            m_open.append(name);
        }
    }

    void close(const QString &name)
    {
        if (const qsizetype depth = m_open.lastIndexOf(name); depth >= 0) {
            closeDownTo(depth);
        }
    }

    void closeDownTo(qsizetype depth)
    {
        while (m_open.size() > depth) {
            m_clean += QStringLiteral("</%1>").arg(m_open.takeLast());
        }
    }

    QStringView m_rest;
    QString m_clean;
    QStringList m_open;
    int m_elements = 0;
};
} // namespace

QString safeReleaseNotes(QStringView html)
{
    return NotesCleaner(html).cleaned();
}

} // namespace tunedeck

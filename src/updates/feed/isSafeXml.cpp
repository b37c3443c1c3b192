// SPDX-License-Identifier: MIT
#include "updates/feed/isSafeXml.h"

#include "updates/feed/markup.h"

#include <algorithm>

namespace tunedeck {

namespace {
constexpr int maximumDepth = 64;
/// The time to parse a tag may grow with the square of its length.
constexpr qsizetype maximumTag = 2'048;

/// The length of the section at the beginning of `xml` that goes from `start` to `end`. 0 if there is none.
qsizetype lengthOfSection(QStringView xml, QStringView start, QStringView end)
{
    // The start and the end share no characters: "<!-->" begins a comment and does not end it.
    return xml.startsWith(start) ? start.size() + lengthUpTo(xml.sliced(start.size()), end) : 0;
}

/// The length of the comment, CDATA section or instruction at the beginning of `xml`. 0 if there is none.
qsizetype lengthOfSkipped(QStringView xml)
{
    return std::max({lengthOfSection(xml, u"<!--", u"-->"), lengthOfSection(xml, u"<![CDATA[", u"]]>"),
        lengthOfSection(xml, u"<?", u"?>")});
}

/// How much deeper the text after `tag` is.
int stepOf(QStringView tag)
{
    if (tag.startsWith(u"</")) {
        return -1;
    }
    return tag.endsWith(u"/>") ? 0 : 1;
}
} // namespace

bool isSafeXml(QStringView xml)
{
    int depth = 0;
    for (qsizetype at = xml.indexOf(u'<'); at >= 0; at = xml.indexOf(u'<', at)) {
        const QStringView rest = xml.sliced(at);
        if (const qsizetype skipped = lengthOfSkipped(rest); skipped > 0) {
            at += skipped;
            continue;
        }
        const QStringView tag = rest.first(lengthOfTag(rest.left(maximumTag + 1)));
        depth += stepOf(tag);
        // A document type can declare entities, and the parser reads all of it before anybody can refuse it.
        if (tag.startsWith(u"<!") || tag.size() > maximumTag || depth > maximumDepth) {
            return false;
        }
        at += tag.size();
    }
    return true;
}

} // namespace tunedeck

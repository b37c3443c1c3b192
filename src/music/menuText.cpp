// SPDX-License-Identifier: MIT
#include "music/menuText.h"

#include <QTextBoundaryFinder>

namespace tunedeck {

namespace {

/// A character that the user sees may consist of many: longer texts are cut before they are searched for them.
constexpr qsizetype longestSearched = 1'000;

/// Whether it is invisible: it changes the direction of the text around it, or hides where a text ends. The joiners
/// stay, since scripts and emoji need them.
bool isInvisible(QChar character)
{
    return character.category() == QChar::Other_Format && character != QChar(0x200c) && character != QChar(0x200d);
}

/// The first `longest` units of UTF-16 at most, without half a character at the end.
QString cut(const QString &text, qsizetype longest)
{
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, text);
    characters.setPosition(longest - 1);
    if (!characters.isAtBoundary()) {
        characters.toPreviousBoundary();
    }
    return text.first(characters.position()).trimmed() + u'…';
}

} // namespace

QString menuText(const QString &text, qsizetype longest)
{
    QString line = text.left(longestSearched);
    line.removeIf(isInvisible);
    for (QChar &character : line) {
        if (character.category() == QChar::Other_Control) {
            character = u' ';
        }
    }
    line = line.simplified();
    return line.size() <= longest ? line : cut(line, longest);
}

} // namespace tunedeck

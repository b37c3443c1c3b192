// SPDX-License-Identifier: MIT
#include "updates/feed/markup.h"

namespace tunedeck {

qsizetype lengthOfTag(QStringView text)
{
    QChar quote;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar character = text[at];
        if (!quote.isNull()) {
            if (character == quote) {
                quote = QChar();
            }
        } else if (character == u'>') {
            return at + 1;
        } else if (character == u'"' || character == u'\'') {
            quote = character;
        }
    }
    return text.size();
}

qsizetype lengthUpTo(QStringView text, QStringView end)
{
    const qsizetype at = text.indexOf(end, 0, Qt::CaseInsensitive);
    return at < 0 ? text.size() : at + end.size();
}

} // namespace tunedeck

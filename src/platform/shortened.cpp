// SPDX-License-Identifier: MIT
#include "platform/shortened.h"

namespace tunedeck {

QString shortened(const QString &text)
{
    constexpr qsizetype longest = 200;
    return text.size() <= longest ? text : text.first(longest - 1) + u'…';
}

} // namespace tunedeck

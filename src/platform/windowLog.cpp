// SPDX-License-Identifier: MIT
#include "platform/windowLog.h"

namespace tunedeck {

Q_LOGGING_CATEGORY(windowLog, "tunedeck.window", QtInfoMsg)

QString shortened(const QString &text)
{
    constexpr qsizetype longest = 200;
    return text.size() <= longest ? text : text.first(longest - 1) + u'…';
}

} // namespace tunedeck

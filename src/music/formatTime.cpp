// SPDX-License-Identifier: MIT
#include "music/formatTime.h"

#include "music/typedValue.h"
#include "platform/FatalError.h"

#include <cmath>

namespace tunedeck {

namespace {

QString twoDigits(qint64 component)
{
    // The width of two includes the sign: a negative component of one digit gets no zero.
    return QString::asprintf("%02lld", component);
}

QString withoutLeadingZero(const QString &component)
{
    return component.startsWith(u'0') ? component.sliced(1) : component;
}

} // namespace

QString formatTime(double seconds)
{
    if (!std::isfinite(seconds)) {
        return {};
    }
    const std::optional<qint64> total = truncatedToInt64(seconds);
    if (!total) {
        fatalError("A time is beyond 64 bits");
    }

    constexpr qint64 hour = 3600;
    const QString ss = twoDigits(*total % 60);
    const QString mm = twoDigits(*total / 60 % 60);
    if (-hour < *total && *total < hour) {
        return withoutLeadingZero(mm) + u':' + ss;
    }
    const QString hh = twoDigits(*total / hour);
    return withoutLeadingZero(hh) + u':' + mm + u':' + ss;
}

} // namespace tunedeck

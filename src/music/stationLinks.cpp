// SPDX-License-Identifier: MIT
#include "music/stationLinks.h"

#include <QRegularExpression>

namespace tunedeck {

std::optional<QString> radioStationLabel(const QString &storeUrl)
{
    // Anchored at both real ends: "$" would let a line feed follow the link.
    static const QRegularExpression stationLink(QRegularExpression::anchoredPattern(
        QStringLiteral("itmss://[^/?#]*/link\\?n=Apple%20Music%20(?:1|Hits|Country|TV)")));

    if (!stationLink.match(storeUrl).hasMatch()) {
        return std::nullopt;
    }
    return QStringLiteral("\uF8FFMusic");
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "feedMistakes.h"

#include "updates/feed/Appcast.h"
#include "updates/feed/Version.h"
#include "updates/feed/isSecureAddress.h"

namespace tunedeck {

namespace {
constexpr qsizetype maximumFeed = 1'048'576;
constexpr int longestValidity = 366; ///< in days
/// A serial with a digit too many could never be taken back.
constexpr qint64 largestStep = 1'000;

QStringList mistakesOfTimes(const Appcast &appcast, const FeedDemands &demands)
{
    QStringList mistakes;
    if (appcast.serial <= demands.publishedSerial) {
        mistakes.append(QStringLiteral("its serial is %1, and must be above %2 (that of the published feed)")
                .arg(appcast.serial)
                .arg(demands.publishedSerial));
    } else if (appcast.serial > demands.publishedSerial + largestStep) {
        mistakes.append(QStringLiteral("its serial is %1, and must be at most %2")
                .arg(appcast.serial)
                .arg(demands.publishedSerial + largestStep));
    }
    if (!appcast.expiry.isValid()) {
        mistakes.append(QStringLiteral("it has no expiry such as 2027-01-31T12:00:00Z"));
    } else if (appcast.expiry <= demands.now) {
        mistakes.append(QStringLiteral("its expiry is in the past"));
    } else if (appcast.expiry > demands.now.addDays(longestValidity)) {
        mistakes.append(QStringLiteral("its expiry is more than %1 days away").arg(longestValidity));
    }
    return mistakes;
}

QStringList mistakesOfItem(const AppcastItem &item, const QList<PublicKey> &keys)
{
    QStringList mistakes;
    const QString name = QStringLiteral("version %1 (%2)").arg(item.displayVersion(), item.version);
    const QByteArray statement = item.statement().text();
    if (!Version::fromString(item.version)) {
        mistakes.append(QStringLiteral("%1 has no build number").arg(name));
    }
    if (!isSecureAddress(item.url)) {
        mistakes.append(QStringLiteral("%1 has no https address").arg(name));
    }
    if (statement.isEmpty()) {
        mistakes.append(QStringLiteral("%1 lacks a plain version, a length or a hash").arg(name));
    } else if (!isSignedByOneOf(keys, statement, item.signature)) {
        mistakes.append(
            QStringLiteral("the file of %1 is not signed with this key, or not with these values").arg(name));
    }
    return mistakes;
}
} // namespace

QStringList feedMistakes(const QByteArray &feed, const FeedDemands &demands)
{
    if (feed.size() > maximumFeed) {
        return {QStringLiteral("it is longer than %1 bytes").arg(maximumFeed)};
    }
    const std::optional<Appcast> appcast = readAppcast(feed);
    if (!appcast) {
        return {QStringLiteral("it is not a feed")};
    }
    QStringList mistakes = mistakesOfTimes(*appcast, demands);
    if (appcast->items.isEmpty()) {
        mistakes.append(QStringLiteral("it has no version for Linux"));
    }
    for (const AppcastItem &item : appcast->items) {
        mistakes += mistakesOfItem(item, demands.keys);
    }
    return mistakes;
}

} // namespace tunedeck

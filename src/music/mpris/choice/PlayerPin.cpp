// SPDX-License-Identifier: MIT
#include "music/mpris/choice/PlayerPin.h"

#include <QHash>
#include <QLatin1StringView>
#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace tunedeck {

namespace {

constexpr QLatin1String instanceMark(".instance");
constexpr QChar separator = u'/'; // no bus name contains it
/// KDE Connect and GSConnect. The device follows, after one of the marks.
constexpr std::array phoneBridges{QLatin1StringView("kdeconnect"), QLatin1StringView("gsconnect")};
constexpr QLatin1StringView marksBeforeDevice("._-");

/// Where the part of the name begins that is new at every start; its length if there is none. That part is a number of
/// four digits or more, such as a process has, or eight or more hexadecimal digits, such as a UUID has.
qsizetype newPart(const QString &name)
{
    for (const QLatin1StringView bridge : phoneBridges) {
        if (name.startsWith(bridge, Qt::CaseInsensitive) && name.size() > bridge.size()
            && marksBeforeDevice.contains(name[bridge.size()])) {
            return bridge.size();
        }
    }
    // Most names have no digit, and the first expression of the program takes long to prepare.
    if (std::ranges::none_of(name, [](QChar character) { return u'0' <= character && character <= u'9'; })) {
        return name.size();
    }
    // It reads a run of digits once: a name may be one of 200 digits, and there may be thousands of them.
    static const QRegularExpression part(QStringLiteral(
        "(?:[._-]?(?<![0-9])[0-9]{4,}+|[._-][A-Za-z]?(?:(?=[a-f]*[0-9])[0-9a-f]{8,}+|(?=[A-F]*[0-9])[0-9A-"
        "F]{8,}+))(?:[._-]|$)"));
    const QRegularExpressionMatch match = part.match(name);
    return match.hasMatch() && match.capturedStart() > 0 ? match.capturedStart() : name.size();
}

bool isNewAtEveryStart(const QString &name)
{
    return !name.contains(instanceMark) && newPart(name) < name.size();
}

PlayerPin pinOf(const NamedPlayer &player)
{
    return {.family = playerFamily(player.name),
        .identity = isNewAtEveryStart(player.name) ? player.identity : QString(),
        .name = {}};
}

} // namespace

QString playerFamily(const QString &name)
{
    const qsizetype mark = name.indexOf(instanceMark);
    return mark > 0 ? name.left(mark) : name.left(newPart(name));
}

bool isOfFamily(const QString &name, const QString &family)
{
    // Most names are not, and that is seen at once.
    return name.startsWith(family) && playerFamily(name) == family;
}

PlayerPin PlayerPin::fromId(const QString &id)
{
    return {.family = playerFamily(id.section(separator, 0, 0)),
        .identity = id.section(separator, 2),
        .name = id.section(separator, 1, 1)};
}

QString PlayerPin::id() const
{
    return name.isEmpty() && identity.isEmpty() ? family : family + separator + name + separator + identity;
}

PlayerPin::Match PlayerPin::match(const QString &playerName, const QString &playerIdentity) const
{
    if (family.isEmpty() || !isOfFamily(playerName, family) || (!identity.isEmpty() && playerIdentity != identity)) {
        return Match::None;
    }
    return playerName == name ? Match::SameName : Match::SamePlayer;
}

QList<PlayerPin> distinctPins(const QList<NamedPlayer> &players)
{
    QList<PlayerPin> pins;
    QHash<QString, int> uses;
    for (const NamedPlayer &player : players) {
        pins.append(pinOf(player));
        ++uses[pins.last().id()];
    }
    for (qsizetype i = 0; i < pins.size(); ++i) {
        if (uses.value(pins[i].id()) > 1) {
            pins[i].identity = players[i].identity;
            pins[i].name = players[i].name;
        }
    }
    return pins;
}

} // namespace tunedeck

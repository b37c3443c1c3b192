// SPDX-License-Identifier: MIT
#include "music/mpris/choice/phoneBridge.h"

#include <QLatin1String>
#include <QSet>

#include <algorithm>

namespace tunedeck {

namespace {

constexpr qsizetype fewest = 4;

/// Whether all have the same text before or after the mark, and it is not empty.
template <typename Part> bool haveInCommon(const QStringList &identities, Part part)
{
    const QString device = part(identities.first());
    return !device.isEmpty()
        && std::ranges::all_of(identities, [&](const QString &identity) { return part(identity) == device; });
}

QString before(const QString &identity)
{
    return identity.left(std::max(identity.indexOf(QLatin1String(": ")), qsizetype(0)));
}

QString after(const QString &identity)
{
    constexpr QLatin1String mark(" - ");
    const qsizetype at = identity.lastIndexOf(mark);
    return at < 0 ? QString() : identity.sliced(at + mark.size());
}

} // namespace

bool isOfPhoneBridge(const QString &name)
{
    return name.startsWith(QLatin1String("kdeconnect."), Qt::CaseInsensitive)
        || name.startsWith(QLatin1String("gsconnect."), Qt::CaseInsensitive);
}

bool nameOneDevice(const QStringList &identities)
{
    if (identities.size() < fewest || QSet<QString>(identities.begin(), identities.end()).size() < identities.size()) {
        return false;
    }
    return haveInCommon(identities, before) || haveInCommon(identities, after);
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "music/mpris/choice/PlayerMemory.h"

#include "music/menuText.h"
#include "music/mpris/choice/PlayerPin.h"
#include "platform/UserDefaults.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace tunedeck {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds betweenWrites = 10s;
/// Within this time all is known about a player, so that it is written at once.
constexpr std::chrono::milliseconds together = 200ms;
constexpr QChar nameMark = u'\n'; // no name contains it
constexpr QChar entryMark = u'/'; // no desktop entry contains it

bool isPin(const QString &id, const QString &name, const QString &identity)
{
    return PlayerPin::fromId(id).match(name, identity) != PlayerPin::Match::None;
}

} // namespace

PlayerMemory::PlayerMemory(UserDefaults &defaults, const QString &processes, QObject *parent)
    : QObject(parent)
    , m_defaults(defaults)
    , m_launchEntry(processes)
{
    m_write.setObjectName(QStringLiteral("memoryTimer"));
    m_write.setSingleShot(true);
    connect(&m_write, &QTimer::timeout, this, &PlayerMemory::write);
    connect(&m_launchEntry, &LaunchEntry::finished, this, &PlayerMemory::handleEntry);
}

PlayerMemory::~PlayerMemory()
{
    write();
}

void PlayerMemory::remember(const PlayerDescription &player, bool hasPlayed)
{
    const QString pinned = m_defaults.stringForKey(SettingsKey::followedPlayer);
    if (isPin(pinned, player.name, player.identity)) {
        store(SettingsKey::followedPlayerName, pinned + nameMark + player.identity);
    }
    if (!hasPlayed) {
        return;
    }
    m_subject = player;
    m_launchEntry.find(
        player.processId, player.desktopEntry.isEmpty() ? playerFamily(player.name) : player.desktopEntry);
    handleEntry();
}

QString PlayerMemory::pinnedPlayersName() const
{
    const QString pinned = m_defaults.stringForKey(SettingsKey::followedPlayer);
    const QString known = value(SettingsKey::followedPlayerName);
    if (known.section(nameMark, 0, 0) == pinned && known.contains(nameMark)) {
        return menuText(known.section(nameMark, 1));
    }
    const PlayerPin pin = PlayerPin::fromId(pinned);
    return menuText(pin.identity.isEmpty() ? pin.family : pin.identity);
}

QStringList PlayerMemory::entriesToLaunch() const
{
    QStringList entries{pinnedPlayersEntry(),
        PlayerPin::fromId(m_defaults.stringForKey(SettingsKey::followedPlayer)).family,
        value(SettingsKey::lastFollowedPlayer)};
    entries.removeAll(QString());
    return entries;
}

void PlayerMemory::handleEntry()
{
    const QString &entry = m_launchEntry.entry();
    if (entry.isEmpty() || !m_subject) {
        return;
    }
    store(SettingsKey::lastFollowedPlayer, entry);
    const QString pinned = m_defaults.stringForKey(SettingsKey::followedPlayer);
    const bool isMoreThanTheFamily = !m_subject->desktopEntry.isEmpty() || entry != playerFamily(m_subject->name);
    if (isMoreThanTheFamily && isPin(pinned, m_subject->name, m_subject->identity)) {
        store(SettingsKey::followedPlayerEntry, pinned + entryMark + entry);
    }
}

QString PlayerMemory::pinnedPlayersEntry() const
{
    const QString known = value(SettingsKey::followedPlayerEntry);
    const QString pinned = m_defaults.stringForKey(SettingsKey::followedPlayer);
    return known.section(entryMark, 0, -2) == pinned ? known.section(entryMark, -1) : QString();
}

QString PlayerMemory::value(const QString &key) const
{
    return m_unwritten.value(key, m_defaults.stringForKey(key));
}

void PlayerMemory::store(const QString &key, const QString &text)
{
    if (value(key) == text) {
        return;
    }
    m_unwritten.insert(key, text);
    if (!m_write.isActive()) {
        const bool isFirst = !m_sinceWrite.isValid();
        m_write.start(
            isFirst ? together : std::max(together, betweenWrites - std::chrono::milliseconds(m_sinceWrite.elapsed())));
    }
}

void PlayerMemory::write()
{
    m_sinceWrite.start();
    const QHash<QString, QString> values = std::exchange(m_unwritten, {});
    for (const auto &[key, text] : values.asKeyValueRange()) {
        m_defaults.setValue(key, text);
    }
}

} // namespace tunedeck

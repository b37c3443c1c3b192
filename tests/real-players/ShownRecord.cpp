// SPDX-License-Identifier: MIT
#include "ShownRecord.h"

#include <utility>

namespace tunedeck {

namespace {

QString stateText(FourCharCode state)
{
    switch (state) {
    case PlayerState::playing:
        return QStringLiteral("Playing");
    case PlayerState::paused:
        return QStringLiteral("Paused");
    case PlayerState::stopped:
        return QStringLiteral("Stopped");
    default:
        return QStringLiteral("Seeking");
    }
}

} // namespace

ShownRecord::ShownRecord(MusicConnector &connector)
    : m_connector(connector)
{
    m_endOfTurn.setSingleShot(true);
    QObject::connect(&m_endOfTurn, &QTimer::timeout, &m_endOfTurn, [this] { record(); });
    QObject::connect(&connector, &MusicConnector::currentTrackChanged, &m_endOfTurn, [this] { m_endOfTurn.start(0); });
    connector.setDelegate(this);
}

ShownRecord::~ShownRecord()
{
    m_connector.setDelegate(nullptr);
}

QString ShownRecord::text(const std::optional<MusicConnectorTrack> &track)
{
    if (!track) {
        return QStringLiteral("none");
    }
    return QStringList{track->trackName.value_or(QString()), track->artistName.value_or(QString()),
        track->albumName.value_or(QString())}
        .join(QStringLiteral(" / "));
}

void ShownRecord::clear()
{
    m_texts.clear();
    m_states.clear();
}

void ShownRecord::playerStateDidChange(FourCharCode)
{
    m_endOfTurn.start(0);
}

void ShownRecord::record()
{
    if (const QString shown = text(m_connector.currentTrack()); std::exchange(m_lastText, shown) != shown) {
        m_texts.append(shown);
    }
    const FourCharCode state = m_connector.currentState();
    if (std::exchange(m_lastState, state) != state) {
        m_states.append(stateText(state));
    }
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include "music/MusicConnector.h"

#include <QStringList>

#include <utility>

namespace tunedeck {

/// Records the announcements of a connector and its calls of the delegate, with the values and in their order:
/// "soundVolume 55", "currentTrack none", "delegate kPSS".
class ConnectorObserver : public MusicConnectorDelegate {
public:
    explicit ConnectorObserver(MusicConnector &connector)
        : m_connector(connector)
    {
        QObject::connect(&connector, &MusicConnector::isMusicAppRunningChanged, &m_connections,
            [this](bool isRunning) { write("isMusicAppRunning", textOf(isRunning)); });
        QObject::connect(&connector, &MusicConnector::currentTrackChanged, &m_connections, [this] {
            const auto &track = m_connector.currentTrack();
            write("currentTrack", track ? track->trackName : std::nullopt);
        });
        QObject::connect(&connector, &MusicConnector::trackProgressChanged, &m_connections,
            [this](double progress) { write("trackProgress", QString::number(progress)); });
        QObject::connect(&connector, &MusicConnector::elapsedFormattedTimeChanged, &m_connections,
            [this](const QString &time) { write("elapsed", time); });
        QObject::connect(&connector, &MusicConnector::remainingFormattedTimeChanged, &m_connections,
            [this](const QString &time) { write("remaining", time); });
        QObject::connect(&connector, &MusicConnector::totalFormattedTimeChanged, &m_connections,
            [this](const QString &time) { write("total", time); });
        QObject::connect(&connector, &MusicConnector::feedTypeChanged, &m_connections,
            [this](FeedType feedType) { write("feedType", QString::number(static_cast<int>(feedType))); });
        QObject::connect(&connector, &MusicConnector::soundVolumeChanged, &m_connections,
            [this](double volume) { write("soundVolume", QString::number(volume)); });
        QObject::connect(&connector, &MusicConnector::shuffleEnabledChanged, &m_connections,
            [this](bool enabled) { write("shuffleEnabled", textOf(enabled)); });
        QObject::connect(&connector, &MusicConnector::repeatModeChanged, &m_connections,
            [this](RepeatMode mode) { write("repeatMode", QString::number(static_cast<int>(mode))); });
        QObject::connect(&connector, &MusicConnector::playlistOptionsChanged, &m_connections, [this] {
            QStringList names;
            for (const PlaylistOption &option : m_connector.playlistOptions()) {
                names.append(option.name);
            }
            write("playlistOptions", u'[' + names.join(QStringLiteral(", ")) + u']');
        });
        QObject::connect(&connector, &MusicConnector::selectedPlaylistChanged, &m_connections, [this] {
            const auto &playlist = m_connector.selectedPlaylist();
            write("selectedPlaylist", playlist ? std::optional(playlist->name) : std::nullopt);
        });
        QObject::connect(&connector, &MusicConnector::audioOutputNamesChanged, &m_connections,
            [this] { write("audioOutputNames", m_connector.audioOutputNames()); });
        connector.setDelegate(this);
    }
    ConnectorObserver(const ConnectorObserver &) = delete;
    ConnectorObserver &operator=(const ConnectorObserver &) = delete;
    ~ConnectorObserver() override { m_connector.setDelegate(nullptr); }

    void playerStateDidChange(FourCharCode state) override
    {
        QString text;
        for (const int shift : {24, 16, 8, 0}) {
            text += QLatin1Char(static_cast<char>(state >> shift & 0xff));
        }
        write("delegate", text);
    }

    /// The records since the last take().
    [[nodiscard]] QStringList lines() const { return m_lines; }
    /// The same records, which are then dropped.
    [[nodiscard]] QStringList take() { return std::exchange(m_lines, {}); }

private:
    static QString textOf(bool value) { return value ? QStringLiteral("true") : QStringLiteral("false"); }

    void write(const char *what, const std::optional<QString> &value)
    {
        m_lines.append(QLatin1String(what) + u' ' + value.value_or(QStringLiteral("none")));
    }

    MusicConnector &m_connector;
    QObject m_connections;
    QStringList m_lines;
};

} // namespace tunedeck

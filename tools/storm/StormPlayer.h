// SPDX-License-Identifier: MIT
#pragma once

#include "Message.h"

#include <QByteArray>
#include <gio/gio.h>

namespace tunedeck::storm {

/// The names of what the storm is aimed at.
namespace name {
inline const QByteArray playerPrefix = "org.mpris.MediaPlayer2.";
inline const QByteArray playerPath = "/org/mpris/MediaPlayer2";
inline const QByteArray program = "org.tunedeck.Tunedeck";
inline const QByteArray programPath = "/org/tunedeck/Tunedeck";
} // namespace name

/// A container that is large on the bus and larger once it is unpacked.
struct Container {
    QByteArray type = "as"; ///< as, av, ay, s or a{sv}
    qsizetype size = 0; ///< bytes on the bus; 0: no container

    void write(Values &values) const;
};

/// A player that answers what any player is asked.
class StormPlayer {
public:
    /// Stands in every Metadata, as the artist.
    void setContainer(const Container &container) { m_container = container; }
    void setTitle(const QByteArray &title) { m_title = title; }
    void setPlaying(bool isPlaying) { m_isPlaying = isPlaying; }
    [[nodiscard]] bool isPlaying() const { return m_isPlaying; }

    /// The answer to a call, as it is sent.
    [[nodiscard]] QByteArray answer(GDBusMessage *call) const;
    /// PropertiesChanged with the status and the metadata, to everybody or to `destination` alone.
    [[nodiscard]] QByteArray change(const QByteArray &destination = {}) const;

private:
    void writePlayer(Values &values) const;
    void writeMetadata(Values &values) const;

    Container m_container;
    QByteArray m_title = "Storm";
    bool m_isPlaying = true;
};

} // namespace tunedeck::storm

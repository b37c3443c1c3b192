// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>
#include <QString>

namespace tunedeck {

struct SeenPlayer {
    /// The identifier in the setting of the player to follow.
    QString id;
    /// The name that the player sends: plain text of any length, not to be trusted.
    QString name;
};

/// The interface through which the preferences list the running players.
class SeenPlayers : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// The players in the order in which they are offered.
    [[nodiscard]] virtual QList<SeenPlayer> seenPlayers() const = 0;

Q_SIGNALS:
    void seenPlayersChanged();
};

} // namespace tunedeck

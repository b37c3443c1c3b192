// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>
#include <QString>

namespace tunedeck {

struct SeenPlayer {
    /// What the setting of the player to follow calls it.
    QString id;
    /// What the player calls itself: plain text of any length, not to be trusted.
    QString name;
};

/// The players that run, as far as the preferences know them.
class SeenPlayers : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// In the order in which they are to be offered.
    [[nodiscard]] virtual QList<SeenPlayer> seenPlayers() const = 0;

Q_SIGNALS:
    void seenPlayersChanged();
};

} // namespace tunedeck

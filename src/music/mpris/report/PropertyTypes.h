// SPDX-License-Identifier: MIT
#pragma once

#include <QSet>
#include <QString>
#include <QVariantMap>

namespace tunedeck {

/// Logs the properties of a player that do not have the type MPRIS2 gives them, each once.
class PropertyTypes {
public:
    /// `player` is the name in the log.
    explicit PropertyTypes(const QString &player);

    /// Checks plain properties (see bus::plainMap()) of the Player interface, and the entries of their Metadata. Does
    /// nothing while the log is off.
    void check(const QVariantMap &properties);

private:
    void check(const QVariantMap &map, const QString &key, const char *expected);

    QString m_player;
    QSet<QString> m_logged;
};

} // namespace tunedeck

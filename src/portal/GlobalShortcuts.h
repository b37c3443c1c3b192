// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ActivationToken.h"
#include "portal/PortalConnection.h"
#include "portal/PortalRequest.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QVariantList>

#include <memory>

namespace tunedeck {

/// The keyboard shortcuts that work in every window. The desktop's portal keeps them, and lets the user choose the
/// keys.
class GlobalShortcuts : public QObject {
    Q_OBJECT

public:
    struct Shortcut {
        QString id;
        QString description; ///< for people
    };
    enum class State {
        Off,
        Asking, ///< possibly the user, for as long as that takes
        On,
        Declined, ///< the user or the desktop says no
        Missing, ///< the desktop has none
        Failed, ///< the desktop gives no usable answer
    };

    /// The number of times a portal that has ended and come back is asked again after the user has asked.
    static constexpr int mostReturns = 5;

    /// On the session bus at `address`; on the usual one if that is empty.
    explicit GlobalShortcuts(QList<Shortcut> shortcuts, QString address = {}, QObject *parent = nullptr);
    ~GlobalShortcuts() override;

    [[nodiscard]] State state() const { return m_state; }
    /// Asks the portal for the shortcuts, or gives them back.
    void setWanted(bool isWanted);

Q_SIGNALS:
    void stateChanged(tunedeck::GlobalShortcuts::State state);
    /// The user pressed the shortcut with this id. `token` gives the keyboard focus; it may be empty.
    void activated(const QString &id, const tunedeck::ActivationToken &token);

private:
    void handleActivated(const QVariantList &values);
    void askAgain();
    void ask();
    void createSession();
    void bind(const QString &session, const QString &portal);
    void listen(const QString &portal);
    void handleLost();
    void endWith(PortalAnswer answer);
    void letGo();
    void setState(State state);

    const QList<Shortcut> m_shortcuts;
    const QString m_address;
    State m_state = State::Off;
    int m_returns = 0; ///< of portals that have been asked again
    std::unique_ptr<PortalConnection> m_portal;
    QString m_session; ///< the path of the portal's object
};

} // namespace tunedeck

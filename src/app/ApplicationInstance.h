// SPDX-License-Identifier: MIT
#pragma once

#include "app/DesktopAction.h"
#include "platform/ActivationToken.h"

#include <QDBusConnection>
#include <QDeadlineTimer>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QVariantList>
#include <QVariantMap>

#include <functional>
#include <optional>

namespace tunedeck {

/// Makes the program run once per session: the first process owns the program's name on the session bus. Any other
/// process only asks the first to show itself or to carry out an action. Without a bus every process is the first.
class ApplicationInstance : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit ApplicationInstance(const QDBusConnection &bus, QObject *parent = nullptr);

    [[nodiscard]] bool isFirst() const { return m_isFirst; }
    /// Answers on `bus` from now on, unless another process of the program owns the name there.
    void setBus(const QDBusConnection &bus);
    /// Asks the first process to carry out `action`, or to show itself if there is none, and hands it `token`. Calls
    /// `done` within a second with whether the first process answered.
    void askFirst(
        std::optional<DesktopAction> action, const ActivationToken &token, std::function<void(bool answered)> done);

    /// True while only actions have been requested: the window then opens without taking the keyboard focus.
    [[nodiscard]] bool isAskedForActionsAlone() const;
    /// Emits actionRequested() as soon as the action can be carried out, or never if that takes longer than a second or
    /// ten actions are waiting.
    void requestAction(DesktopAction action, const ActivationToken &token = {});
    /// Call this when actions can be carried out, except those that need Music.
    void deliverActions();

public Q_SLOTS:
    /// Call this when the actions that need Music can be carried out too.
    void deliverMusicActions();

    // The desktop, or another process of the program, calls these over D-Bus.
    Q_SCRIPTABLE void Activate(const QVariantMap &platformData);
    Q_SCRIPTABLE void Open(const QStringList &uris, const QVariantMap &platformData);
    Q_SCRIPTABLE void ActivateAction(
        const QString &actionName, const QVariantList &parameter, const QVariantMap &platformData);

Q_SIGNALS:
    // However many calls come over D-Bus, every 100 ms emit activated() once at most, with the token that came last,
    // actionRequested() once at most, and tokenUnused() ten times at most.

    void activated(const tunedeck::ActivationToken &token);
    /// The token came with an action, for which this program does not take the keyboard focus, or shortly before
    /// another one.
    void tokenUnused(const tunedeck::ActivationToken &token);
    /// `token` is for another program that the action shows.
    void actionRequested(tunedeck::DesktopAction action, const tunedeck::ActivationToken &token);

private:
    struct Request {
        DesktopAction action;
        ActivationToken token;
    };

    void registerObject();
    void callBus(const QString &method, const QVariantList &arguments);
    [[nodiscard]] bool canDeliver(DesktopAction action) const;
    void handleSoon();
    void handleRequests();
    void deliverOneAction();
    void dropWaitingActions();
    void leaveUnused(const ActivationToken &token);

    QDBusConnection m_bus;
    bool m_isFirst;
    bool m_isActivated = false;
    bool m_isActionRequested = false;
    bool m_deliversActions = false;
    bool m_deliversMusicActions = false;
    std::optional<ActivationToken> m_activation;
    QList<ActivationToken> m_unusedTokens;
    QList<Request> m_waitingActions;
    QTimer m_turn{this};
    QDeadlineTimer m_rest;
    QTimer m_patience{this};
};

} // namespace tunedeck

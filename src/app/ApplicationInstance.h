// SPDX-License-Identifier: MIT
#pragma once

#include "app/DesktopAction.h"
#include "platform/ActivationToken.h"
#include "platform/bus/IncomingCalls.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QVariantList>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <optional>

namespace tunedeck {

/// The first process's answer to another process of the program.
struct FirstsAnswer {
    bool isGiven = false; ///< false if the first process does not respond
    QString refusal; ///< why the first process refuses, as a text for the user; empty if it does not
};

/// Makes the program run once per session: the first process owns the program's name on the session bus. Any other
/// process only asks the first to show itself or to carry out an action. Without a bus every process is the first.
class ApplicationInstance : public QObject {
    Q_OBJECT

public:
    /// Takes why an action is refused, as a text for the user; empty once it was carried out.
    using Answer = std::function<void(const QString &refusal)>;
    /// Carries an action out, and calls `answer` once within two seconds. The token is for another program that the
    /// action shows.
    using CarryOut = std::function<void(DesktopAction action, const ActivationToken &token, const Answer &answer)>;

    explicit ApplicationInstance(const QDBusConnection &bus, QObject *parent = nullptr);

    [[nodiscard]] bool isFirst() const { return m_isFirst; }
    /// Answers on `bus` from now on, unless another process of the program owns the name there.
    void setBus(const QDBusConnection &bus);
    /// Asks the first process to carry out `action`, or to show itself if there is none, and hands it `token`. Calls
    /// `done` within two seconds.
    void askFirst(std::optional<DesktopAction> action, const ActivationToken &token,
        std::function<void(const FirstsAnswer &)> done);

    /// True while only actions have been requested: the window then opens without taking the keyboard focus.
    [[nodiscard]] bool isAskedForActionsAlone() const;
    /// Carries the action out as soon as that is possible. Refuses it if that takes longer than a second, or if ten
    /// actions are waiting already.
    void requestAction(
        DesktopAction action, const ActivationToken &token = {}, Answer answer = [](const QString &) { });
    /// Call this when `carryOut` can carry out actions, except those that need Music. It must outlive the calls that
    /// come over D-Bus.
    void deliverActions(CarryOut carryOut);

public Q_SLOTS:
    /// Call this when the actions that need Music can be carried out too.
    void deliverMusicActions();

    // The desktop, or another process of the program, asks for these over D-Bus.
    void Activate(const QVariantMap &platformData);
    void ActivateAction(
        const QString &actionName, const QVariantList &parameter, const QVariantMap &platformData,
        const tunedeck::ApplicationInstance::Answer &answer = [](const QString &) { });

Q_SIGNALS:
    // However many calls come over D-Bus, every 100 ms emit activated() once at most, with the token that came last,
    // and tokenUnused() ten times at most. One action at most is carried out.

    void activated(const tunedeck::ActivationToken &token);
    /// The token came with an action, for which this program does not take the keyboard focus, or shortly before
    /// another one.
    void tokenUnused(const tunedeck::ActivationToken &token);

private:
    struct Request {
        DesktopAction action;
        ActivationToken token;
        Answer answer;
    };

    void registerObject();
    void callBus(const QString &method, const QVariantList &arguments);
    [[nodiscard]] bool canDeliver(DesktopAction action) const;
    void handleSoon();
    void handleRequests();
    void deliverOneAction();
    void dropWaitingActions();
    void activateSoon(const ActivationToken &token);
    void leaveUnused(const ActivationToken &token);
    [[nodiscard]] static QString busyText();
    void handleCall(const QDBusMessage &call);

    QDBusConnection m_bus;
    std::unique_ptr<IncomingCalls> m_calls;
    bool m_isFirst;
    bool m_isActivated = false;
    bool m_isActionRequested = false;
    CarryOut m_carryOut;
    bool m_deliversMusicActions = false;
    std::optional<ActivationToken> m_activation;
    QList<ActivationToken> m_unusedTokens;
    QList<Request> m_waitingActions;
    QTimer m_turn{this};
    QDeadlineTimer m_rest;
    QTimer m_patience{this};
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include "app/DesktopAction.h"
#include "platform/ActivationToken.h"

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QVariantList>
#include <QVariantMap>

#include <functional>
#include <optional>

namespace tunedeck {

/// Makes the program run once per session: the first process owns the program's name on the session bus, any other
/// only asks the first one to show itself or to carry out an action. Without a bus every process is the first.
class ApplicationInstance : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit ApplicationInstance(const QDBusConnection &bus, QObject *parent = nullptr);

    [[nodiscard]] bool isFirst() const;
    /// Is asked on another bus from now on, unless another process of the program came first there.
    void setBus(const QDBusConnection &bus);
    /// Asks the first process to carry out `action`, or without one to show itself, hands it `startup`, and calls
    /// `done` with whether it answered, within a second.
    void askFirst(std::optional<DesktopAction> action, const Startup &startup, std::function<void(bool answered)> done);

    /// Whether nobody has asked for more than actions so far: a window that comes up leaves the keyboard where it is.
    [[nodiscard]] bool isAskedForActionsAlone() const;
    /// The action is told as soon as it can be carried out, or never if that takes longer than a second.
    void requestAction(DesktopAction action);
    /// From now on, there is someone who carries out the actions that do not need Music.
    void tellActions();

public Q_SLOTS:
    /// From now on, the actions that need Music can be carried out as well.
    void tellMusicActions();

    // What the desktop, or another process of the program, calls.
    Q_SCRIPTABLE void Activate(const QVariantMap &platformData);
    Q_SCRIPTABLE void Open(const QStringList &uris, const QVariantMap &platformData);
    Q_SCRIPTABLE void ActivateAction(
        const QString &actionName, const QVariantList &parameter, const QVariantMap &platformData);

Q_SIGNALS:
    void activated(const tunedeck::Startup &startup);
    /// What was started was an action, which takes no keyboard.
    void startupLeft(const tunedeck::Startup &startup);
    void actionRequested(tunedeck::DesktopAction action);

private:
    void registerObject();
    void tellBus(const QString &method, const QVariantList &arguments);
    [[nodiscard]] bool canTell(DesktopAction action) const;
    void tellWaitingActions();

    QDBusConnection m_bus;
    bool m_isFirst;
    bool m_isActivated = false;
    bool m_isActionRequested = false;
    bool m_tellsActions = false;
    bool m_tellsMusicActions = false;
    QList<DesktopAction> m_waitingActions;
    QTimer m_patience{this};
};

} // namespace tunedeck

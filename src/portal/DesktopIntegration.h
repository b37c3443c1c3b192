// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ActivationToken.h"
#include "portal/AutostartEntry.h"
#include "portal/GlobalShortcuts.h"
#include "portal/SessionStart.h"
#include "preferences/DesktopSettings.h"

#include <QHash>
#include <QList>
#include <QString>

namespace tunedeck {

class UserDefaults;

/// Carries out the settings that need the desktop: the keyboard shortcuts that work in every window, and the start with
/// the session.
class DesktopIntegration : public DesktopSettings {
    Q_OBJECT

public:
    /// `defaults` must outlive this object. `shortcuts` are those that the desktop is offered. `autostartFolder` is
    /// where programs that start with the session have their entries, `busAddress` that of the session bus; the usual
    /// one if empty.
    DesktopIntegration(UserDefaults &defaults, const QList<GlobalShortcuts::Shortcut> &shortcuts,
        const QString &autostartFolder = tunedeck::autostartFolder(), const QString &busAddress = {},
        QObject *parent = nullptr);

    [[nodiscard]] QString note(const QString &key) const override { return m_notes.value(key); }

    /// Follows the settings from now on. The desktop is asked for nothing before.
    void begin();
    /// Call this when there is a new connection to the session bus: what the portal kept for the former one is gone.
    void askAgain();

Q_SIGNALS:
    /// The user pressed the shortcut with this id. `token` gives the keyboard focus; it may be empty.
    void shortcutPressed(const QString &id, const tunedeck::ActivationToken &token);

private:
    void startWithSession(bool isWanted);
    void handleSessionStart(bool isWanted, SessionStart::Result result);
    void setNote(const QString &key, const QString &note);

    UserDefaults &m_defaults;
    GlobalShortcuts m_shortcuts;
    SessionStart m_sessionStart;
    bool m_startsWithSession = false;
    QHash<QString, QString> m_notes;
};

} // namespace tunedeck

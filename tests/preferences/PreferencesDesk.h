// SPDX-License-Identifier: MIT
#pragma once

#include "platform/UserDefaults.h"
#include "preferences/DesktopSettings.h"
#include "preferences/Updater.h"
#include "support/ScriptedFollowablePlayers.h"
#include "support/failOnWarning.h"

#include <QAccessible>
#include <QHash>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>

#include <memory>

namespace tunedeck {

class CountingUpdater : public Updater {
public:
    int checks = 0;
    bool looks = true;

    [[nodiscard]] bool looksForUpdates() const override { return looks; }
    void checkForUpdates() override { ++checks; }
};

class ScriptedDesktopSettings : public DesktopSettings {
public:
    [[nodiscard]] QString note(const QString &key) const override { return m_notes.value(key); }
    void say(const QString &key, const QString &note)
    {
        m_notes.insert(key, note);
        Q_EMIT noteChanged(key);
    }

private:
    QHash<QString, QString> m_notes;
};

/// Everything that the preferences need, with settings of the test's own.
struct PreferencesDesk {
    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("settings"))};
    ScriptedFollowablePlayers players;
    CountingUpdater updater;
    ScriptedDesktopSettings desktopSettings;

    PreferencesDesk()
    {
        defaults.registerDefaults({
            {SettingsKey::remainingTimeEnabled, true},
            {SettingsKey::appearanceClassic, true},
            {SettingsKey::appearanceUpdatesDockIcon, true},
        });
    }

    /// The same settings in another store, as another process has them.
    [[nodiscard]] std::unique_ptr<UserDefaults> otherDefaults() const
    {
        return std::make_unique<UserDefaults>(folder.filePath(QStringLiteral("settings")));
    }
};

/// The name of `widget` for screen readers.
inline QString spokenName(QWidget &widget)
{
    return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name);
}

/// The widgets that Tab reaches in `view`, in this order.
inline QList<QWidget *> tabOrder(QWidget &view)
{
    QList<QWidget *> controls;
    for (QWidget *next = view.nextInFocusChain(); next != &view; next = next->nextInFocusChain()) {
        if (view.isAncestorOf(next) && next->isVisibleTo(&view) && (next->focusPolicy() & Qt::TabFocus) != 0) {
            controls.append(next);
        }
    }
    return controls;
}

/// Checks the rules for the controls of every pane.
inline void verifyControlsAreAccessible(QWidget &view)
{
    view.show();
    QPoint last;
    for (QWidget *control : tabOrder(view)) {
        QVERIFY2(!spokenName(*control).isEmpty(), control->metaObject()->className());
        const QPoint place = control->mapTo(&view, QPoint());
        QVERIFY2(place.y() > last.y() || (place.y() == last.y() && place.x() > last.x()), "not from top to bottom");
        last = place;
    }
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "portal/DesktopIntegration.h"

#include "platform/UserDefaults.h"

#include <QCoreApplication>

#include <utility>

namespace tunedeck {

namespace {
/// The key of the setting that says whether the desktop has yet to answer to SettingsKey::startWithSession (Boolean).
constexpr QLatin1String sessionStartUnanswered{"StartWithSessionUnanswered"};

QString noteOf(GlobalShortcuts::State state)
{
    switch (state) {
    case GlobalShortcuts::State::Off:
        return {};
    case GlobalShortcuts::State::Asking:
        return DesktopIntegration::tr("Waiting for the desktop…", "Below a check box in the preferences");
    case GlobalShortcuts::State::On:
        return DesktopIntegration::tr(
            "The keys are in the desktop's keyboard settings.", "Below a check box in the preferences");
    case GlobalShortcuts::State::Declined:
        return DesktopIntegration::tr("The desktop refuses.", "Below a check box in the preferences");
    case GlobalShortcuts::State::Failed:
        return DesktopIntegration::tr("The desktop gives no usable answer.", "Below a check box in the preferences");
    case GlobalShortcuts::State::Missing:
        break;
    }
    return DesktopIntegration::tr(
        "This desktop offers none. Its keyboard settings can run “tunedeck --action next” instead.",
        "Below a check box in the preferences: keyboard shortcuts for every window");
}

QString noteOf(SessionStart::Result result)
{
    switch (result) {
    case SessionStart::Result::Done:
        return {};
    case SessionStart::Result::Declined:
        return DesktopIntegration::tr("The desktop refuses.", "Below a check box in the preferences");
    case SessionStart::Result::KeptUsersEntry:
        return DesktopIntegration::tr("You have changed the entry in the autostart folder, so it stays as it is.",
            "Below a check box in the preferences: start with the session");
    case SessionStart::Result::NotWritable:
        break;
    }
    return DesktopIntegration::tr(
        "The autostart folder cannot be changed.", "Below a check box in the preferences: start with the session");
}
} // namespace

DesktopIntegration::DesktopIntegration(UserDefaults &defaults, const QList<GlobalShortcuts::Shortcut> &shortcuts,
    const QString &autostartFolder, const QString &busAddress, QObject *parent)
    : DesktopSettings(parent)
    , m_defaults(defaults)
    , m_shortcuts(shortcuts, busAddress)
    , m_sessionStart(
          {QCoreApplication::applicationFilePath(), QStringLiteral("--autostart")}, autostartFolder, busAddress)
{
    connect(&m_shortcuts, &GlobalShortcuts::stateChanged, this,
        [this](GlobalShortcuts::State state) { setNote(SettingsKey::globalShortcuts, noteOf(state)); });
    connect(&m_shortcuts, &GlobalShortcuts::activated, this, &DesktopIntegration::shortcutPressed);
    connect(&m_sessionStart, &SessionStart::finished, this, &DesktopIntegration::handleSessionStart);
}

void DesktopIntegration::begin()
{
    // The program may have ended before the desktop answered.
    m_startsWithSession =
        m_defaults.boolForKey(SettingsKey::startWithSession) != m_defaults.boolForKey(sessionStartUnanswered);
    m_defaults.bind(SettingsKey::startWithSession, this, [this](bool isWanted) { startWithSession(isWanted); });
    m_defaults.bind(SettingsKey::globalShortcuts, this, [this](bool isWanted) { m_shortcuts.setWanted(isWanted); });
}

void DesktopIntegration::askAgain()
{
    m_shortcuts.setWanted(false);
    m_shortcuts.setWanted(m_defaults.boolForKey(SettingsKey::globalShortcuts));
}

void DesktopIntegration::startWithSession(bool isWanted)
{
    if (std::exchange(m_startsWithSession, isWanted) == isWanted) {
        return;
    }
    setNote(SettingsKey::startWithSession, tr("Waiting for the desktop…", "Below a check box in the preferences"));
    m_defaults.setBool(sessionStartUnanswered, true);
    m_sessionStart.setWanted(isWanted,
        tr("Tunedeck is at hand when you log in.", "The desktop may show it when it asks whether to allow this"));
}

void DesktopIntegration::handleSessionStart(bool isWanted, SessionStart::Result result)
{
    m_defaults.setBool(sessionStartUnanswered, false);
    setNote(SettingsKey::startWithSession, noteOf(result));
    if (result != SessionStart::Result::Done) {
        // The check box shows what is the case.
        m_startsWithSession = !isWanted;
        m_defaults.setBool(SettingsKey::startWithSession, !isWanted);
    }
}

void DesktopIntegration::setNote(const QString &key, const QString &note)
{
    m_notes.insert(key, note);
    Q_EMIT noteChanged(key);
}

} // namespace tunedeck

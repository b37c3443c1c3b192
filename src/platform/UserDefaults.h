// SPDX-License-Identifier: MIT
#pragma once

#include "platform/settings/SettingsFile.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QVariant>
#include <QVariantHash>

#include <chrono>
#include <functional>
#include <optional>

namespace tunedeck {

/// The keys of the settings. The values are Booleans unless a comment says otherwise.
namespace SettingsKey {
inline const QString keepMainWindowAboveAllOtherWindows = QStringLiteral("KeepMainWindowAboveAllOtherWindows");
inline const QString remainingTimeEnabled = QStringLiteral("RemainingTimeEnabled");
inline const QString appearanceClassic = QStringLiteral("AppearanceClassic");
inline const QString appearanceUpdatesDockIcon = QStringLiteral("AppearanceUpdatesDockIcon");
inline const QString volumeButtonsHidden = QStringLiteral("VolumeButtonsHidden");
/// Whether wheels that do not report their direction are taken for natural scrolling.
inline const QString wheelDirectionTurned = QStringLiteral("WheelDirectionTurned");
/// The system's accent colour (integer; see graphiteAccent). The program never writes it to disk.
inline const QString appleAccentColor = QStringLiteral("AppleAccentColor");
/// Whether the desktop's portal is asked for keyboard shortcuts that work in every window.
inline const QString globalShortcuts = QStringLiteral("GlobalShortcuts");
/// Whether the session starts the program, as far as the program has arranged that.
inline const QString startWithSession = QStringLiteral("StartWithSession");
/// Whether the window is shown only while there is a player.
inline const QString showOnlyWithPlayer = QStringLiteral("ShowOnlyWithPlayer");
/// Whether to run through XWayland if the session has it.
inline const QString startThroughXWayland = QStringLiteral("StartThroughXWayland");
/// The identifier of the player to follow whatever else plays (text). Empty if the program chooses.
inline const QString followedPlayer = QStringLiteral("FollowedPlayer");
/// The application to open if that player does not run (text): its identifier, a slash, and its desktop entry.
inline const QString followedPlayerEntry = QStringLiteral("FollowedPlayerEntry");
/// The desktop entry of the player followed last (text).
inline const QString lastFollowedPlayer = QStringLiteral("LastFollowedPlayer");
/// The name of the player to follow, for the time in which it does not run (text): its identifier, a line end, and its
/// name.
inline const QString followedPlayerName = QStringLiteral("FollowedPlayerName");
/// The players that are never followed unless the user pins them (texts): of each its identifier, then its name.
inline const QString neverFollowedPlayers = QStringLiteral("NeverFollowedPlayers");
/// The serial of the newest list of updates that was seen (integer).
inline const QString newestUpdateFeed = QStringLiteral("NewestUpdateFeed");
} // namespace SettingsKey

/// The value of SettingsKey::appleAccentColor for grey. Any other value, or none, is a colour.
inline constexpr int graphiteAccent = -1;

/// The settings store. It looks a key up in three layers and takes the first value: the user's settings, the system's
/// values (the accent colour), the registered defaults. Only the user's settings are written to disk.
///
/// The store follows changes that other processes make to its file (see SettingsFile). If the file cannot be written,
/// settings last for this run. No content of the file is an error: a value of the wrong type reads as the registered
/// default.
class UserDefaults : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool AppearanceUpdatesDockIcon READ appearanceUpdatesDockIcon WRITE setAppearanceUpdatesDockIcon NOTIFY
            appearanceUpdatesDockIconChanged)

public:
    /// The store of the user who runs the program, in the user's configuration folder.
    explicit UserDefaults(QObject *parent = nullptr);
    /// The store in the file `path`, which may be missing.
    explicit UserDefaults(const QString &path, QObject *parent = nullptr);
    ~UserDefaults() override;

    /// Reads a value from the user's store before there is a QApplication, without registered defaults. Changes
    /// nothing on disk. False if the file is unreadable.
    [[nodiscard]] static bool storedBool(const QString &key);

    /// Adds default values, which are never written to disk.
    void registerDefaults(const QVariantHash &defaults);

    /// False for a key that has no value in any layer.
    [[nodiscard]] bool boolForKey(const QString &key) const;
    /// 0 for a key that has no value in any layer.
    [[nodiscard]] qlonglong integerForKey(const QString &key) const;
    /// Empty for a key that has no value in any layer. At most 1,000 characters.
    [[nodiscard]] QString stringForKey(const QString &key) const;
    /// Empty for a key that has no value in any layer. At most 1,000 texts of at most 1,000 characters.
    [[nodiscard]] QStringList stringListForKey(const QString &key) const;

    void setBool(const QString &key, bool value);
    void setValue(const QString &key, const QVariant &value);
    /// Sets a value of the system's layer. An invalid QVariant removes it.
    void setSystemValue(const QString &key, const QVariant &value);

    /// Calls `setter` with the key's Boolean value now, and again on every change while `context` exists.
    void bind(const QString &key, QObject *context, std::function<void(bool)> setter);

    [[nodiscard]] bool appearanceUpdatesDockIcon() const;
    void setAppearanceUpdatesDockIcon(bool value);

Q_SIGNALS:
    /// Emitted for every write of the key through this object, even of an equal value, and for every change of its
    /// value that comes from the system or from another process.
    void valueChanged(const QString &key);
    void appearanceUpdatesDockIconChanged();

private:
    template <typename T>
    [[nodiscard]] T firstFitting(const QString &key, std::optional<T> (*fit)(const QVariant &)) const;
    /// The value of a key that the user has not set.
    [[nodiscard]] QVariant fallback(const QString &key) const;
    void reload();
    void save(std::chrono::milliseconds patience);
    void watch();
    void reportUnwritable();

    const SettingsFile m_file;
    QVariantHash m_registered;
    QVariantHash m_system;
    /// The file as last read or written. Comparing with it shows what another process has changed.
    QVariantHash m_stored;
    /// Values that were set through this object and are not on disk yet. They override m_stored.
    QVariantHash m_unsaved;
    QFileSystemWatcher m_watcher;
    QTimer m_reloadTimer;
    QTimer m_saveTimer;
    bool m_unwritableReported = false;
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariant>
#include <QVariantHash>

#include <chrono>
#include <functional>
#include <optional>

namespace tunedeck {

/// The keys of the settings; Boolean where nothing else is said.
namespace SettingsKey {
inline const QString keepMainWindowAboveAllOtherWindows = QStringLiteral("KeepMainWindowAboveAllOtherWindows");
inline const QString remainingTimeEnabled = QStringLiteral("RemainingTimeEnabled");
inline const QString appearanceClassic = QStringLiteral("AppearanceClassic");
inline const QString appearanceUpdatesDockIcon = QStringLiteral("AppearanceUpdatesDockIcon");
inline const QString volumeButtonsHidden = QStringLiteral("VolumeButtonsHidden");
/// The system's accent colour (integer; graphiteAccent or any other). Read only; the program never writes it.
inline const QString appleAccentColor = QStringLiteral("AppleAccentColor");
/// Whether to run through XWayland where there is one.
inline const QString startThroughXWayland = QStringLiteral("StartThroughXWayland");
/// The identifier of the player to follow whatever else plays (text); empty where that is left to the program.
inline const QString followedPlayer = QStringLiteral("FollowedPlayer");
/// What to open when that player does not run (text): its identifier, a slash, and its desktop entry.
inline const QString followedPlayerEntry = QStringLiteral("FollowedPlayerEntry");
/// The desktop entry of the player followed last (text).
inline const QString lastFollowedPlayer = QStringLiteral("LastFollowedPlayer");
} // namespace SettingsKey

/// The value of SettingsKey::appleAccentColor for the grey accent colour. Every other value is a colourful one.
inline constexpr int graphiteAccent = -1;

/// The settings store. Three layers answer a key, the first that has a value wins: what the user (or the program for
/// the user) set, what the system says (the accent colour), what was registered as default. Only the first is written
/// to disk.
///
/// The store follows changes that other processes make to its file. A file that cannot be understood is kept beside
/// the new one, under its name with ".broken" appended; where nothing can be written, what is set holds for this run.
/// No content of the file, however wrong, is an error: a value that does not fit reads as the registered default.
class UserDefaults : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool AppearanceUpdatesDockIcon READ appearanceUpdatesDockIcon WRITE setAppearanceUpdatesDockIcon NOTIFY
            appearanceUpdatesDockIconChanged)

public:
    /// The store of the user who runs the program, in the user's configuration folder.
    explicit UserDefaults(QObject *parent = nullptr);
    /// A store in the file `path`, which need not exist.
    explicit UserDefaults(const QString &path, QObject *parent = nullptr);
    ~UserDefaults() override;

    /// What the user's store says while there is no program around it yet, without its defaults. It only reads:
    /// a file that cannot be understood stays where it is, and says false.
    [[nodiscard]] static bool storedBool(const QString &key);

    /// Adds fallback values, which are never written to disk.
    void registerDefaults(const QVariantHash &defaults);

    /// False for a key that has no value in any layer.
    [[nodiscard]] bool boolForKey(const QString &key) const;
    /// 0 for a key that has no value in any layer.
    [[nodiscard]] qlonglong integerForKey(const QString &key) const;
    /// Empty for a key that has no value in any layer; at most 1,000 characters.
    [[nodiscard]] QString stringForKey(const QString &key) const;

    void setBool(const QString &key, bool value);
    void setValue(const QString &key, const QVariant &value);
    /// Puts a value into the system's layer; an invalid one takes it out again.
    void setSystemValue(const QString &key, const QVariant &value);

    /// Calls `setter` with the key's Boolean value at once and again on every change, for as long as `context` lives.
    void bind(const QString &key, QObject *context, std::function<void(bool)> setter);

    [[nodiscard]] bool appearanceUpdatesDockIcon() const;
    void setAppearanceUpdatesDockIcon(bool value);

Q_SIGNALS:
    /// Once for every write of the key through this object (also of an equal value), and for every change of its
    /// value that comes from the system or from another process.
    void valueChanged(const QString &key);
    void appearanceUpdatesDockIconChanged();

private:
    template <typename T>
    [[nodiscard]] T firstFitting(const QString &key, std::optional<T> (*fit)(const QVariant &)) const;
    /// What a key has while the user has set nothing.
    [[nodiscard]] QVariant fallback(const QString &key) const;
    [[nodiscard]] bool writeFile(const QVariantHash &values) const;
    void reload();
    void save(std::chrono::milliseconds patience);
    void watch();
    void reportUnwritable();

    const QString m_path;
    QVariantHash m_registered;
    QVariantHash m_system;
    /// The file as last read or written; what has changed in it is found by comparing with this.
    QVariantHash m_stored;
    /// Set through this object and not on disk yet; stands before m_stored.
    QVariantHash m_unsaved;
    QFileSystemWatcher m_watcher;
    QTimer m_reloadTimer;
    QTimer m_saveTimer;
    bool m_unwritableReported = false;
};

} // namespace tunedeck

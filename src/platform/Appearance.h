// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QVariant>

#include <optional>

class QDBusConnection;
class QDBusVariant;

namespace tunedeck {

class UserDefaults;

enum class AppearanceName { Aqua, DarkAqua, VibrantDark };

/// Whether controls drawn for `name` are light on dark.
[[nodiscard]] constexpr bool isDark(AppearanceName name)
{
    return name != AppearanceName::Aqua;
}

/// The application's light or dark appearance: the one forced on it, else the system's, which comes from the desktop
/// portal (org.freedesktop.appearance color-scheme, asked without waiting) or, until and unless a portal answers, from
/// the palette. Also passes the system's accent colour to the settings store, as "AppleAccentColor", tells whether the
/// user wants nothing on the screen to move (org.gnome.desktop.interface enable-animations, or
/// org.kde.kdeglobals.KDE AnimationDurationFactor, of the same portal), and how the user wants texts
/// (org.gnome.desktop.interface text-scaling-factor and font-name).
class Appearance : public QObject {
    Q_OBJECT
    Q_MOC_INCLUDE(<QDBusVariant>)

public:
    /// `defaults` must outlive this object. `bus` is where the portal is looked for.
    Appearance(UserDefaults &defaults, const QDBusConnection &bus, QObject *parent = nullptr);

    /// Looks for the portal on another bus from now on.
    void setBus(const QDBusConnection &bus);

    /// Forces an appearance on the application, or with no value lets it follow the system. Sets no palette; a palette
    /// that goes with the forced appearance is set after this call, so that it is not taken for the system's.
    void setApplicationAppearance(std::optional<AppearanceName> name);
    [[nodiscard]] std::optional<AppearanceName> applicationAppearance() const;
    /// What is drawn: never without a value.
    [[nodiscard]] AppearanceName effectiveAppearance() const;
    [[nodiscard]] bool isMotionReduced() const;
    /// What the size of every text is to be multiplied with, from 0.5 to 3; 1 where the portal does not say.
    [[nodiscard]] double textScale() const;
    /// The font that texts of that scale are in, such as "Cantarell 11"; empty where the portal does not say.
    [[nodiscard]] QString fontName() const;

Q_SIGNALS:
    /// Only on a real change.
    void effectiveAppearanceChanged(tunedeck::AppearanceName name);
    /// Only on a real change.
    void motionReducedChanged(bool isReduced);
    /// The text scale or the name of the font. Only on a real change.
    void textChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// What one source says of the system; no value where it says nothing.
    struct System {
        std::optional<bool> dark;
        std::optional<bool> graphite;
        /// Each desktop says it in its own way; where both are heard, either is enough.
        bool gnomeReducesMotion = false;
        bool kdeReducesMotion = false;
    };

    struct Text {
        double scale = 1;
        QString fontName;

        bool operator==(const Text &) const = default;
    };

    [[nodiscard]] static System readPalette();
    /// A setting of the portal.
    struct PortalKey {
        QString group;
        QString key;
    };

    void followPortal(QDBusConnection bus, const QString &group, const QStringList &keys);
    void askPortal(const QDBusConnection &bus, const QString &method, const PortalKey &asked);
    void takePortalValue(const PortalKey &told, const QVariant &value);
    void takeText(const Text &text);
    void update();

    UserDefaults &m_defaults;
    System m_palette;
    System m_portal;
    std::optional<AppearanceName> m_application;
    AppearanceName m_effective = AppearanceName::Aqua;
    bool m_isMotionReduced = false;
    Text m_text;

private Q_SLOTS:
    void portalSettingChanged(const QString &group, const QString &key, const QDBusVariant &value);
};

} // namespace tunedeck

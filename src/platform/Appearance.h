// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPalette>
#include <QVariant>

#include <memory>
#include <optional>

class QDBusConnection;

namespace tunedeck {

class PortalSettings;
class UserDefaults;
struct PortalKey;

/// Aqua is the light appearance, the others are dark. The program never uses VibrantDark.
enum class AppearanceName { Aqua, DarkAqua, VibrantDark };

/// Whether controls are drawn light on dark.
[[nodiscard]] constexpr bool isDark(AppearanceName name)
{
    return name != AppearanceName::Aqua;
}

/// The application's light or dark appearance: the one forced on it, else the system's. The system's appearance comes
/// from the desktop portal (org.freedesktop.appearance color-scheme), or from the palette while no portal has answered.
///
/// Reads four more things from the portal, and never waits for it:
/// - whether the user wants high contrast (org.freedesktop.appearance contrast),
/// - the system's accent colour, which goes to the settings store as "AppleAccentColor",
/// - whether the user wants reduced motion (org.gnome.desktop.interface enable-animations, or
///   org.kde.kdeglobals.KDE AnimationDurationFactor),
/// - the scale and the font of texts (org.gnome.desktop.interface text-scaling-factor and font-name).
class Appearance : public QObject {
    Q_OBJECT

public:
    /// `defaults` must outlive this object. `bus` is the one of the portal.
    Appearance(UserDefaults &defaults, const QDBusConnection &bus, QObject *parent = nullptr);
    ~Appearance() override;

    /// Asks the portal on another bus from now on.
    void setBus(const QDBusConnection &bus);

    /// Forces an appearance on the application; no value lets it follow the system. Sets no palette.
    void setApplicationAppearance(std::optional<AppearanceName> name);
    [[nodiscard]] std::optional<AppearanceName> applicationAppearance() const { return m_application; }
    /// The appearance to draw.
    [[nodiscard]] AppearanceName effectiveAppearance() const { return m_effective; }
    /// Sets the palette of menus and ordinary windows. It does not count as the system's. No value is the system's own
    /// palette.
    void setPalette(const std::optional<QPalette> &palette);
    /// Whether the system's own palette is dark.
    [[nodiscard]] bool isSystemPaletteDark() const { return m_palette.dark.value_or(false); }
    [[nodiscard]] bool isMotionReduced() const { return m_isMotionReduced; }
    [[nodiscard]] bool isHighContrast() const { return m_isHighContrast; }
    /// The factor for the size of every text, from 0.5 to 3. It is 1 if the portal does not say.
    [[nodiscard]] double textScale() const { return m_text.scale; }
    /// The font that the scale belongs to, such as "Cantarell 11". Empty if the portal does not say.
    [[nodiscard]] QString fontName() const { return m_text.fontName; }

Q_SIGNALS:
    /// Emitted only if the appearance changes.
    void effectiveAppearanceChanged(tunedeck::AppearanceName name);
    /// Emitted only if the setting changes.
    void motionReducedChanged(bool isReduced);
    /// Emitted only if the setting changes.
    void highContrastChanged(bool isHigh);
    /// Emitted only if the text scale or the name of the font changes.
    void textChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// The settings from one source; no value for what it does not say.
    struct System {
        std::optional<bool> dark;
        std::optional<bool> graphite;
        /// GNOME and Plasma have different settings for it. Either one is enough.
        bool gnomeReducesMotion = false;
        bool kdeReducesMotion = false;
    };

    struct Text {
        double scale = 1;
        QString fontName;

        bool operator==(const Text &) const = default;
    };

    [[nodiscard]] static System readPalette();
    void applyPortalValue(const PortalKey &changed, const QVariant &value);
    void setText(const Text &text);
    void setHighContrast(bool isHigh);
    void update();

    UserDefaults &m_defaults;
    std::unique_ptr<PortalSettings> m_settings;
    bool m_hasOwnPalette = false;
    System m_palette; ///< the system's
    System m_portal;
    std::optional<AppearanceName> m_application;
    AppearanceName m_effective = AppearanceName::Aqua;
    bool m_isMotionReduced = false;
    bool m_isHighContrast = false;
    Text m_text;
};

} // namespace tunedeck

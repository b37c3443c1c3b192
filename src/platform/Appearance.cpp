// SPDX-License-Identifier: MIT
#include "platform/Appearance.h"

#include "platform/UserDefaults.h"
#include "platform/bus/PortalSettings.h"
#include "platform/shortened.h"
#include "platform/windowLog.h"

#include <QDBusConnection>
#include <QEvent>
#include <QGuiApplication>
#include <QLatin1String>
#include <QList>
#include <QVariantList>

#include <algorithm>
#include <array>
#include <utility>

namespace tunedeck {

namespace {
constexpr QLatin1String appearanceGroup("org.freedesktop.appearance");
constexpr QLatin1String colorSchemeKey("color-scheme");
constexpr QLatin1String accentColorKey("accent-color");
constexpr QLatin1String contrastKey("contrast");
constexpr QLatin1String gnomeGroup("org.gnome.desktop.interface");
constexpr QLatin1String animationsKey("enable-animations");
constexpr QLatin1String textScaleKey("text-scaling-factor");
constexpr QLatin1String fontNameKey("font-name");
constexpr QLatin1String kdeGroup("org.kde.kdeglobals.KDE");
constexpr QLatin1String animationDurationKey("AnimationDurationFactor");
/// A smaller text could not be read, a larger one would fill the screen.
constexpr double leastTextScale = 0.5;
constexpr double mostTextScale = 3;
constexpr qsizetype longestFontName = 200;

/// Red, green and blue from 0 to 1.
using Components = std::array<double, 3>;

bool isGrey(const Components &color)
{
    const auto [least, most] = std::minmax_element(color.begin(), color.end());
    return *most - *least < 0.1;
}

std::optional<bool> decodeColorScheme(const QVariant &value)
{
    constexpr uint preferDark = 1;
    constexpr uint preferLight = 2;
    const uint scheme = value.typeId() == QMetaType::UInt ? value.toUInt() : 0;
    return scheme == preferDark || scheme == preferLight ? std::optional(scheme == preferDark) : std::nullopt;
}

bool decodeContrast(const QVariant &value)
{
    constexpr uint high = 1;
    return value.typeId() == QMetaType::UInt && value.toUInt() == high;
}

std::optional<bool> decodeAccentColor(const QVariant &value)
{
    const QVariantList parts = value.toList();
    Components color;
    if (size_t(parts.size()) != color.size()) {
        return std::nullopt;
    }
    std::ranges::transform(parts, color.begin(), [](const QVariant &part) { return part.toDouble(); });
    // The portal sends values out of range if no accent colour is set.
    const bool isSet = std::all_of(color.begin(), color.end(), [](double c) { return c >= 0 && c <= 1; });
    return isSet && isGrey(color);
}

double decodeTextScale(const QVariant &value)
{
    const double scale = value.typeId() == QMetaType::Double ? value.toDouble() : 1;
    return scale >= leastTextScale && scale <= mostTextScale ? scale : 1;
}

QString decodeFontName(const QVariant &value)
{
    const QString name = value.typeId() == QMetaType::QString ? value.toString() : QString();
    return name.size() <= longestFontName ? name : QString();
}
} // namespace

Appearance::Appearance(UserDefaults &defaults, const QDBusConnection &bus, QObject *parent)
    : QObject(parent)
    , m_defaults(defaults)
    , m_palette(readPalette())
{
    qGuiApp->installEventFilter(this);
    update();
    setBus(bus);
}

Appearance::~Appearance() = default;

void Appearance::setBus(const QDBusConnection &bus)
{
    m_settings = std::make_unique<PortalSettings>(bus,
        QList<PortalKey>{{appearanceGroup, colorSchemeKey}, {appearanceGroup, accentColorKey},
            {appearanceGroup, contrastKey}, {gnomeGroup, animationsKey}, {gnomeGroup, textScaleKey},
            {gnomeGroup, fontNameKey}, {kdeGroup, animationDurationKey}},
        this);
    connect(m_settings.get(), &PortalSettings::read, this, &Appearance::applyPortalValue);
    connect(m_settings.get(), &PortalSettings::failed, this, [](const PortalKey &key, const QString &reason) {
        qCDebug(windowLog) << "portal:" << key.group << key.key << shortened(reason);
    });
}

void Appearance::setApplicationAppearance(std::optional<AppearanceName> name)
{
    m_application = name;
    update();
}

void Appearance::setPalette(const std::optional<QPalette> &palette)
{
    m_hasOwnPalette = palette.has_value();
    QGuiApplication::setPalette(palette.value_or(QPalette()));
}

bool Appearance::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange && !m_hasOwnPalette) {
        m_palette = readPalette();
        update();
    }
    return QObject::eventFilter(watched, event);
}

Appearance::System Appearance::readPalette()
{
    const QPalette palette = QGuiApplication::palette();
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    const QColor window = palette.color(QPalette::Active, QPalette::Window);
    const QColor accent = palette.color(QPalette::Active, QPalette::Highlight);
    System system;
    system.dark = text.lightnessF() > window.lightnessF();
    system.graphite = isGrey({accent.redF(), accent.greenF(), accent.blueF()});
    return system;
}

void Appearance::applyPortalValue(const PortalKey &changed, const QVariant &value)
{
    const auto isKey = [&changed](QLatin1String group, QLatin1String key) {
        return changed.group == group && changed.key == key;
    };
    if (isKey(appearanceGroup, colorSchemeKey)) {
        m_portal.dark = decodeColorScheme(value);
    } else if (isKey(appearanceGroup, accentColorKey)) {
        m_portal.graphite = decodeAccentColor(value);
    } else if (isKey(appearanceGroup, contrastKey)) {
        setHighContrast(decodeContrast(value));
    } else if (isKey(gnomeGroup, animationsKey) && value.typeId() == QMetaType::Bool) {
        m_portal.gnomeReducesMotion = !value.toBool();
    } else if (isKey(gnomeGroup, textScaleKey)) {
        setText({decodeTextScale(value), m_text.fontName});
    } else if (isKey(gnomeGroup, fontNameKey)) {
        setText({m_text.scale, decodeFontName(value)});
    } else if (isKey(kdeGroup, animationDurationKey) && value.typeId() == QMetaType::QString) {
        bool isNumber = false;
        const double factor = value.toString().toDouble(&isNumber);
        m_portal.kdeReducesMotion = isNumber && factor <= 0;
    }
    update();
}

void Appearance::setText(const Text &text)
{
    if (text != std::exchange(m_text, text)) {
        Q_EMIT textChanged();
    }
}

void Appearance::setHighContrast(bool isHigh)
{
    if (isHigh != std::exchange(m_isHighContrast, isHigh)) {
        Q_EMIT highContrastChanged(isHigh);
    }
}

void Appearance::update()
{
    const bool isGraphite = m_portal.graphite ? *m_portal.graphite : m_palette.graphite.value_or(false);
    m_defaults.setSystemValue(SettingsKey::appleAccentColor, isGraphite ? QVariant(graphiteAccent) : QVariant());

    const bool isSystemDark = m_portal.dark ? *m_portal.dark : m_palette.dark.value_or(false);
    const auto effective = m_application.value_or(isSystemDark ? AppearanceName::DarkAqua : AppearanceName::Aqua);
    if (effective != m_effective) {
        m_effective = effective;
        qCDebug(windowLog) << "appearance" << (isDark(effective) ? "dark" : "light")
                           << (m_application          ? "forced"
                                      : m_portal.dark ? "from the portal"
                                                      : "from the palette");
        Q_EMIT effectiveAppearanceChanged(effective);
    }

    const bool isMotionReduced = m_portal.gnomeReducesMotion || m_portal.kdeReducesMotion;
    if (isMotionReduced != m_isMotionReduced) {
        m_isMotionReduced = isMotionReduced;
        Q_EMIT motionReducedChanged(isMotionReduced);
    }
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "platform/Appearance.h"

#include "platform/UserDefaults.h"
#include "platform/shortened.h"
#include "platform/windowLog.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QEvent>
#include <QGuiApplication>

#include <algorithm>
#include <array>
#include <utility>

namespace tunedeck {

namespace {
constexpr QLatin1String portalPath("/org/freedesktop/portal/desktop");
constexpr QLatin1String portalInterface("org.freedesktop.portal.Settings");
constexpr QLatin1String appearanceGroup("org.freedesktop.appearance");
constexpr QLatin1String colorSchemeKey("color-scheme");
constexpr QLatin1String accentColorKey("accent-color");
constexpr QLatin1String gnomeGroup("org.gnome.desktop.interface");
constexpr QLatin1String animationsKey("enable-animations");
constexpr QLatin1String textScaleKey("text-scaling-factor");
constexpr QLatin1String fontNameKey("font-name");
constexpr QLatin1String kdeGroup("org.kde.kdeglobals.KDE");
constexpr QLatin1String animationDurationKey("AnimationDurationFactor");
constexpr QLatin1String readOneMethod("ReadOne");

/// In milliseconds. The bus may have to start the portal and its backends first.
constexpr int portalDeadline = 10'000;
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

/// Read wraps a value twice, ReadOne once.
QVariant unwrapped(QVariant value)
{
    while (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

std::optional<bool> decodeColorScheme(const QVariant &value)
{
    constexpr uint preferDark = 1;
    constexpr uint preferLight = 2;
    const uint scheme = value.typeId() == QMetaType::UInt ? value.toUInt() : 0;
    return scheme == preferDark || scheme == preferLight ? std::optional(scheme == preferDark) : std::nullopt;
}

std::optional<bool> decodeAccentColor(const QVariant &value)
{
    if (value.metaType() != QMetaType::fromType<QDBusArgument>()) {
        return std::nullopt;
    }
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QStringLiteral("(ddd)")) {
        return std::nullopt;
    }
    Components color;
    argument.beginStructure();
    argument >> color[0] >> color[1] >> color[2];
    argument.endStructure();
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

    // A D-Bus connection looks up the types of slots by name, and QDBusVariant has no name before its first use.
    qRegisterMetaType<QDBusVariant>();
    setBus(bus);
}

void Appearance::setBus(const QDBusConnection &bus)
{
    followPortal(bus, appearanceGroup, {colorSchemeKey, accentColorKey});
    followPortal(bus, gnomeGroup, {animationsKey, textScaleKey, fontNameKey});
    followPortal(bus, kdeGroup, {animationDurationKey});
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

void Appearance::followPortal(QDBusConnection bus, const QString &group, const QStringList &keys)
{
    // clang-format off
    // Given a service name, the connection would ask the bus for its owner and wait for the answer.
    bus.connect(QString(), portalPath, portalInterface, QStringLiteral("SettingChanged"),
        {group}, QString(), this, SLOT(portalSettingChanged(QString,QString,QDBusVariant)));
    // clang-format on
    for (const QString &key : keys) {
        askPortal(bus, readOneMethod, {group, key});
    }
}

void Appearance::askPortal(const QDBusConnection &bus, const QString &method, const PortalKey &asked)
{
    // This call may start the service: a portal runs only once it is needed.
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"), portalPath, portalInterface, method);
    message << asked.group << asked.key;
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(message, portalDeadline), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, bus, method, asked, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isValid()) {
            applyPortalValue(asked, reply.value().variant());
        } else if (reply.error().type() == QDBusError::UnknownMethod && method == readOneMethod) {
            askPortal(bus, QStringLiteral("Read"), asked);
        } else {
            qCDebug(windowLog) << "portal:" << asked.group << asked.key << shortened(reply.error().message());
        }
    });
}

void Appearance::applyPortalValue(const PortalKey &changed, const QVariant &value)
{
    const auto isKey = [&changed](QLatin1String group, QLatin1String key) {
        return changed.group == group && changed.key == key;
    };
    const QVariant plain = unwrapped(value);
    if (isKey(appearanceGroup, colorSchemeKey)) {
        m_portal.dark = decodeColorScheme(plain);
    } else if (isKey(appearanceGroup, accentColorKey)) {
        m_portal.graphite = decodeAccentColor(plain);
    } else if (isKey(gnomeGroup, animationsKey) && plain.typeId() == QMetaType::Bool) {
        m_portal.gnomeReducesMotion = !plain.toBool();
    } else if (isKey(gnomeGroup, textScaleKey)) {
        setText({decodeTextScale(plain), m_text.fontName});
    } else if (isKey(gnomeGroup, fontNameKey)) {
        setText({m_text.scale, decodeFontName(plain)});
    } else if (isKey(kdeGroup, animationDurationKey) && plain.typeId() == QMetaType::QString) {
        bool isNumber = false;
        const double factor = plain.toString().toDouble(&isNumber);
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

void Appearance::portalSettingChanged(const QString &group, const QString &key, const QDBusVariant &value)
{
    applyPortalValue({group, key}, value.variant());
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "Appearance.h"

#include "UserDefaults.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

#include <algorithm>
#include <array>

namespace tunedeck {

namespace {
constexpr QLatin1String portalPath("/org/freedesktop/portal/desktop");
constexpr QLatin1String portalInterface("org.freedesktop.portal.Settings");
constexpr QLatin1String appearanceGroup("org.freedesktop.appearance");
constexpr QLatin1String colorSchemeKey("color-scheme");
constexpr QLatin1String accentColorKey("accent-color");
constexpr QLatin1String readOneMethod("ReadOne");

/// The portal and what it stands on may have to be started first; nobody waits for it.
constexpr int portalDeadline = 10'000;
constexpr int graphite = -1;

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
    // Out of range is how the portal says that no accent is set.
    const bool isSet = std::all_of(color.begin(), color.end(), [](double c) { return c >= 0 && c <= 1; });
    return isSet && isGrey(color);
}
} // namespace

Appearance::Appearance(UserDefaults &defaults, const QDBusConnection &bus, QObject *parent)
    : QObject(parent)
    , m_defaults(defaults)
    , m_palette(readPalette())
{
    qGuiApp->installEventFilter(this);
    update();

    // clang-format off
    // With a service's name the connection would ask the bus, and wait, for the name's owner.
    QDBusConnection(bus).connect(QString(), portalPath, portalInterface, QStringLiteral("SettingChanged"),
        {appearanceGroup}, QString(), this, SLOT(portalSettingChanged(QString,QString,QDBusVariant)));
    // clang-format on
    askPortal(bus, readOneMethod, colorSchemeKey);
    askPortal(bus, readOneMethod, accentColorKey);
}

void Appearance::setApplicationAppearance(std::optional<AppearanceName> name)
{
    m_application = name;
    update();
}

std::optional<AppearanceName> Appearance::applicationAppearance() const
{
    return m_application;
}

AppearanceName Appearance::effectiveAppearance() const
{
    return m_effective;
}

bool Appearance::eventFilter(QObject *watched, QEvent *event)
{
    // While an appearance is forced, the palette may be the one that goes with it. The one that comes back when the
    // force ends is a change again.
    if (event->type() == QEvent::ApplicationPaletteChange && !m_application) {
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
    return {text.lightnessF() > window.lightnessF(), isGrey({accent.redF(), accent.greenF(), accent.blueF()})};
}

void Appearance::askPortal(const QDBusConnection &bus, const QString &method, const QString &key)
{
    // The one read that may start its service: on a desktop that has a portal it runs only once it is needed.
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"), portalPath, portalInterface, method);
    message << appearanceGroup << key;
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(message, portalDeadline), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, bus, method, key, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isValid()) {
            takePortalValue(key, reply.value().variant());
        } else if (reply.error().type() == QDBusError::UnknownMethod && method == readOneMethod) {
            askPortal(bus, QStringLiteral("Read"), key);
        }
    });
}

void Appearance::takePortalValue(const QString &key, const QVariant &value)
{
    if (key == colorSchemeKey) {
        m_portal.dark = decodeColorScheme(unwrapped(value));
    } else if (key == accentColorKey) {
        m_portal.graphite = decodeAccentColor(unwrapped(value));
    }
    update();
}

void Appearance::update()
{
    const bool isGraphite = m_portal.graphite ? *m_portal.graphite : m_palette.graphite.value_or(false);
    m_defaults.setSystemValue(SettingsKey::appleAccentColor, isGraphite ? QVariant(graphite) : QVariant());

    const bool isSystemDark = m_portal.dark ? *m_portal.dark : m_palette.dark.value_or(false);
    const auto effective = m_application.value_or(isSystemDark ? AppearanceName::DarkAqua : AppearanceName::Aqua);
    if (effective != m_effective) {
        m_effective = effective;
        Q_EMIT effectiveAppearanceChanged(effective);
    }
}

void Appearance::portalSettingChanged(const QString &group, const QString &key, const QDBusVariant &value)
{
    if (group == appearanceGroup) {
        takePortalValue(key, value.variant());
    }
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "platform/Appearance.h"

#include "platform/UserDefaults.h"

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

/// The portal and what it stands on may have to be started first; nobody waits for it.
constexpr int portalDeadline = 10'000;
/// Beyond this a text could not be read, or would fill the screen.
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
    // Out of range is how the portal says that no accent is set.
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

    // A connection looks up a slot's types by their names, which this one does not have before it is first used.
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

std::optional<AppearanceName> Appearance::applicationAppearance() const
{
    return m_application;
}

AppearanceName Appearance::effectiveAppearance() const
{
    return m_effective;
}

bool Appearance::isMotionReduced() const
{
    return m_isMotionReduced;
}

double Appearance::textScale() const
{
    return m_text.scale;
}

QString Appearance::fontName() const
{
    return m_text.fontName;
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
    System system;
    system.dark = text.lightnessF() > window.lightnessF();
    system.graphite = isGrey({accent.redF(), accent.greenF(), accent.blueF()});
    return system;
}

void Appearance::followPortal(QDBusConnection bus, const QString &group, const QStringList &keys)
{
    // clang-format off
    // With a service's name the connection would ask the bus, and wait, for the name's owner.
    bus.connect(QString(), portalPath, portalInterface, QStringLiteral("SettingChanged"),
        {group}, QString(), this, SLOT(portalSettingChanged(QString,QString,QDBusVariant)));
    // clang-format on
    for (const QString &key : keys) {
        askPortal(bus, readOneMethod, {group, key});
    }
}

void Appearance::askPortal(const QDBusConnection &bus, const QString &method, const PortalKey &asked)
{
    // The one read that may start its service: on a desktop that has a portal it runs only once it is needed.
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"), portalPath, portalInterface, method);
    message << asked.group << asked.key;
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(message, portalDeadline), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, bus, method, asked, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isValid()) {
            takePortalValue(asked, reply.value().variant());
        } else if (reply.error().type() == QDBusError::UnknownMethod && method == readOneMethod) {
            askPortal(bus, QStringLiteral("Read"), asked);
        }
    });
}

void Appearance::takePortalValue(const PortalKey &told, const QVariant &value)
{
    const auto isKey = [&told](
                           QLatin1String group, QLatin1String key) { return told.group == group && told.key == key; };
    const QVariant plain = unwrapped(value);
    if (isKey(appearanceGroup, colorSchemeKey)) {
        m_portal.dark = decodeColorScheme(plain);
    } else if (isKey(appearanceGroup, accentColorKey)) {
        m_portal.graphite = decodeAccentColor(plain);
    } else if (isKey(gnomeGroup, animationsKey) && plain.typeId() == QMetaType::Bool) {
        m_portal.gnomeReducesMotion = !plain.toBool();
    } else if (isKey(gnomeGroup, textScaleKey)) {
        takeText({decodeTextScale(plain), m_text.fontName});
    } else if (isKey(gnomeGroup, fontNameKey)) {
        takeText({m_text.scale, decodeFontName(plain)});
    } else if (isKey(kdeGroup, animationDurationKey) && plain.typeId() == QMetaType::QString) {
        bool isNumber = false;
        const double factor = plain.toString().toDouble(&isNumber);
        m_portal.kdeReducesMotion = isNumber && factor <= 0;
    }
    update();
}

void Appearance::takeText(const Text &text)
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
    takePortalValue({group, key}, value.variant());
}

} // namespace tunedeck

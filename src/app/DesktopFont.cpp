// SPDX-License-Identifier: MIT
#include "app/DesktopFont.h"

#include "platform/Appearance.h"
#include "platform/windowSystem.h"
#include "widgets/scaledFont.h"

#include <QApplication>
#include <QStringList>

#include <algorithm>
#include <array>
#include <utility>

namespace tunedeck {

namespace {
constexpr double largestPoints = 100;

struct StyleWord {
    QLatin1String word;
    int weight; ///< 1 to 1000; Qt has names for some of them only
};

constexpr std::array<StyleWord, 21> weights{{
    {QLatin1String("thin"), QFont::Thin},
    {QLatin1String("ultra-light"), QFont::ExtraLight},
    {QLatin1String("extra-light"), QFont::ExtraLight},
    {QLatin1String("light"), QFont::Light},
    {QLatin1String("semi-light"), 350},
    {QLatin1String("demi-light"), 350},
    {QLatin1String("book"), 380},
    {QLatin1String("regular"), QFont::Normal},
    {QLatin1String("normal"), QFont::Normal},
    {QLatin1String("medium"), QFont::Medium},
    {QLatin1String("semi-bold"), QFont::DemiBold},
    {QLatin1String("demi-bold"), QFont::DemiBold},
    {QLatin1String("bold"), QFont::Bold},
    {QLatin1String("ultra-bold"), QFont::ExtraBold},
    {QLatin1String("extra-bold"), QFont::ExtraBold},
    {QLatin1String("heavy"), QFont::Black},
    {QLatin1String("black"), QFont::Black},
    {QLatin1String("ultra-heavy"), 1000},
    {QLatin1String("extra-heavy"), 1000},
    {QLatin1String("ultra-black"), 1000},
    {QLatin1String("extra-black"), 1000},
}};

/// False if `word` is not a style.
bool applyStyle(const QString &word, QFont &font)
{
    const QString lower = word.toLower();
    if (lower == QLatin1String("italic") || lower == QLatin1String("oblique")) {
        font.setStyle(QFont::StyleItalic);
        return true;
    }
    const auto *const weight = std::ranges::find(weights, lower, &StyleWord::word);
    if (weight == weights.end()) {
        return false;
    }
    font.setWeight(static_cast<QFont::Weight>(weight->weight));
    return true;
}

QStringList familiesIn(const QString &list)
{
    QStringList families;
    const QStringList parts = list.split(u',');
    for (const QString &part : parts) {
        if (!part.trimmed().isEmpty()) {
            families.append(part.trimmed());
        }
    }
    return families;
}

/// Whether Qt's platform theme uses the font of GNOME's settings. A theme that the user has chosen uses a font that the
/// user has chosen too.
bool isThemeOfDesktop(const QString &theme)
{
    return theme.isEmpty() || theme == QLatin1String("gtk3") || theme == QLatin1String("gnome")
        || theme == QLatin1String("xdgdesktopportal");
}

/// Other desktops answer for these settings too, with default values.
bool hasGnomeSettings(const QStringList &desktops)
{
    return std::ranges::any_of(desktops, [](const QString &desktop) {
        return desktop == QLatin1String("GNOME") || desktop == QLatin1String("Unity")
            || desktop == QLatin1String("Pantheon");
    });
}
} // namespace

UnservedText unservedText(const QString &platformName, const QProcessEnvironment &environment)
{
    if (!isThemeOfDesktop(environment.value(QStringLiteral("QT_QPA_PLATFORMTHEME")))) {
        return {};
    }
    // On X11 the text scale reaches Qt as the screen's resolution, by which Qt scales everything. On Wayland these
    // variables do the same.
    const bool hasResolution = environment.contains(QStringLiteral("QT_WAYLAND_FORCE_DPI"))
        || environment.contains(QStringLiteral("QT_FONT_DPI"));
    return {isWayland(platformName) && !hasResolution,
        hasGnomeSettings(environment.value(QStringLiteral("XDG_CURRENT_DESKTOP")).split(u':'))};
}

QFont fontFromName(const QString &name, const QFont &otherwise)
{
    QStringList words = name.simplified().split(u' ');
    bool isNumber = false;
    const double points = words.takeLast().toDouble(&isNumber);
    if (!isNumber || !(points > 0 && points <= largestPoints)) {
        return otherwise;
    }
    QFont font = otherwise;
    font.setPointSizeF(points);
    // A name without a style means the plain one.
    font.setStyleName(QString());
    font.setWeight(QFont::Normal);
    font.setStyle(QFont::StyleNormal);
    while (words.size() > 1 && applyStyle(words.constLast(), font)) {
        words.removeLast();
    }
    const QStringList families = familiesIn(words.join(u' '));
    if (families.isEmpty()) {
        return otherwise;
    }
    font.setFamilies(families);
    return font;
}

DesktopFont::DesktopFont(const Appearance &appearance, QObject *parent)
    : DesktopFont(
          appearance, unservedText(QGuiApplication::platformName(), QProcessEnvironment::systemEnvironment()), parent)
{
}

DesktopFont::DesktopFont(const Appearance &appearance, const UnservedText &unserved, QObject *parent)
    : QObject(parent)
    , m_appearance(appearance)
    , m_unserved(unserved)
    , m_qtFont(QApplication::font())
    , m_wanted(m_qtFont)
{
    connect(&m_appearance, &Appearance::textChanged, this, &DesktopFont::update);
    update();
}

void DesktopFont::update()
{
    QFont font = m_unserved.fontName ? fontFromName(m_appearance.fontName(), m_qtFont) : m_qtFont;
    if (m_unserved.scale) {
        font = scaledFont(font, m_appearance.textScale());
    }
    // An unrelated change of the settings must not undo a font that Qt has set since.
    if (std::exchange(m_wanted, font) != font) {
        QApplication::setFont(font);
    }
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "app/DesktopFont.h"

#include "app/MainMenu.h"
#include "player/ViewController.h"
#include "support/Desktop.h"
#include "support/registerTest.h"
#include "window/WindowController.h"

#include <QApplication>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {
constexpr UnservedText everything{true, true};
constexpr UnservedText scaleAlone{true, false};
const QString gnome = u"org.gnome.desktop.interface"_s;

QProcessEnvironment environmentWith(const QStringList &variables)
{
    QProcessEnvironment environment;
    for (const QString &variable : variables) {
        environment.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
    }
    return environment;
}

QFont plainFont()
{
    QFont font(u"DejaVu Sans"_s);
    font.setPointSizeF(10);
    return font;
}
} // namespace

class DesktopFontTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnWarning();
        QApplication::setFont(plainFont());
    }

    void theToolkitDoesNotDoItAll_data()
    {
        QTest::addColumn<QString>("platform");
        QTest::addColumn<QStringList>("environment");
        QTest::addColumn<UnservedText>("unserved");
        const QString wayland = u"wayland"_s;
        QTest::newRow("GNOME on Wayland") << wayland << QStringList{u"XDG_CURRENT_DESKTOP=GNOME"_s} << everything;
        QTest::newRow("a distribution's GNOME")
            << u"wayland-egl"_s << QStringList{u"XDG_CURRENT_DESKTOP=ubuntu:GNOME"_s} << everything;
        QTest::newRow("GNOME with its theme")
            << wayland << QStringList{u"XDG_CURRENT_DESKTOP=GNOME"_s, u"QT_QPA_PLATFORMTHEME=gtk3"_s} << everything;
        QTest::newRow("the user's own theme")
            << wayland << QStringList{u"XDG_CURRENT_DESKTOP=GNOME"_s, u"QT_QPA_PLATFORMTHEME=qt6ct"_s}
            << UnservedText{false, false};
        QTest::newRow("another desktop on Wayland")
            << wayland << QStringList{u"XDG_CURRENT_DESKTOP=sway"_s} << scaleAlone;
        QTest::newRow("no desktop on Wayland") << wayland << QStringList{} << scaleAlone;
        QTest::newRow("a resolution of Wayland's")
            << wayland << QStringList{u"QT_WAYLAND_FORCE_DPI=144"_s} << UnservedText{false, false};
        QTest::newRow("a resolution of the fonts")
            << wayland << QStringList{u"XDG_CURRENT_DESKTOP=GNOME"_s, u"QT_FONT_DPI=144"_s}
            << UnservedText{false, true};
        QTest::newRow("GNOME on X11") << u"xcb"_s << QStringList{u"XDG_CURRENT_DESKTOP=GNOME"_s}
                                      << UnservedText{false, true};
        QTest::newRow("Xfce") << u"xcb"_s << QStringList{u"XDG_CURRENT_DESKTOP=XFCE"_s} << UnservedText{false, false};
    }
    void theToolkitDoesNotDoItAll()
    {
        QFETCH(const QString, platform);
        QFETCH(const QStringList, environment);
        QFETCH(const UnservedText, unserved);
        const UnservedText found = unservedText(platform, environmentWith(environment));
        QCOMPARE(found.scale, unserved.scale);
        QCOMPARE(found.fontName, unserved.fontName);
    }

    void aFontIsReadFromItsName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("families");
        QTest::addColumn<double>("points");
        QTest::addColumn<int>("weight");
        QTest::addColumn<bool>("italic");
        QTest::newRow("plain") << u"Cantarell 11"_s << QStringList{u"Cantarell"_s} << 11.0 << 400 << false;
        QTest::newRow("words") << u"  Noto  Sans UI 10.5 "_s << QStringList{u"Noto Sans UI"_s} << 10.5 << 400 << false;
        QTest::newRow("style") << u"Ubuntu Semi-Bold Italic 12"_s << QStringList{u"Ubuntu"_s} << 12.0 << 600 << true;
        QTest::newRow("lighter than plain")
            << u"Segoe Semi-Light 9"_s << QStringList{u"Segoe"_s} << 9.0 << 350 << false;
        QTest::newRow("for books") << u"Futura Book 9"_s << QStringList{u"Futura"_s} << 9.0 << 380 << false;
        QTest::newRow("called normal") << u"Ubuntu Normal 9"_s << QStringList{u"Ubuntu"_s} << 9.0 << 400 << false;
        QTest::newRow("heaviest") << u"Inter Ultra-Black 9"_s << QStringList{u"Inter"_s} << 9.0 << 1000 << false;
        QTest::newRow("list") << u"Inter, Noto Sans, 9"_s << QStringList{u"Inter"_s, u"Noto Sans"_s} << 9.0 << 400
                              << false;
        QTest::newRow("a family called as a style") << u"Black 9"_s << QStringList{u"Black"_s} << 9.0 << 400 << false;
        const QStringList none{u"DejaVu Sans"_s};
        QTest::newRow("nothing") << QString() << none << 10.0 << 400 << false;
        QTest::newRow("no size") << u"Cantarell"_s << none << 10.0 << 400 << false;
        QTest::newRow("no family") << u"11"_s << none << 10.0 << 400 << false;
        QTest::newRow("no family but commas") << u", , 11"_s << none << 10.0 << 400 << false;
        QTest::newRow("pixels") << u"Cantarell 11px"_s << none << 10.0 << 400 << false;
        QTest::newRow("no points") << u"Cantarell 0"_s << none << 10.0 << 400 << false;
        QTest::newRow("fewer than no points") << u"Cantarell -5"_s << none << 10.0 << 400 << false;
        QTest::newRow("too many points") << u"Cantarell 1e9"_s << none << 10.0 << 400 << false;
        QTest::newRow("not a number") << u"Cantarell nan"_s << none << 10.0 << 400 << false;
    }
    void aFontIsReadFromItsName()
    {
        QFETCH(const QString, name);
        QFETCH(const QStringList, families);
        QFETCH(const double, points);
        QFETCH(const int, weight);
        QFETCH(const bool, italic);
        const QFont font = fontFromName(name, plainFont());
        QCOMPARE(font.families(), families);
        QCOMPARE(font.pointSizeF(), points);
        QCOMPARE(int(font.weight()), weight);
        QCOMPARE(font.italic(), italic);
    }

    void aNameWithoutAStyleIsThePlainOne()
    {
        QFont font = plainFont();
        font.setStyleName(u"Bold Oblique"_s);
        font.setWeight(QFont::Bold);
        font.setItalic(true);
        const QFont plain = fontFromName(u"Cantarell 11"_s, font);
        QCOMPARE(plain.styleName(), QString());
        QCOMPARE(int(plain.weight()), 400);
        QCOMPARE(plain.italic(), false);
        QCOMPARE(fontFromName(QString(), font), font);
    }

    void theFontFollowsTheDesktopLive()
    {
        Desktop desktop;
        const DesktopFont desktopFont(desktop.appearance, everything);
        QCOMPARE(QApplication::font(), plainFont());
        desktop.changeSetting(gnome, u"text-scaling-factor"_s, 1.5);
        QCOMPARE(QApplication::font().pointSizeF(), 15.0);
        desktop.changeSetting(gnome, u"font-name"_s, u"DejaVu Serif 12"_s);
        QCOMPARE(QApplication::font().families(), QStringList{u"DejaVu Serif"_s});
        QCOMPARE(QApplication::font().pointSizeF(), 18.0);
        desktop.changeSetting(gnome, u"text-scaling-factor"_s, 1.0);
        desktop.changeSetting(gnome, u"font-name"_s, QString());
        QCOMPARE(QApplication::font(), plainFont());
    }

    void whatTheToolkitDoesItselfIsNotDoneTwice()
    {
        Desktop desktop;
        const DesktopFont desktopFont(desktop.appearance, UnservedText{false, false});
        desktop.changeSetting(gnome, u"text-scaling-factor"_s, 1.5);
        desktop.changeSetting(gnome, u"font-name"_s, u"DejaVu Serif 12"_s);
        QCOMPARE(QApplication::font(), plainFont());
    }

    void aFontThatTheToolkitSetsLaterStays()
    {
        Desktop desktop;
        const DesktopFont desktopFont(desktop.appearance, UnservedText{false, false});
        const QFont other(u"DejaVu Serif"_s, 12);
        QApplication::setFont(other);
        desktop.changeSetting(gnome, u"text-scaling-factor"_s, 1.5);
        desktop.changeSetting(gnome, u"font-name"_s, u"DejaVu Sans 14"_s);
        QCOMPARE(QApplication::font(), other);
    }

    void aFontWhoseSizeIsInPixelsIsScaledToo()
    {
        QFont font(u"DejaVu Sans"_s);
        font.setPixelSize(13);
        QApplication::setFont(font);
        Desktop desktop;
        const DesktopFont desktopFont(desktop.appearance, scaleAlone);
        desktop.changeSetting(gnome, u"text-scaling-factor"_s, 1.5);
        QCOMPARE(QApplication::font().pixelSize(), 20);
    }

    void theSkinsTextsStayAsTheyAre()
    {
        Desktop desktop;
        Application application(desktop.environment());
        WindowController &controller = application.windowController();
        controller.setMotionReduced(true);
        application.showMainWindow();
        application.mainMenu();
        application.viewController().toggleDrawer();
        QTRY_COMPARE(controller.window().height(), WindowController::expandedHeight);
        // The first outlines of a font's letters may differ from the later ones by a shade.
        controller.window().grab();
        const QImage picture = controller.window().grab().toImage();
        const DesktopFont desktopFont(desktop.appearance, everything);
        desktop.changeSetting(gnome, u"font-name"_s, u"DejaVu Serif Bold Italic 14"_s);
        desktop.changeSetting(gnome, u"text-scaling-factor"_s, 2.0);
        QCOMPARE(QApplication::font().pointSizeF(), 28.0);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(controller.window().grab().toImage(), picture);
        QCOMPARE(controller.window().height(), WindowController::expandedHeight);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::DesktopFontTest, QApplication)
#include "DesktopFontTest.moc"

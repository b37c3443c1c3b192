// SPDX-License-Identifier: MIT
// Draws all windows except the player's, as Qt paints them: the panes of the preferences, the about window, the help,
// and every page of the updater.

#include "app/AboutWindow.h"
#include "app/installTranslators.h"
#include "app/palettes.h"
#include "help/HelpWindow.h"
#include "music/FollowablePlayers.h"
#include "platform/Appearance.h"
#include "platform/BundleInfo.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"
#include "preferences/AppPreferencesWindowController.h"
#include "preferences/DesktopSettings.h"
#include "preferences/Updater.h"
#include "skin/looks/SkinEnvironment.h"
#include "skin/views/AboutPinstripeView.h"
#include "updates/UpdateFailure.h"
#include "updates/UpdateWindow.h"
#include "updates/feed/Appcast.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDBusConnection>
#include <QDir>
#include <QLineEdit>
#include <QProxyStyle>
#include <QStyleHintReturn>
#include <QStyleOption>
#include <QTemporaryDir>
#include <QTextStream>

#include <cstdlib>

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {

class TwoPlayers : public FollowablePlayers {
public:
    [[nodiscard]] QList<FollowablePlayer> followablePlayers() const override
    {
        return {{.id = u"first"_s, .name = u"Plain Player"_s, .desktopEntry = {}, .title = {}},
            {.id = u"second"_s, .name = u"Salt & Pepper Player"_s, .desktopEntry = {}, .title = {}}};
    }
    [[nodiscard]] QList<NeverFollowedPlayer> neverFollowedPlayers() const override { return {}; }
    [[nodiscard]] QString awaitedPlayer() const override { return {}; }
    void neverFollow(const QString &) override { }
    void allowToFollow(const QString &) override { }
};

class NoUpdater : public Updater {
public:
    [[nodiscard]] bool looksForUpdates() const override { return true; }
    void checkForUpdates() override { }
};

class SilentDesktop : public DesktopSettings {
public:
    [[nodiscard]] QString note(const QString &) const override { return {}; }
};

/// Shows the end of every animation.
class StillStyle : public QProxyStyle {
public:
    StillStyle()
        : QProxyStyle(u"fusion"_s)
    {
    }
    int styleHint(
        StyleHint hint, const QStyleOption *option, const QWidget *widget, QStyleHintReturn *returnData) const override
    {
        return hint == SH_Widget_Animation_Duration ? 0 : QProxyStyle::styleHint(hint, option, widget, returnData);
    }
};

class Gallery {
public:
    explicit Gallery(const QString &folder)
        : m_folder(folder)
    {
    }

    void add(const QString &name, QWidget &window)
    {
        window.show();
        QCoreApplication::processEvents();
        const QString file = m_folder.filePath(name + u".png"_s);
        if (!window.grab().save(file)) {
            QTextStream(stderr) << "Cannot write " << file << Qt::endl;
            std::exit(EXIT_FAILURE);
        }
    }

private:
    QDir m_folder;
};

void addPreferences(Gallery &gallery, UserDefaults &defaults)
{
    TwoPlayers players;
    NoUpdater updater;
    SilentDesktop desktopSettings;
    AppPreferencesWindowController preferences({defaults, players, updater, desktopSettings});
    preferences.showWindow();
    const QStringList panes = preferences.toolbarDefaultItemIdentifiers();
    for (const QString &pane : panes) {
        preferences.toolbarItemClicked(*preferences.toolbarItem(pane));
        gallery.add(u"preferences-"_s + pane.toLower(), preferences.window());
    }
}

void addAbout(Gallery &gallery, const SkinEnvironment &environment)
{
    AboutWindow about;
    AboutPinstripeView stripes(environment);
    about.setBackground(stripes);
    about.orderFront();
    for (const bool isKey : {true, false}) {
        stripes.setKeyWindow(isKey);
        gallery.add(isKey ? u"about"_s : u"about-inactive"_s, about);
    }
    stripes.setParent(nullptr);
}

void addHelp(Gallery &gallery)
{
    HelpWindow help;
    const QString book = bundleInfo(u"CFBundleHelpBookName").value_or(QString());
    for (const QString &anchor : {QString(), u"KeepingUpToDate"_s, u"Troubleshooting"_s, u"TermsConditions"_s}) {
        help.openHelpAnchor(anchor, book);
        gallery.add(u"help-"_s + (anchor.isEmpty() ? u"first-page"_s : anchor), help);
    }
    help.searchField().setText(u"mpv"_s);
    gallery.add(u"help-search"_s, help);
}

void addUpdater(Gallery &gallery)
{
    const QString running = u"1.0"_s;
    AppcastItem update;
    update.shortVersion = u"1.1"_s;
    update.length = 2'345'678;
    update.releaseNotes = u"<h2>New in 1.1</h2><ul><li>The drawer opens twice as fast.</li>"
                          "<li>Playlists from files, for players without playlists.</li></ul>"
                          "<p>More on <a href=\"https://tunedeck.example\">our page</a>.</p>"_s;
    UpdateWindow window;
    window.showChecking();
    gallery.add(u"update-checking"_s, window);
    window.showUpToDate(running);
    gallery.add(u"update-none"_s, window);
    update.minimumSystemVersion = u"13"_s;
    window.showForNewerSystem(update, running);
    gallery.add(u"update-for-newer-system"_s, window);
    window.showUpdate(update, running);
    gallery.add(u"update-found"_s, window);
    window.showDownload(update);
    window.setReceived(1'000'000);
    gallery.add(u"update-download"_s, window);
    window.showSaved(u"/home/somebody/Downloads/tunedeck_1.1-1_amd64.deb"_s);
    gallery.add(u"update-saved"_s, window);
    window.showNoFeed();
    window.offerSystemUpdater();
    gallery.add(u"update-no-feed"_s, window);
    for (const auto &[name, failure] : {std::pair(u"unreachable"_s, UpdateFailure::unreachable),
             std::pair(u"feed-wrongly-signed"_s, UpdateFailure::feedWronglySigned),
             std::pair(u"not-genuine"_s, UpdateFailure::notGenuine)}) {
        window.showFailure(failure);
        gallery.add(u"update-"_s + name, window);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Draws all windows except the player's, at the scale QT_SCALE_FACTOR"_s);
    parser.addHelpOption();
    parser.addPositionalArgument(u"folder"_s, u"Folder for the pictures; created if it does not exist."_s);
    const QCommandLineOption language(
        u"language"_s, u"Language of the texts, such as de; default: en."_s, u"code"_s, u"en"_s);
    const QCommandLineOption dark(u"dark"_s, u"Use dark colours."_s);
    const QCommandLineOption textScale(
        u"text-scale"_s, u"Factor for the size of texts, such as 1.5; default: 1."_s, u"factor"_s, u"1"_s);
    parser.addOptions({language, dark, textScale});
    parser.process(application);
    const double textFactor = parser.value(textScale).toDouble();
    if (!(textFactor > 0) || parser.positionalArguments().size() != 1
        || !QDir().mkpath(parser.positionalArguments().constFirst())) {
        parser.showHelp(EXIT_FAILURE);
    }

    QLocale::setDefault(QLocale(parser.value(language)));
    installTranslators(application);
    QApplication::setStyle(new StillStyle);
    QFont font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() * textFactor);
    QApplication::setFont(font);
    if (parser.isSet(dark)) {
        QApplication::setPalette(darkPalette());
    }
    const QTemporaryDir settings;
    UserDefaults defaults(settings.filePath(u"settings"_s));
    defaults.setBool(SettingsKey::remainingTimeEnabled, true);
    defaults.setBool(SettingsKey::appearanceClassic, true);
    Appearance appearance(defaults, QDBusConnection(u"none"_s));
    const WindowActivation windowActivation;

    Gallery gallery(parser.positionalArguments().constFirst());
    addPreferences(gallery, defaults);
    addAbout(gallery, {defaults, appearance, windowActivation});
    addHelp(gallery);
    addUpdater(gallery);
    return EXIT_SUCCESS;
}

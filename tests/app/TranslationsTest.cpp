// SPDX-License-Identifier: MIT
#include "app/AboutWindow.h"
#include "app/MainMenu.h"
#include "app/installTranslators.h"
#include "drawer/PlaylistView.h"
#include "help/HelpWindow.h"
#include "player/LcdView.h"
#include "player/PlayerView.h"
#include "player/ScrollingMarqueeView.h"
#include "player/ViewController.h"
#include "preferences/AppPreferencesWindowController.h"
#include "skin/views/EngravedLabel.h"
#include "skin/views/MetalPopupButton.h"
#include "support/Desktop.h"
#include "support/TimedStyle.h"
#include "support/registerTest.h"
#include "updates/UpdateFailure.h"
#include "updates/UpdateWindow.h"
#include "updates/feed/Appcast.h"
#include "widgets/bringToFront.h"
#include "window/WindowController.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFont>
#include <QLabel>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QTest>
#include <QTextBrowser>
#include <QTranslator>

#include <cmath>

using namespace tunedeck;

namespace {
constexpr int narrowest = 350;

/// The first control whose text is cut off, with that text. Empty if there is none.
QString cutOffIn(const QWidget &window)
{
    const QList<QWidget *> widgets = window.findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        if (!widget->isVisible()) {
            continue;
        }
        if (const auto *label = qobject_cast<const QLabel *>(widget)) {
            const bool wraps = label->wordWrap();
            if (wraps ? label->heightForWidth(label->width()) > label->height()
                      : label->sizeHint().width() > label->width()) {
                return label->text();
            }
        } else if (const auto *button = qobject_cast<const QAbstractButton *>(widget)) {
            if (!button->text().isEmpty()
                && button->fontMetrics().size(Qt::TextShowMnemonic, button->text()).width() > button->width()) {
                return button->text();
            }
        } else if (const auto *picker = qobject_cast<const QComboBox *>(widget)) {
            if (picker->fontMetrics().horizontalAdvance(picker->currentText()) > picker->width()) {
                return picker->currentText();
            }
        }
    }
    return {};
}

QStringList textsOf(const QMenu &menu)
{
    QStringList texts;
    const QList<QAction *> items = menu.actions();
    for (const QAction *item : items) {
        texts.append(item->text());
        if (item->menu()) {
            texts += textsOf(*item->menu());
        }
    }
    texts.removeAll(QString());
    return texts;
}
} // namespace

/// Every text of every window, in each language.
class TranslationsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QApplication::setStyle(new TimedStyle);
        m_font = QApplication::font();
    }
    void init() { failOnWarning(); }

    void cleanup()
    {
        const QList<QTranslator *> translators = qApp->findChildren<QTranslator *>();
        qDeleteAll(translators);
        QLocale::setDefault(QLocale::c());
        QApplication::setFont(m_font);
    }

    void theFirstLanguageThatIsKnownIsTaken()
    {
        use(QStringLiteral("de_AT"));
        QCOMPARE(QCoreApplication::translate("tunedeck::MainMenu", "Quit", "Menu command"), QStringLiteral("Beenden"));
    }

    void anUnknownLanguageLeavesTheTextsInEnglish()
    {
        use(QStringLiteral("fr_FR"));
        QCOMPARE(QCoreApplication::translate("tunedeck::MainMenu", "Quit", "Menu command"), QStringLiteral("Quit"));
    }

    void theFirstKnownOfALanguagesListIsSpoken_data()
    {
        QTest::addColumn<QStringList>("languages");
        QTest::addColumn<QString>("spoken");
        QTest::newRow("none") << QStringList() << QStringLiteral("en");
        QTest::newRow("no language") << QStringList{QStringLiteral("C")} << QStringLiteral("en");
        QTest::newRow("with a script") << QStringList{QStringLiteral("de-Latn-AT")} << QStringLiteral("de");
        QTest::newRow("in capitals") << QStringList{QStringLiteral("PL")} << QStringLiteral("pl");
        QTest::newRow("English first") << QStringList{QStringLiteral("en-GB"), QStringLiteral("de")}
                                       << QStringLiteral("en");
        QTest::newRow("an unknown one first")
            << QStringList{QStringLiteral("fr"), QStringLiteral("fi-FI")} << QStringLiteral("fi");
        QTest::newRow("a path") << QStringList{QStringLiteral("../../tunedeck_de"), QString()} << QStringLiteral("en");
    }
    void theFirstKnownOfALanguagesListIsSpoken()
    {
        QFETCH(const QStringList, languages);
        QFETCH(const QString, spoken);
        QCOMPARE(spokenLanguage(languages), spoken);
    }

    void whatElseComesInSeveralLanguagesSpeaksThatOfTheTexts_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("spoken");
        QTest::addColumn<QString>("credits");
        QTest::addColumn<QString>("help");
        QTest::newRow("known") << QStringLiteral("de_AT") << QStringLiteral("de_AT")
                               << QStringLiteral("Geschrieben von") << QStringLiteral("Willkommen bei Tunedeck");
        QTest::newRow("unknown") << QStringLiteral("fr_FR") << QStringLiteral("en_US") << QStringLiteral("Written by")
                                 << QStringLiteral("Welcome to Tunedeck");
        QTest::newRow("none") << QStringLiteral("C") << QStringLiteral("C") << QStringLiteral("Written by")
                              << QStringLiteral("Welcome to Tunedeck");
    }
    void whatElseComesInSeveralLanguagesSpeaksThatOfTheTexts()
    {
        QFETCH(const QString, locale);
        QFETCH(const QString, spoken);
        QFETCH(const QString, credits);
        QFETCH(const QString, help);
        use(locale);
        QCOMPARE(QLocale().name(), spoken);
        AboutWindow about;
        about.orderFront();
        QVERIFY(about.creditsText().toPlainText().contains(credits));
        HelpWindow window;
        QCOMPARE(window.topicList().item(0)->text(), help);
    }

    void everyTextOfThePlayerAndTheDrawerFits_data() { addLanguagesAndTextScales(); }
    void everyTextOfThePlayerAndTheDrawerFits()
    {
        useScaledRow();
        Desktop desktop;
        Application application(desktop.environment());
        application.showMainWindow();
        Window &window = application.windowController().window();
        auto *view = window.findChild<PlayerView *>();
        application.mainMenu();
        application.viewController().toggleDrawer();
        auto *drawer = window.findChild<PlaylistView *>();
        QTRY_VERIFY(drawer->isVisible());
        window.resizeContent({narrowest, WindowController::expandedHeight});
        QTRY_COMPARE(view->width(), narrowest);

        // Nothing plays, then a track, then a live stream, then there is no player.
        QCOMPARE(cutOff(*view), QString());
        desktop.playTrack();
        QCOMPARE(cutOff(*view), QString());
        desktop.playLiveStream();
        QCOMPARE(cutOff(*view), QString());
        desktop.music.quit();
        QCOMPARE(cutOff(*view), QString());

        EngravedLabel &caption = drawer->playlistLabel();
        QVERIFY2(QFontMetricsF(caption.font()).horizontalAdvance(caption.text()) <= caption.width(),
            qPrintable(caption.text()));
        QVERIFY2(drawer->playlistPicker().width() >= 100, "The other texts leave the picker no room");
    }

    void theMenusAreTranslated_data() { addLanguages(); }
    void theMenusAreTranslated()
    {
        Desktop desktop;
        QStringList english;
        {
            Application application(desktop.environment());
            english = textsOf(application.mainMenu().contextMenu());
        }
        useRow();
        Application application(desktop.environment());
        const QStringList texts = textsOf(application.mainMenu().contextMenu());
        QCOMPARE(texts.size(), english.size());
        qsizetype same = 0;
        for (qsizetype index = 0; index < texts.size(); ++index) {
            same += texts.at(index) == english.at(index) ? 1 : 0;
        }
        // The program's name stays, and a word may be the same by chance.
        const bool isEnglish = QLocale().language() == QLocale::English;
        QVERIFY2(isEnglish || same <= 3, qPrintable(texts.join(u", ")));
    }

    void everyTextOfThePreferencesFits_data() { addLanguagesAndTextScales(); }
    void everyTextOfThePreferencesFits()
    {
        useScaledRow();
        Desktop desktop;
        Application application(desktop.environment());
        AppPreferencesWindowController &preferences = application.preferencesWindowController();
        preferences.showWindow();
        for (const QString &pane : preferences.toolbarDefaultItemIdentifiers()) {
            preferences.toolbarItemClicked(*preferences.toolbarItem(pane));
            QTRY_COMPARE(cutOffIn(preferences.window()), QString());
        }
    }

    void everyTextOfTheOtherWindowsFits_data() { addLanguagesAndTextScales(); }
    void everyTextOfTheOtherWindowsFits()
    {
        useScaledRow();
        AboutWindow about;
        about.orderFront();
        QCOMPARE(cutOffIn(about), QString());

        HelpWindow help;
        help.show();
        QCOMPARE(cutOffIn(help), QString());
        const QLineEdit &search = help.searchField();
        QVERIFY2(search.fontMetrics().horizontalAdvance(search.placeholderText()) < search.width(),
            qPrintable(search.placeholderText()));
    }

    void everyTextOfTheUpdatersPagesFits_data() { addLanguagesAndTextScales(); }
    void everyTextOfTheUpdatersPagesFits()
    {
        useScaledRow();
        UpdateWindow window;
        AppcastItem update;
        update.shortVersion = QStringLiteral("10.11.12");
        update.minimumSystemVersion = QStringLiteral("24.04");
        bringToFront(window);
        const QList<std::function<void()>> pages{
            [&] { window.showChecking(); },
            [&] { window.showUpToDate(QStringLiteral("10.11.12")); },
            [&] { window.showForNewerSystem(update, QStringLiteral("10.11.11")); },
            [&] { window.showUpdate(update, QStringLiteral("10.11.11")); },
            [&] { window.showDownload(update); },
            [&] { window.showVerifying(); },
            [&] { window.showSaved(QStringLiteral("/home/somebody/Downloads/tunedeck_10.11.12-1_amd64.deb")); },
            [&] {
                window.showNoFeed();
                window.offerSystemUpdater();
            },
        };
        for (const auto &show : pages) {
            show();
            QTRY_COMPARE(cutOffIn(window), QString());
        }
        for (int failure = 0; failure <= int(UpdateFailure::notSaved); ++failure) {
            window.showFailure(UpdateFailure(failure));
            QTRY_COMPARE(cutOffIn(window), QString());
        }
    }

private:
    static void addLanguages()
    {
        QTest::addColumn<QString>("locale");
        for (const char *locale : {"en_US", "de_DE", "es_ES", "fi_FI", "pl_PL"}) {
            QTest::newRow(locale) << QString::fromLatin1(locale);
        }
    }
    static void addLanguagesAndTextScales()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<double>("textScale");
        for (const char *locale : {"en_US", "de_DE", "es_ES", "fi_FI", "pl_PL"}) {
            for (const double textScale : {1.0, 1.25, 1.5, 2.0}) {
                QTest::addRow("%s, texts of %g", locale, textScale) << QString::fromLatin1(locale) << textScale;
            }
        }
    }
    static void use(const QString &locale)
    {
        QLocale::setDefault(QLocale(locale));
        installTranslators(*qApp);
    }
    static void useRow()
    {
        QFETCH(const QString, locale);
        use(locale);
    }
    static void useScaledRow()
    {
        useRow();
        QFETCH(const double, textScale);
        QFont font = QApplication::font();
        font.setPointSizeF(font.pointSizeF() * textScale);
        QApplication::setFont(font);
    }

    /// A text on the display that has to scroll counts as cut off too.
    static QString cutOff(PlayerView &view)
    {
        ScrollingMarqueeView &marquee = view.lcd().trackInfoLabel();
        for (const QString &text : marquee.displayStrings()) {
            if (QFontMetricsF(marquee.font()).horizontalAdvance(text) > marquee.width()) {
                return text;
            }
        }
        return cutOffIn(view);
    }

    QFont m_font;
};

TUNEDECK_TEST(TranslationsTest, QApplication)
#include "TranslationsTest.moc"

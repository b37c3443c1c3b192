// SPDX-License-Identifier: MIT
#include "app/AboutWindow.h"
#include "app/Application.h"
#include "app/installTranslators.h"
#include "help/HelpWindow.h"
#include "preferences/AppPreferencesWindowController.h"
#include "support/Desktop.h"
#include "support/registerTest.h"
#include "updates/UpdateFailure.h"
#include "updates/UpdateWindow.h"
#include "updates/feed/Appcast.h"
#include "widgets/bringToFront.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeySequence>
#include <QLabel>
#include <QMap>
#include <QTest>
#include <QTranslator>

#include <functional>

using namespace tunedeck;

namespace {
/// The text whose mnemonic takes the keyboard to `widget` or presses it, or nothing.
QString textWithMnemonic(const QWidget &widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(&widget)) {
        return label->buddy() ? label->text() : QString();
    }
    const auto *button = qobject_cast<const QAbstractButton *>(&widget);
    return button ? button->text() : QString();
}

QMap<QString, QStringList> textsByMnemonic(const QWidget &window)
{
    QMap<QString, QStringList> texts;
    const QList<QWidget *> widgets = window.findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        const QString text = textWithMnemonic(*widget);
        if (const QKeySequence mnemonic = QKeySequence::mnemonic(text); widget->isVisible() && !mnemonic.isEmpty()) {
            texts[mnemonic.toString()].append(text);
        }
    }
    return texts;
}

/// The texts in `window` that have a mnemonic in common. Qt then presses none of the buttons.
QString collisionsIn(const QWidget &window)
{
    QStringList collisions;
    const QMap<QString, QStringList> texts = textsByMnemonic(window);
    for (auto found = texts.begin(); found != texts.end(); ++found) {
        if (found->size() > 1) {
            collisions.append(found.key() + QStringLiteral(": ") + found->join(QStringLiteral(", ")));
        }
    }
    return collisions.join(QStringLiteral("; "));
}
} // namespace

/// The underlined letters of each window, in each language.
class MnemonicsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void cleanup()
    {
        const QList<QTranslator *> translators = qApp->findChildren<QTranslator *>();
        qDeleteAll(translators);
        QLocale::setDefault(QLocale::c());
    }

    void noTwoTextsOfAPaneHaveTheSame_data() { addLanguages(); }
    void noTwoTextsOfAPaneHaveTheSame()
    {
        useRow();
        Desktop desktop;
        desktop.players.neverFollowed = {{QStringLiteral("vlc"), QStringLiteral("VLC")}};
        Application application(desktop.environment());
        AppPreferencesWindowController &preferences = application.preferencesWindowController();
        preferences.showWindow();
        qsizetype found = 0;
        for (const QString &pane : preferences.toolbarDefaultItemIdentifiers()) {
            preferences.toolbarItemClicked(*preferences.toolbarItem(pane));
            QCOMPARE(collisionsIn(preferences.window()), QString());
            found += textsByMnemonic(preferences.window()).size();
        }
        QVERIFY(found >= 9);
    }

    void noTwoTextsOfTheHelpOrOfTheAboutWindowHaveTheSame_data() { addLanguages(); }
    void noTwoTextsOfTheHelpOrOfTheAboutWindowHaveTheSame()
    {
        useRow();
        AboutWindow about;
        about.orderFront();
        QCOMPARE(collisionsIn(about), QString());
        HelpWindow help;
        help.show();
        QCOMPARE(collisionsIn(help), QString());
    }

    void noTwoTextsOfAPageOfTheUpdaterHaveTheSame_data() { addLanguages(); }
    void noTwoTextsOfAPageOfTheUpdaterHaveTheSame()
    {
        useRow();
        UpdateWindow window;
        AppcastItem update;
        update.shortVersion = QStringLiteral("10.11.12");
        bringToFront(window);
        const QList<std::function<void()>> pages{
            [&] { window.showUpdate(update, QStringLiteral("10.11.11")); },
            [&] { window.showSaved(QStringLiteral("/home/somebody/Downloads/tunedeck_10.11.12-1_amd64.deb")); },
            [&] {
                window.showNoFeed();
                window.offerSystemUpdater();
            },
        };
        for (const auto &show : pages) {
            show();
            QCOMPARE(collisionsIn(window), QString());
            QVERIFY(!textsByMnemonic(window).isEmpty());
        }
        for (int failure = 0; failure <= int(UpdateFailure::notSaved); ++failure) {
            window.showFailure(UpdateFailure(failure));
            QCOMPARE(collisionsIn(window), QString());
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

    static void useRow()
    {
        QFETCH(const QString, locale);
        QLocale::setDefault(QLocale(locale));
        installTranslators(*qApp);
    }
};

TUNEDECK_TEST(MnemonicsTest, QApplication)
#include "MnemonicsTest.moc"

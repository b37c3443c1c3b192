// SPDX-License-Identifier: MIT
#include "app/AboutWindow.h"

#include "platform/BundleInfo.h"
#include "support/Desktop.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLocale>
#include <QPalette>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>

#include <memory>
#include <optional>

namespace tunedeck {

namespace {
/// A folder with credits.
class CreditsFolder {
public:
    void write(const QString &name, const QByteArray &text)
    {
        QFile file(m_folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    void makeFolder(const QString &name) { QVERIFY(QDir(m_folder.path()).mkdir(name)); }
    [[nodiscard]] QString path() const { return m_folder.path(); }

private:
    QTemporaryDir m_folder;
};

/// Stands in for the desktop's web browser, and for every other program that opens links.
class Links : public QObject {
    Q_OBJECT

public:
    Links()
    {
        QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "open");
        QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open");
    }
    ~Links() override
    {
        QDesktopServices::unsetUrlHandler(QStringLiteral("https"));
        QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    }

    QList<QUrl> opened;

public Q_SLOTS:
    void open(const QUrl &url) { opened.append(url); }
};
} // namespace

class AboutWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }
    void cleanup()
    {
        QLocale::setDefault(QLocale::c());
        QApplication::setPalette(QPalette());
    }

    void itTellsNameAndVersion()
    {
        AboutWindow about;
        QCOMPARE(about.windowTitle(), QStringLiteral("About"));
        QCOMPARE(about.nameLabel().text(), QStringLiteral("Tunedeck"));
        QCOMPARE(about.versionLabel().text(),
            QStringLiteral("Version %1 (%2)")
                .arg(*bundleInfo(u"CFBundleShortVersionString"), *bundleInfo(u"CFBundleVersion")));
        QVERIFY(about.nameLabel().font().bold());
        QVERIFY(about.versionLabel().font().pointSizeF() < about.nameLabel().font().pointSizeF());
    }

    void itGrowsWithTheFont()
    {
        AboutWindow about;
        about.orderFront();
        const int width = about.creditsText().width();
        QFont font = about.font();
        font.setPointSizeF(20);
        about.setFont(font);
        QCOMPARE(about.nameLabel().font().pointSizeF(), 30.0);
        QCOMPARE(about.versionLabel().font().pointSizeF(), 18.0);
        QCOMPARE(about.creditsText().font().pointSizeF(), 18.0);
        QVERIFY(about.creditsText().width() > width);
    }

    void theCreditsAreInTheUsersLanguageWhereTheyAreWrittenInIt_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QString>("shown");
        QTest::newRow("Spanish") << QLocale(QLocale::Spanish, QLocale::Mexico) << QStringLiteral("es");
        QTest::newRow("German") << QLocale(QLocale::German) << QStringLiteral("de");
        QTest::newRow("Finnish") << QLocale(QLocale::Finnish) << QStringLiteral("fi");
        QTest::newRow("Polish") << QLocale(QLocale::Polish) << QStringLiteral("pl");
        QTest::newRow("French has a file, but is none of them") << QLocale(QLocale::French) << QStringLiteral("all");
        QTest::newRow("English") << QLocale(QLocale::English) << QStringLiteral("all");
        QTest::newRow("no language") << QLocale::c() << QStringLiteral("all");
    }
    void theCreditsAreInTheUsersLanguageWhereTheyAreWrittenInIt()
    {
        QFETCH(QLocale, locale);
        QFETCH(QString, shown);
        CreditsFolder folder;
        folder.write(QStringLiteral("Credits.html"), "<p>all</p>");
        for (const auto *language : {"es", "de", "fi", "pl", "fr", "C"}) {
            folder.write(QStringLiteral("Credits_%1.html").arg(QLatin1String(language)), language);
        }
        QLocale::setDefault(locale);
        AboutWindow about(folder.path());
        about.orderFront();
        QCOMPARE(about.creditsText().toPlainText(), shown);
    }

    void theLanguageIsAskedForAnewEachTime()
    {
        AboutWindow about;
        about.orderFront();
        QVERIFY(about.creditsText().toPlainText().contains(QStringLiteral("Written by the Tunedeck founders")));
        about.close();
        QLocale::setDefault(QLocale(QLocale::German));
        about.orderFront();
        QVERIFY(about.creditsText().toPlainText().contains(QStringLiteral("Geschrieben von")));
    }

    void theProgramsCreditsNameItsLibrariesInEveryLanguage()
    {
        QStringList seen;
        for (const QLocale::Language language :
            {QLocale::English, QLocale::Spanish, QLocale::German, QLocale::Finnish, QLocale::Polish}) {
            QLocale::setDefault(QLocale(language));
            AboutWindow about;
            about.orderFront();
            const QString text = about.creditsText().toPlainText();
            for (const auto *name : {"Qt", "GLib", "libsodium", "libcurl", "XCB", "MIT"}) {
                QVERIFY2(text.contains(QLatin1String(name)), name);
            }
            QVERIFY(!seen.contains(text));
            seen.append(text);
            QCOMPARE(about.creditsText().verticalScrollBar()->maximum(), 0);
        }
    }

    void theAddressesOfTheBuildFollowTheCredits()
    {
        CreditsFolder folder;
        folder.write(QStringLiteral("Credits.html"), "<html><body><p align=\"center\">credits</p></body></html>");
        AboutWindow without(folder.path(), std::nullopt, std::nullopt);
        without.orderFront();
        QCOMPARE(without.creditsText().toPlainText(), QStringLiteral("credits"));
        AboutWindow with(
            folder.path(), QStringLiteral("https://tunedeck.example/a"), QStringLiteral("music@tunedeck.example"));
        with.orderFront();
        with.orderFront();
        QCOMPARE(with.creditsText().toPlainText(), QStringLiteral("credits\ntunedeck.example\nmusic@tunedeck.example"));
        QVERIFY(with.creditsText().toHtml().contains(QStringLiteral("<a href=\"https://tunedeck.example/a\">")));
        QVERIFY(with.creditsText().height() > without.creditsText().height());
    }

    void withoutReadableCreditsTheWindowIsShownWithoutThem_data()
    {
        QTest::addColumn<QByteArray>("kind");
        QTest::newRow("missing") << QByteArray("missing");
        QTest::newRow("a folder") << QByteArray("folder");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("not in UTF-8") << QByteArray("<p>caf\xe9</p>");
    }
    void withoutReadableCreditsTheWindowIsShownWithoutThem()
    {
        QFETCH(QByteArray, kind);
        CreditsFolder folder;
        if (kind == "folder") {
            folder.makeFolder(QStringLiteral("Credits.html"));
        } else if (kind != "missing") {
            folder.write(QStringLiteral("Credits.html"), kind);
        }
        AboutWindow about(folder.path());
        about.orderFront();
        QVERIFY(about.isVisible());
        QVERIFY(about.versionLabel().isVisible());
        QVERIFY(!about.creditsText().isVisible());
    }

    void longCreditsScroll()
    {
        CreditsFolder folder;
        folder.write(QStringLiteral("Credits.html"), "<p>short</p>");
        AboutWindow about(folder.path());
        about.orderFront();
        QVERIFY(QTest::qWaitForWindowExposed(&about));
        const int shortHeight = about.height();
        QCOMPARE(about.creditsText().verticalScrollBar()->maximum(), 0);
        folder.write(QStringLiteral("Credits.html"), QByteArray("<p>one of many</p>").repeated(200));
        about.orderFront();
        QTRY_VERIFY(about.height() > shortHeight);
        QVERIFY(about.height() < 600);
        QTRY_VERIFY(about.creditsText().verticalScrollBar()->maximum() > 1000);
    }

    void onlyLinksToHttpsAreOpened()
    {
        Links links;
        AboutWindow about;
        for (const auto *link : {"file:///etc/passwd", "Credits.html", "https://tunedeck.example"}) {
            Q_EMIT about.creditsText().anchorClicked(QUrl(QString::fromLatin1(link)));
        }
        QCOMPARE(links.opened, QList<QUrl>{QUrl(QStringLiteral("https://tunedeck.example"))});
    }

    void itIsAPanelOfAFixedSize()
    {
        AboutWindow about;
        about.orderFront();
        QVERIFY(QTest::qWaitForWindowExposed(&about));
        QCOMPARE(about.windowHandle()->type(), Qt::Dialog);
        QCOMPARE(about.windowHandle()->minimumSize(), about.size());
        QCOMPARE(about.windowHandle()->maximumSize(), about.size());
        QVERIFY(!about.testAttribute(Qt::WA_QuitOnClose));
    }

    void escapeAndCtrlWCloseIt()
    {
        AboutWindow about;
        about.orderFront();
        QVERIFY(QTest::qWaitForWindowActive(&about));
        QTest::keyClick(about.windowHandle(), Qt::Key_Escape);
        QVERIFY(!about.isVisible());
        about.orderFront();
        QVERIFY(QTest::qWaitForWindowActive(&about));
        QTest::keyClick(about.windowHandle(), Qt::Key_W, Qt::ControlModifier);
        QVERIFY(!about.isVisible());
    }

    void itsTextsCanBeSelectedAndRead()
    {
        AboutWindow about;
        about.orderFront();
        for (const QLabel *label : {&about.nameLabel(), &about.versionLabel()}) {
            QVERIFY(label->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
            QVERIFY(label->textInteractionFlags().testFlag(Qt::TextSelectableByKeyboard));
        }
        QVERIFY(about.creditsText().textInteractionFlags().testFlag(Qt::LinksAccessibleByKeyboard));
        QVERIFY(!about.creditsText().accessibleName().isEmpty());
    }

    void theBackgroundLiesBehindEverythingAndFillsTheWindow()
    {
        CreditsFolder folder;
        AboutWindow about(folder.path());
        auto *background = new QWidget;
        about.setBackground(*background);
        about.orderFront();
        QVERIFY(QTest::qWaitForWindowExposed(&about));
        QVERIFY(background->isVisible());
        QCOMPARE(background->geometry(), about.rect());
        QCOMPARE(about.children().first(), background);
        folder.write(QStringLiteral("Credits.html"), "<p>now there are some</p>");
        const int height = about.height();
        about.orderFront();
        QTRY_VERIFY(about.height() > height);
        QCOMPARE(background->geometry(), about.rect());
    }

    void aBackgroundThatGoesAwayIsNotMissed()
    {
        AboutWindow about;
        auto background = std::make_unique<QWidget>();
        about.setBackground(*background);
        about.orderFront();
        background.reset();
        about.adjustSize();
        QVERIFY(about.isVisible());
    }

    void theTextFollowsThePalette()
    {
        AboutWindow about;
        about.orderFront();
        const QString light = about.creditsText().document()->defaultStyleSheet();
        QApplication::setPalette(QPalette(QColor(0x32, 0x32, 0x32), QColor(0x28, 0x28, 0x28)));
        QTRY_VERIFY(about.creditsText().document()->defaultStyleSheet() != light);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::AboutWindowTest, QApplication)
#include "AboutWindowTest.moc"

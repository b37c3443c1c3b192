// SPDX-License-Identifier: MIT
#include "updates/UpdateWindow.h"

#include "support/failOnWarning.h"
#include "support/registerTest.h"
#include "updates/failureMessage.h"
#include "updates/feed/Appcast.h"
#include "widgets/bringToFront.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTextBrowser>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {
AppcastItem updateWithNotes(const QString &notes)
{
    AppcastItem update;
    update.version = u"200"_s;
    update.shortVersion = u"2.0"_s;
    update.length = 3'000'000;
    update.releaseNotes = notes;
    return update;
}

QStringList buttonTexts(const UpdateWindow &window)
{
    QStringList texts;
    for (const QPushButton *button : window.findChildren<QPushButton *>()) {
        texts.append(button->text().remove(u'&'));
    }
    texts.sort();
    return texts;
}

bool isShown(const UpdateWindow &window, const QString &text)
{
    const QList<QLabel *> labels = window.findChildren<QLabel *>();
    return std::any_of(labels.begin(), labels.end(),
        [&text](const QLabel *label) { return label->isVisible() && label->text() == text; });
}
} // namespace

class UpdateWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        tunedeck::failOnWarning();
        m_opened.clear();
        for (const QString &scheme : {u"https"_s, u"http"_s, u"file"_s}) {
            QDesktopServices::setUrlHandler(scheme, this, "open");
        }
    }
    void cleanup()
    {
        for (const QString &scheme : {u"https"_s, u"http"_s, u"file"_s}) {
            QDesktopServices::unsetUrlHandler(scheme);
        }
    }

    void eachPageReplacesTheOneBefore()
    {
        UpdateWindow window;
        window.showChecking();
        bringToFront(window);
        auto *progress = window.findChild<QProgressBar *>();
        auto *notes = window.findChild<QTextBrowser *>();
        QVERIFY(isShown(window, u"Checking for updates…"_s));
        QVERIFY(progress->isVisible());
        QCOMPARE(progress->maximum(), 0);
        QCOMPARE(buttonTexts(window), QStringList({u"Cancel"_s}));

        window.showUpdate(updateWithNotes(u"<b>New</b>"_s), u"1.0"_s);
        QVERIFY(isShown(window, u"A new version of Tunedeck is available."_s));
        QVERIFY(isShown(window, u"Version 2.0 is available; you have version 1.0."_s));
        QVERIFY(!progress->isVisible());
        QVERIFY(notes->isVisible());
        QCOMPARE(notes->toPlainText(), u"New"_s);
        QCOMPARE(buttonTexts(window), QStringList({u"Download"_s, u"Later"_s}));

        window.showDownload(updateWithNotes({}));
        QVERIFY(isShown(window, u"Downloading Tunedeck 2.0…"_s));
        QVERIFY(isShown(window, u"0 bytes of 3.0 MB"_s));
        QVERIFY(!notes->isVisible());
        window.setReceived(1'500'000);
        QVERIFY(isShown(window, u"1.5 MB of 3.0 MB"_s));
        QCOMPARE(progress->value(), 1'500'000);
        QCOMPARE(progress->maximum(), 3'000'000);

        window.showVerifying();
        QVERIFY(isShown(window, u"Checking that the download is genuine…"_s));
        QCOMPARE(progress->maximum(), 0);

        window.showSaved(u"/home/a/Downloads/tunedeck.deb"_s);
        QVERIFY(isShown(window,
            u"It was verified and saved as “tunedeck.deb” in “/home/a/Downloads”. To install it, quit Tunedeck and "
            u"open the "
            "file."_s));
        QVERIFY(!progress->isVisible());
        QCOMPARE(buttonTexts(window), QStringList({u"Close"_s, u"Show in Folder"_s, u"Verify Again"_s}));

        window.showGenuine(u"/home/a/Downloads/tunedeck.deb"_s);
        QVERIFY(isShown(window, u"The file is genuine."_s));
        QVERIFY(isShown(window,
            u"“tunedeck.deb” in “/home/a/Downloads” is the file that Tunedeck's makers signed. To install it, quit "
            "Tunedeck and open the file."_s));
        QCOMPARE(buttonTexts(window), QStringList({u"Close"_s, u"Show in Folder"_s, u"Verify Again"_s}));

        window.showUpToDate(u"1.0"_s);
        QVERIFY(isShown(window, u"Tunedeck is up to date."_s));
        QVERIFY(isShown(window, u"You have version 1.0, which is the newest."_s));
        QCOMPARE(buttonTexts(window), QStringList({u"Close"_s}));

        AppcastItem newest;
        newest.shortVersion = u"2.0"_s;
        newest.minimumSystemVersion = u"13"_s;
        window.showForNewerSystem(newest, u"1.0"_s);
        QVERIFY(isShown(window, u"A new version of Tunedeck is available, but not for your system."_s));
        QVERIFY(isShown(window,
            u"Version 2.0 needs version 13 of your system or a later one. You have version 1.0, the "
            "newest that runs on your system."_s));
        QCOMPARE(buttonTexts(window), QStringList({u"Close"_s}));

        window.showNoFeed();
        QVERIFY(isShown(window, u"This copy of Tunedeck does not look for new versions itself."_s));
        QCOMPARE(buttonTexts(window), QStringList({u"Close"_s}));
        window.offerSystemUpdater();
        QCOMPARE(buttonTexts(window), QStringList({u"Close"_s, u"Open Software Updater"_s}));
    }

    void itGrowsWithTheFont()
    {
        UpdateWindow window;
        window.showUpToDate(u"1.0"_s);
        bringToFront(window);
        const QSize size = window.size();
        QFont font = window.font();
        font.setPointSizeF(2 * font.pointSizeF());
        window.setFont(font);
        QTRY_VERIFY(window.width() > size.width());
        QVERIFY(window.height() > size.height());
    }

    void noTwoFailuresAreToldAlike()
    {
        QStringList headlines;
        for (int failure = 0; failure <= int(UpdateFailure::notSaved); ++failure) {
            const FailureMessage message = failureMessage(UpdateFailure(failure));
            QVERIFY(!message.advice.isEmpty());
            QVERIFY2(!headlines.contains(message.headline), qPrintable(message.headline));
            headlines.append(message.headline);
            UpdateWindow window;
            window.showFailure(UpdateFailure(failure));
            window.show();
            QVERIFY(isShown(window, message.headline));
            QVERIFY(isShown(window, message.advice));
        }
        QCOMPARE(headlines.size(), 22);
    }

    void buttonsAskForWhatTheySay()
    {
        UpdateWindow window;
        QSignalSpy download(&window, &UpdateWindow::downloadRequested);
        QSignalSpy folder(&window, &UpdateWindow::showInFolderRequested);
        QSignalSpy again(&window, &UpdateWindow::verificationRequested);
        QSignalSpy updater(&window, &UpdateWindow::systemUpdaterRequested);
        bringToFront(window);
        const auto press = [&window] { QTest::keyClick(&window, Qt::Key_Return); };
        window.showUpdate(updateWithNotes({}), u"1.0"_s);
        press();
        QTRY_COMPARE(download.count(), 1);
        window.showSaved(u"/tmp/tunedeck.deb"_s);
        press();
        QTRY_COMPARE(folder.count(), 1);
        window.findChildren<QPushButton *>().at(1)->click();
        QTRY_COMPARE(again.count(), 1);
        window.showNoFeed();
        window.offerSystemUpdater();
        press();
        QTRY_COMPARE(updater.count(), 1);
        QVERIFY(window.isVisible());
    }

    void everyWayToCloseIsTold()
    {
        UpdateWindow window;
        const QSignalSpy rejected(&window, &UpdateWindow::rejected);
        window.showChecking();
        bringToFront(window);
        QTest::keyClick(&window, Qt::Key_Escape);
        QCOMPARE(rejected.count(), 1);
        QVERIFY(!window.isVisible());
        bringToFront(window);
        window.close();
        QCOMPARE(rejected.count(), 2);
        bringToFront(window);
        window.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Cancel)->click();
        QCOMPARE(rejected.count(), 3);
    }

    void notesLoadNothing()
    {
        UpdateWindow window;
        window.showUpdate(updateWithNotes(u"<img src='https://tunedeck.example/a.png'><p>a</p>"_s), u"1.0"_s);
        bringToFront(window);
        auto *notes = window.findChild<QTextBrowser *>();
        QVERIFY(!notes->toHtml().contains(u"<img"_s));
        QCOMPARE(notes->loadResource(QTextDocument::ImageResource, QUrl(u"file:///etc/passwd"_s)), QVariant());
        QCOMPARE(m_opened, QList<QUrl>());
    }

    void aLinkIsOpenedElsewhereIfItIsSecure()
    {
        UpdateWindow window;
        window.showUpdate(updateWithNotes(u"<a href='https://tunedeck.example/'>a</a>"_s), u"1.0"_s);
        bringToFront(window);
        auto *notes = window.findChild<QTextBrowser *>();
        QVERIFY(notes->toHtml().contains(u"https://tunedeck.example/"_s));
        Q_EMIT notes->anchorClicked(QUrl(u"file:///etc/passwd"_s));
        Q_EMIT notes->anchorClicked(QUrl(u"http://tunedeck.example/"_s));
        Q_EMIT notes->anchorClicked(QUrl(u"https://tunedeck.example/"_s));
        QCOMPARE(m_opened, QList<QUrl>({QUrl(u"https://tunedeck.example/"_s)}));
        QCOMPARE(notes->toPlainText(), u"a"_s);
    }

    void aScreenReaderIsToldThePage()
    {
        UpdateWindow window;
        bringToFront(window);
        window.showUpToDate(u"1.0"_s);
        QCOMPARE(
            window.accessibleDescription(), u"Tunedeck is up to date.\nYou have version 1.0, which is the newest."_s);
        QVERIFY(!window.findChild<QProgressBar *>()->accessibleName().isEmpty());
        QVERIFY(!window.findChild<QTextBrowser *>()->accessibleName().isEmpty());
    }

    void tabReachesTheNotesAndTheButtons()
    {
        UpdateWindow window;
        window.showUpdate(updateWithNotes(u"<p>a</p>"_s), u"1.0"_s);
        bringToFront(window);
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QSet<QWidget *> reached;
        for (int presses = 0; presses < 3; ++presses) {
            reached.insert(QApplication::focusWidget());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(reached.size(), 3);
        QVERIFY(reached.contains(window.findChild<QTextBrowser *>()));
    }

public Q_SLOTS:
    void open(const QUrl &url) { m_opened.append(url); }

private:
    QList<QUrl> m_opened;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::UpdateWindowTest, QApplication)
#include "UpdateWindowTest.moc"

// SPDX-License-Identifier: MIT
#include "updates/StandardUpdater.h"

#include "FeedText.h"
#include "FileManager.h"
#include "FileSystem.h"
#include "TestSigner.h"
#include "UpdateServer.h"
#include "platform/UserDefaults.h"
#include "support/PrivateBus.h"
#include "support/TurnWatch.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"
#include "updates/UpdateDownload.h"
#include "updates/failureMessage.h"
#include "updates/feed/FeedSignature.h"
#include "updates/feed/FileStatement.h"
#include "updates/inBackground.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QDate>
#include <QDialogButtonBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFuture>
#include <QLocale>
#include <QLoggingCategory>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QSemaphore>
#include <QSslConfiguration>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tunedeck {

namespace {
/// Long enough for a busy machine.
constexpr auto patience = 10s;
/// A turn of the event loop that waits for a silent server takes this long.
constexpr auto shortPatience = 1s;
#ifdef __SANITIZE_THREAD__
constexpr qint64 longestTurn = 500;
#else
constexpr qint64 longestTurn = 150;
#endif

const QString feedPath = u"/feed.xml"_s;
const QString signaturePath = u"/feed.xml.signature"_s;
const QString filePath = u"/files/tunedeck_9.9_amd64.deb"_s;

const QString isUpToDate = u"Tunedeck is up to date.\nYou have version 1.0, which is the newest."_s;
const QString isOffered = u"A new version of Tunedeck is available.\nVersion 2.0 is available; you have version 1.0."_s;
const QString isNotVerifiable = u"A new version is available, but it cannot be trusted."_s;

UpdateWindow *window()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (auto *found = qobject_cast<UpdateWindow *>(widget)) {
            return found;
        }
    }
    return nullptr;
}

/// The text of the page for screen readers. Empty while no window is open.
QString page()
{
    return window() && window()->isVisible() ? window()->accessibleDescription() : QString();
}

QString headline()
{
    return page().section(u'\n', 0, 0);
}

/// The button that Return presses.
void pressDefaultButton()
{
    for (QPushButton *button : window()->findChildren<QPushButton *>()) {
        if (button->isDefault()) {
            button->click();
            return;
        }
    }
    qWarning("There is no default button.");
}

void press(const QString &text)
{
    for (QPushButton *button : window()->findChildren<QPushButton *>()) {
        if (button->text().remove(u'&') == text) {
            button->click();
            return;
        }
    }
    qWarning("There is no such button.");
}

long residentKilobytes()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}
} // namespace

class StandardUpdaterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// GIO reads the environment once. The first window is shown here because Qt's work for it must not be measured.
    void initTestCase()
    {
        qputenv("no_proxy", "127.0.0.1");
        QVERIFY(m_home.isValid());
        for (const char *variable : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME"}) {
            qputenv(variable, m_home.path().toUtf8());
        }
        qputenv("XDG_DATA_DIRS", m_home.filePath(u"empty"_s).toUtf8());
        UpdateWindow first;
        first.showUpdate(AppcastItem(), QString());
        first.show();
        QVERIFY(QTest::qWaitForWindowExposed(&first));
    }

    void init()
    {
        tunedeck::failOnWarning();
        // A test that failed may have left it.
        static_cast<void>(fileSystem().wakeUp.try_acquire());
        m_server = std::make_unique<UpdateServer>();
        m_folder = std::make_unique<QTemporaryDir>();
        m_file = QByteArray("a program").repeated(50'000);
        m_server->setAnswer(filePath, {m_file});
        m_settings = std::make_unique<UserDefaults>(m_folder->filePath(u"settings"_s));
        m_configuration = {m_server->url(feedPath), {m_signer.publicKey(), m_nextSigner.publicKey()},
            {u"100"_s, u"1.0"_s, u"12"_s}, m_folder->filePath(u"Downloads"_s), {updateServerCertificate(), patience}};
        m_turns.reset();
    }

    void cleanup()
    {
        const qint64 turn = m_turns ? m_turns->longest() : 0;
        m_updater.reset();
        QVERIFY2(turn < longestTurn, qPrintable(QString::number(turn)));
        QCOMPARE(visibleAndHiddenFiles().size(), m_expectedFiles);
        m_expectedFiles = 0;
    }

    // The check

    void aNewerVersionIsOfferedWithItsNotes()
    {
        offerUpdate("<description><![CDATA[<p>Better <script>x</script>sound</p>]]></description>");
        QCOMPARE(page(), isOffered);
        QVERIFY(window()->findChild<QTextBrowser *>()->toHtml().contains(u"Better sound"_s));
        QCOMPARE(m_server->requests().size(), 2);
    }

    void nothingIsAskedOfTheNetworkBeforeTheUserAsks()
    {
        const StandardUpdater updater(m_configuration, m_bus, *m_settings);
        QCOMPARE(requestsSoFar(), 0);
        QCOMPARE(page(), QString());
    }

    void whatIsNotNewerIsToldToBeUpToDate_data()
    {
        QTest::addColumn<QByteArray>("items");
        QTest::newRow("the same") << feedItem("100", fileElement());
        QTest::newRow("older") << feedItem("99", fileElement());
        QTest::newRow("an empty feed") << QByteArray();
        QTest::newRow("a prerelease") << feedItem(
            "200", "<sparkle:shortVersionString>2.0b1</sparkle:shortVersionString>" + fileElement());
        QTest::newRow("nothing that fits")
            << QByteArray(feedItem("200", "<sparkle:channel>beta</sparkle:channel>" + fileElement())
                   + feedItem("200", "<sparkle:os>windows</sparkle:os>" + fileElement())
                   + feedItem("none", fileElement()) + feedItem("200", {}));
    }
    void whatIsNotNewerIsToldToBeUpToDate()
    {
        QFETCH(const QByteArray, items);
        publish(feedText(items));
        check();
        QTRY_COMPARE(page(), isUpToDate);
    }

    void whatIsNewerButForANewerSystemIsTold()
    {
        const auto needing = [this](const QByteArray &version, const QByteArray &system) {
            return feedItem(version + "00",
                "<sparkle:shortVersionString>" + version
                    + ".0</sparkle:shortVersionString>"
                      "<sparkle:minimumSystemVersion>"
                    + system + "</sparkle:minimumSystemVersion>" + fileElement());
        };
        publish(feedText(needing("2", "13") + needing("3", "14")));
        check();
        QTRY_COMPARE(page(),
            u"A new version of Tunedeck is available, but not for your system.\nVersion 3.0 needs version 14 of your "
            "system or a later one. You have version 1.0, the newest that runs on your system."_s);
        // The next check is a new one.
        publish(feedText({}));
        m_updater->checkForUpdates();
        QTRY_COMPARE(page(), isUpToDate);
    }

    void aFeedThatCannotBeReadIsTold_data()
    {
        QTest::addColumn<QByteArray>("feed");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("malformed") << QByteArray("<rss><channel></rss>");
        QTest::newRow("a page to sign in") << QByteArray("<!DOCTYPE html><html><body>Hello</body></html>");
        QTest::newRow("cut") << feedText({}).chopped(20);
        QTest::newRow("no serial") << feedText({}, {});
        QTest::newRow("no expiry") << feedText({}, "8", {});
        QTest::newRow("an entity bomb") << QByteArray(
            "<!DOCTYPE rss [<!ENTITY a 'ha'><!ENTITY b '&a;&a;&a;&a;'>]><rss><channel>&b;</channel></rss>");
    }
    void aFeedThatCannotBeReadIsTold()
    {
        QFETCH(const QByteArray, feed);
        publish(feed);
        check();
        QTRY_COMPARE(page(), u"The list of updates could not be read.\nCheck for updates again later."_s);
    }

    void aFeedWithoutASignatureIsNotBelieved()
    {
        m_server->setAnswer(feedPath, {feedText(updateItem())});
        check();
        QTRY_COMPARE(headline(), u"The list of updates is not signed."_s);
        QCOMPARE(window()->findChildren<QPushButton *>().size(), 1);
        QCOMPARE(keptSerial(), 0);
    }

    void aSignatureThatTheServerDoesNotGiveIsNotTakenForAMissingOne()
    {
        m_server->setAnswer(feedPath, {feedText(updateItem())});
        m_server->setAnswer(signaturePath, {"x", "503 Service Unavailable"});
        check();
        QTRY_COMPARE(
            page(), u"The signature of the list of updates could not be fetched.\nCheck for updates again later."_s);
        QCOMPARE(keptSerial(), 0);
    }

    void aFeedThatItsMakersHaveNotSignedIsNotBelieved_data()
    {
        QTest::addColumn<QByteArray>("feed");
        QTest::addColumn<QByteArray>("signature");
        const QByteArray good = feedText(updateItem());
        const QByteArray signature = m_signer.sign(feedTextToSign(good));
        QByteArray relabelled = good;
        relabelled.replace("2.0<", "9.0<");
        QTest::newRow("relabelled") << relabelled << signature;
        QTest::newRow("cut") << good.chopped(1) << signature;
        QTest::newRow("longer") << QByteArray(good + '\n') << signature;
        QTest::newRow("signed by another") << good << TestSigner().sign(feedTextToSign(good));
        QTest::newRow("signed for another purpose") << good << m_signer.sign(good);
        QTest::newRow("an empty signature") << good << QByteArray();
        QTest::newRow("a page") << good << QByteArray("<!DOCTYPE html><html><body>Hello</body></html>");
        QTest::newRow("half a signature") << good << signature.first(44);
        QTest::newRow("a long signature") << good << QByteArray(signature + QByteArray(5'000, '\n'));
        QTest::newRow("many signatures") << good
                                         << QByteArray((QByteArray(64, 's').toBase64() + '\n').repeated(4) + signature);
    }
    void aFeedThatItsMakersHaveNotSignedIsNotBelieved()
    {
        QFETCH(const QByteArray, feed);
        QFETCH(const QByteArray, signature);
        m_server->setAnswer(feedPath, {feed});
        m_server->setAnswer(signaturePath, {signature});
        check();
        QTRY_COMPARE(headline(), u"The list of updates cannot be trusted."_s);
        QCOMPARE(window()->findChildren<QPushButton *>().size(), 1);
        QCOMPARE(keptSerial(), 0);
    }

    void anyOfTheKeysSigns()
    {
        const QByteArray feed = feedText(updateItem());
        m_server->setAnswer(feedPath, {feed});
        m_server->setAnswer(signaturePath, {m_nextSigner.sign(feedTextToSign(feed)) + '\n'});
        check();
        QTRY_COMPARE(page(), isOffered);
        window()->close();
        m_server->setAnswer(signaturePath,
            {TestSigner().sign(feedTextToSign(feed)) + "\r\n" + m_signer.sign(feedTextToSign(feed)) + "\r\n"});
        m_updater->checkForUpdates();
        QTRY_COMPARE(page(), isOffered);
    }

    void aFeedThatIsOlderThanOneSeenIsNotBelieved()
    {
        publish(feedText(updateItem(), "8"));
        check();
        QTRY_COMPARE(page(), isOffered);
        QCOMPARE(keptSerial(), 8);
        publish(feedText({}, "7"));
        check();
        QTRY_COMPARE(headline(), u"The list of updates is older than one seen before."_s);
        publish(feedText({}, "8"));
        check();
        QTRY_COMPARE(page(), isUpToDate);
        publish(feedText({}, "1000000000"));
        check();
        QTRY_COMPARE(page(), isUpToDate);
        QCOMPARE(keptSerial(), 1'000'000'000);
    }

    void anyKeptSerialIsBorne_data()
    {
        QTest::addColumn<QVariant>("kept");
        QTest::newRow("a text") << QVariant(u"newest"_s);
        QTest::newRow("negative") << QVariant(-1);
        QTest::newRow("a list") << QVariant(QStringList{u"8"_s, u"9"_s});
        QTest::newRow("higher than any feed's") << QVariant(1'000'000'001);
        QTest::newRow("enormous") << QVariant(std::numeric_limits<qint64>::max());
    }
    void anyKeptSerialIsBorne()
    {
        QFETCH(const QVariant, kept);
        m_settings->setValue(SettingsKey::newestUpdateFeed, kept);
        publish(feedText({}));
        check();
        QTRY_COMPARE(page(), isUpToDate);
        QCOMPARE(keptSerial(), 7);
    }

    void anExpiredFeedIsNotBelieved()
    {
        publish(feedText(updateItem(), "8", "2026-01-31T12:00:00Z"));
        check();
        QTRY_COMPARE(headline(), u"The list of updates has expired."_s);
        // The user can see whether the computer's date is wrong.
        QVERIFY(page().contains(QLocale().toString(QDate::currentDate(), QLocale::LongFormat)));
        QCOMPARE(window()->findChildren<QPushButton *>().size(), 1);
        QCOMPARE(keptSerial(), 0);
    }

    void aFeedOfAHundredMegabytesIsStopped()
    {
        m_server->setAnswer(feedPath, {QByteArray(1'000'000, ' '), "200 OK", {}, 100});
        const long before = residentKilobytes();
        check();
        QTRY_COMPARE(headline(), u"The list of updates is too long."_s);
        QVERIFY2(m_server->sentBytes() < 20'000'000, qPrintable(QString::number(m_server->sentBytes())));
        const long grown = residentKilobytes() - before;
        QVERIFY2(grown < 50'000, qPrintable(QString::number(grown)));
    }

    void aServerThatFailsIsTold_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("told");
        QTest::newRow("not found") << u"/nothing"_s << u"The update server does not have the file."_s;
        QTest::newRow("an error") << u"/error"_s << u"The update server answered with an error."_s;
        QTest::newRow("silent") << u"/silent"_s << u"The update server stopped responding or is too slow."_s;
        QTest::newRow("broken off") << u"/broken"_s << u"The connection to the update server was lost."_s;
        QTest::newRow("sent on to plain http")
            << u"/plain"_s << u"The connection to the update server is not secure."_s;
        QTest::newRow("sent round and round") << u"/round"_s << u"The update server redirects too often."_s;
    }
    void aServerThatFailsIsTold()
    {
        QFETCH(const QString, path);
        QFETCH(const QString, told);
        m_server->setAnswer(u"/error"_s, {"x", "500 Internal Server Error"});
        m_server->setAnswer(u"/silent"_s, {"<rss>", "200 OK", {}, 1, 100, true});
        m_server->setAnswer(u"/broken"_s, {"<rss>", "200 OK", {}, 1, 100});
        m_server->redirect(u"/plain"_s, QUrl(u"http://tunedeck.example/feed.xml"_s));
        m_server->redirect(u"/round"_s, m_server->url(u"/round"_s));
        m_configuration.feed = m_server->url(path);
        m_configuration.transferRules.patience = path == u"/silent" ? shortPatience : patience;
        check();
        QTRY_COMPARE(headline(), told);
    }

    void aFeedThatComesTooSlowlyIsStopped()
    {
        m_server->setAnswer(feedPath, {QByteArray(2'000, ' '), "200 OK", {}, 1'000, -1, false, 0, 100ms});
        m_configuration.feedDeadline = 1s;
        check();
        QTRY_COMPARE(headline(), u"The update server stopped responding or is too slow."_s);
        QTRY_COMPARE(m_server->openConnections(), 0);
    }

    void theLogSaysWhyACheckFailed()
    {
        QLoggingCategory::setFilterRules(u"tunedeck.updates=true"_s);
        const auto off = qScopeGuard([] { QLoggingCategory::setFilterRules(QString()); });
        m_server->setAnswer(feedPath, {"x", "500 Internal Server Error"});
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression(u"^check \"https://127\\.0\\.0\\.1:\\d+/feed\\.xml\"$"_s));
        QTest::ignoreMessage(QtDebugMsg, "the server answers with status 500");
        QTest::ignoreMessage(QtDebugMsg, "failed: tunedeck::UpdateFailure::refused");
        check();
        QTRY_COMPARE(headline(), failureMessage(UpdateFailure::refused).headline);
    }

    void theLogCountsTheVersionsOfAFeed()
    {
        QLoggingCategory::setFilterRules(u"tunedeck.updates=true"_s);
        const auto off = qScopeGuard([] { QLoggingCategory::setFilterRules(QString()); });
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression(u"^check "_s));
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression(u"^feed read: \\d+ bytes, 1 versions$"_s));
        offerUpdate();
        QCOMPARE(page(), isOffered);
    }

    void theLogShortensWhatAServerSends()
    {
        QLoggingCategory::setFilterRules(u"tunedeck.updates=true"_s);
        const auto off = qScopeGuard([] { QLoggingCategory::setFilterRules(QString()); });
        m_server->redirect(feedPath, QUrl(u"http://tunedeck.example/"_s + QString(1'000, u'x')));
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression(u"^check "_s));
        QTest::ignoreMessage(QtDebugMsg,
            QRegularExpression(u"^refused: not a secure address: \"http://tunedeck\\.example/x{175}…\"$"_s));
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression(u"^failed: "_s));
        check();
        QTRY_COMPARE(headline(), failureMessage(UpdateFailure::insecure).headline);
    }

    void aServerThatIsNotThereIsTold()
    {
        m_server.reset();
        check();
        QTRY_COMPARE(page(),
            u"The update server could not be reached.\nMake sure that this computer is connected to the internet, then "
            "check for updates again."_s);
    }

    void anUpdateThatCannotBeCheckedIsNotOffered_data()
    {
        QTest::addColumn<QByteArray>("file");
        const QByteArray good = fileElement();
        const auto with = [&good](const QByteArray &name, const QByteArray &value) {
            const qsizetype begin = good.indexOf(name + "=\"") + name.size() + 2;
            QByteArray changed = good;
            return changed.replace(begin, good.indexOf('"', begin) - begin, value);
        };
        QTest::newRow("no signature") << with("tunedeck:signature", {});
        QTest::newRow("half a signature") << with("tunedeck:signature", "c3Nz");
        QTest::newRow("another signature") << with("tunedeck:signature", QByteArray(64, 's').toBase64());
        QTest::newRow("no hash") << with("tunedeck:sha512", {});
        QTest::newRow("another hash") << with("tunedeck:sha512", QByteArray(64, 'h').toBase64());
        QTest::newRow("no length") << with("length", {});
        QTest::newRow("another length") << with("length", QByteArray::number(m_file.size() - 1));
        QTest::newRow("more than a gigabyte") << with("length", "1073741825");
        QTest::newRow("the file of another build") << fileElement(u"100"_s);
        QTest::newRow("the file of another version") << fileElement(u"200"_s, u"1.0"_s);
        QTest::newRow("over plain http") << with("url", "http://tunedeck.example/t.deb");
        QTest::newRow("from a file") << with("url", "file:///etc/passwd");
    }
    void anUpdateThatCannotBeCheckedIsNotOffered()
    {
        QFETCH(const QByteArray, file);
        publish(feedText(feedItem("200", "<sparkle:shortVersionString>2.0</sparkle:shortVersionString>" + file)));
        check();
        QTRY_COMPARE(headline(), isNotVerifiable);
        QCOMPARE(window()->findChildren<QPushButton *>().size(), 1);
    }

    void aCopyBuiltWronglySaysSo_data()
    {
        QTest::addColumn<QUrl>("feed");
        QTest::addColumn<QByteArray>("key");
        QTest::newRow("no second key") << QUrl(u"https://tunedeck.example/feed"_s) << QByteArray();
        QTest::newRow("half a key") << QUrl(u"https://tunedeck.example/feed"_s) << QByteArray(16, 'k').toBase64();
        QTest::newRow("plain http") << QUrl(u"http://tunedeck.example/feed"_s) << QByteArray(32, 'k').toBase64();
    }
    void aCopyBuiltWronglySaysSo()
    {
        QFETCH(const QUrl, feed);
        QFETCH(const QByteArray, key);
        m_configuration.feed = feed;
        m_configuration.publicKeys = {m_signer.publicKey(), key};
        check();
        QCOMPARE(headline(), u"This copy of Tunedeck cannot check for updates."_s);
    }

    // The download

    void whatIsVerifiedIsSavedUnderItsName()
    {
        offerUpdate();
        pressDefaultButton();
        QTRY_COMPARE(headline(), u"The new version has been downloaded."_s);
        QCOMPARE(page().section(u'\n', 1),
            u"It was verified and saved as “tunedeck_2.0.deb” in “%1”. To install it, quit Tunedeck and open the file."_s
                .arg(m_configuration.downloadFolder));
        QCOMPARE(contentOf(u"tunedeck_2.0.deb"_s), m_file);
        QVERIFY(!QFileInfo(downloaded(u"tunedeck_2.0.deb"_s)).isExecutable());
        QVERIFY(QFile::permissions(downloaded(u"tunedeck_2.0.deb"_s)).testFlag(QFileDevice::ReadOther));
        const auto signature = SignedFileStatement::fromText(contentOf(u"tunedeck_2.0.deb.signature"_s));
        QVERIFY(signature);
        QVERIFY(signature->statement == statement(u"200"_s, u"2.0"_s));
        QCOMPARE(signature->signature.toBase64(), m_signer.sign(signature->statement.text()));
        m_expectedFiles = 2;
    }

    /// The download folder may be in the network.
    void theMainThreadDoesNotWaitForTheDownloadFolder()
    {
        fileSystem().openedByMainThread = 0;
        fileSystem().openedByOthers = 0;
        offerUpdate();
        pressDefaultButton();
        QTRY_COMPARE(headline(), u"The new version has been downloaded."_s);
        // The file and its signature.
        QCOMPARE(fileSystem().openedByOthers, 2);
        QCOMPARE(fileSystem().openedByMainThread, 0);
        m_expectedFiles = 2;
    }

    void aSavedFileIsVerifiedAgain()
    {
        offerUpdate();
        pressDefaultButton();
        QTRY_COMPARE(headline(), u"The new version has been downloaded."_s);
        m_expectedFiles = 2;
        press(u"Verify Again"_s);
        QTRY_COMPARE(headline(), u"The file is genuine."_s);
        QVERIFY(page().contains(u"“tunedeck_2.0.deb”"_s));
        press(u"Verify Again"_s);
        QTRY_COMPARE(headline(), u"Checking that the download is genuine…"_s);
        m_updater->checkForUpdates();
        QTRY_COMPARE(headline(), u"The file is genuine."_s);
    }

    void aSavedFileThatIsAnotherNowIsNotGenuine_data()
    {
        QTest::addColumn<QByteArray>("content");
        const QByteArray file = QByteArray("a program").repeated(50'000);
        QByteArray changed = file;
        changed[200'000] = 'A';
        QTest::newRow("changed") << changed;
        QTest::newRow("longer") << QByteArray(file + 'x');
        QTest::newRow("shorter") << file.chopped(1);
        QTest::newRow("empty") << QByteArray();
    }
    void aSavedFileThatIsAnotherNowIsNotGenuine()
    {
        QFETCH(const QByteArray, content);
        offerUpdate();
        pressDefaultButton();
        QTRY_COMPARE(headline(), u"The new version has been downloaded."_s);
        m_expectedFiles = 2;
        write(u"tunedeck_2.0.deb"_s, content);
        press(u"Verify Again"_s);
        QTRY_COMPARE(headline(), u"The file is not the one that was downloaded."_s);
        QCOMPARE(window()->findChildren<QPushButton *>().size(), 1);
    }

    void whatHasTakenTheFilesPlaceIsNotRead_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("nothing") << u"nothing"_s;
        QTest::newRow("a link") << u"link"_s;
        QTest::newRow("a pipe") << u"pipe"_s;
        QTest::newRow("a folder") << u"folder"_s;
    }
    void whatHasTakenTheFilesPlaceIsNotRead()
    {
        QFETCH(const QString, kind);
        offerUpdate();
        pressDefaultButton();
        QTRY_COMPARE(headline(), u"The new version has been downloaded."_s);
        const QString path = downloaded(u"tunedeck_2.0.deb"_s);
        const QString elsewhere = m_folder->filePath(u"elsewhere"_s);
        QVERIFY(QFile::rename(path, elsewhere));
        if (kind == u"link") {
            QVERIFY(QFile::link(elsewhere, path));
        } else if (kind == u"pipe") {
            QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), S_IRUSR | S_IWUSR), 0);
        } else if (kind == u"folder") {
            QVERIFY(QDir().mkdir(path));
        }
        m_expectedFiles = kind == u"nothing" ? 1 : 2;
        press(u"Verify Again"_s);
        QTRY_COMPARE(headline(), u"The file is not the one that was downloaded."_s);
    }

    void nobodyElseMayWriteAFileThatIsNotVerified()
    {
        mode_t mode = 0;
        download([this, &mode] {
            struct stat status = {};
            QCOMPARE(::stat(descriptorOfTheDownload().constData(), &status), 0);
            mode = status.st_mode & 0777;
            QCOMPARE(visibleAndHiddenFiles(), QStringList());
        });
        QTRY_COMPARE(headline(), u"The new version has been downloaded."_s);
        QCOMPARE(mode, mode_t(S_IRUSR | S_IWUSR));
        struct stat status = {};
        QCOMPARE(::stat(QFile::encodeName(downloaded(u"tunedeck_2.0.deb"_s)).constData(), &status), 0);
        QCOMPARE(status.st_mode & 0777, mode_t(S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH));
        m_expectedFiles = 2;
    }

    void noOtherProgramInheritsADownload()
    {
        int flags = 0;
        download([this, &flags] {
            const QByteArray descriptor = descriptorOfTheDownload();
            flags = ::fcntl(descriptor.mid(descriptor.lastIndexOf('/') + 1).toInt(), F_GETFD);
        });
        QTRY_COMPARE(headline(), u"The new version has been downloaded."_s);
        QCOMPARE(flags, FD_CLOEXEC);
        m_expectedFiles = 2;
    }

    void aFileThatShrinksBeforeItIsVerifiedIsRefused()
    {
        int result = -1;
        download([this, &result] { result = ::truncate(descriptorOfTheDownload().constData(), 1'000); });
        QTRY_COMPARE(headline(), u"The download cannot be trusted."_s);
        QCOMPARE(result, 0);
    }

    void whatIsThereAlreadyStays()
    {
        QVERIFY(QDir().mkpath(m_configuration.downloadFolder));
        write(u"tunedeck_2.0.deb"_s, "mine");
        QVERIFY(QFile::link(u"/nonexistent"_s, downloaded(u"tunedeck_2.0 (1).deb"_s)));
        write(u"tunedeck_2.0 (2).deb.signature"_s, "mine too");
        offerUpdate();
        pressDefaultButton();
        QTRY_COMPARE(headline(), u"The new version has been downloaded."_s);
        QVERIFY(page().contains(u"“tunedeck_2.0 (3).deb”"_s));
        QCOMPARE(contentOf(u"tunedeck_2.0 (2).deb.signature"_s), QByteArray("mine too"));
        QCOMPARE(contentOf(u"tunedeck_2.0.deb"_s), QByteArray("mine"));
        QCOMPARE(contentOf(u"tunedeck_2.0 (3).deb"_s), m_file);
        QVERIFY(!contentOf(u"tunedeck_2.0 (3).deb.signature"_s).isEmpty());
        m_expectedFiles = 5;
    }

    void aDownloadIsShownByTheFileManagerOnTheBusThatIsThereThen()
    {
        const PrivateBus desktop;
        QVERIFY(desktop.isRunning());
        FileManager manager;
        QVERIFY(manager.registerOn(desktop.connect(u"desktop"_s)));
        const QDBusConnection later = desktop.connect(u"program"_s);
        offerUpdate();
        pressDefaultButton();
        QTRY_COMPARE(headline(), u"The new version has been downloaded."_s);
        m_expectedFiles = 2;
        m_bus = later;
        pressDefaultButton();
        QTRY_COMPARE(manager.shown,
            QStringList(QUrl::fromLocalFile(downloaded(u"tunedeck_2.0.deb"_s)).toString(QUrl::FullyEncoded)));
        m_turns.reset(); // Ending a bus takes long.
        m_bus = QDBusConnection(u"none"_s);
        QDBusConnection::disconnectFromBus(u"program"_s);
        QDBusConnection::disconnectFromBus(u"desktop"_s);
    }

    void aDownloadThatFailsLeavesNothing_data()
    {
        QTest::addColumn<QByteArray>("sent");
        QTest::addColumn<qint64>("announced");
        QTest::addColumn<bool>("staysOpen");
        QTest::addColumn<QString>("told");
        const QByteArray right = QByteArray("a program").repeated(50'000);
        QByteArray changed = right;
        changed[200'000] = 'A';
        const qint64 length = right.size();
        const QString incomplete = u"The download is incomplete."_s;
        const QString tooLong = u"The download is not the expected file."_s;
        QTest::newRow("changed") << changed << length << false << u"The download cannot be trusted."_s;
        QTest::newRow("longer") << QByteArray(right + 'x') << length + 1 << false << tooLong;
        QTest::newRow("endless") << QByteArray(right + right) << (1LL << 40) << true << tooLong;
        QTest::newRow("shorter") << right.chopped(1) << length - 1 << false << incomplete;
        QTest::newRow("empty") << QByteArray() << 0LL << false << incomplete;
        QTest::newRow("broken off") << right.chopped(1) << length << false << incomplete;
        QTest::newRow("stalled") << right.chopped(1) << length << true
                                 << u"The update server stopped responding or is too slow."_s;
    }
    void aDownloadThatFailsLeavesNothing()
    {
        QFETCH(const QByteArray, sent);
        QFETCH(const qint64, announced);
        QFETCH(const bool, staysOpen);
        QFETCH(const QString, told);
        const bool isStalled = staysOpen && sent.size() < m_file.size();
        m_configuration.transferRules.patience = isStalled ? shortPatience : patience;
        offerUpdate();
        m_server->setAnswer(filePath, {sent, "200 OK", {}, 1, announced, staysOpen});
        pressDefaultButton();
        // The rate is that of the last seconds.
        QTRY_COMPARE_WITH_TIMEOUT(headline(), told, 15'000);
        QCOMPARE(visibleAndHiddenFiles(), QStringList());
    }

    void aDownloadSentOnToPlainHttpIsNotFollowed()
    {
        offerUpdate();
        m_server->redirect(filePath, QUrl(u"http://tunedeck.example/t.deb"_s));
        pressDefaultButton();
        QTRY_COMPARE(headline(), u"The connection to the update server is not secure."_s);
    }

    void aDownloadThatIsNotThereIsTold()
    {
        offerUpdate();
        m_server->setAnswer(filePath, {"x", "404 Not Found"});
        pressDefaultButton();
        QTRY_COMPARE(headline(), u"The update server does not have the file."_s);
    }

    void aFolderThatCannotBeWrittenIsTold()
    {
        QFile inTheWay(m_folder->filePath(u"file"_s));
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        m_configuration.downloadFolder = m_folder->filePath(u"file/Downloads"_s);
        offerUpdate();
        pressDefaultButton();
        QTRY_COMPARE(headline(), u"The download could not be saved."_s);
        QCOMPARE(m_server->requests().size(), 2);
    }

    // The user does something meanwhile

    void aCheckIsGivenUpWithItsWindow_data() { waysToClose(); }
    void aCheckIsGivenUpWithItsWindow()
    {
        QFETCH(const QString, way);
        m_server->setAnswer(feedPath, {"<rss>", "200 OK", {}, 1, 100, true});
        check();
        QTRY_COMPARE(m_server->requests().size(), 1);
        QCOMPARE(headline(), u"Checking for updates…"_s);
        QCOMPARE(m_server->openConnections(), 1);
        close(way);
        QTRY_COMPARE(m_server->openConnections(), 0);
        QCOMPARE(page(), QString());
    }

    void aDownloadIsGivenUpWithItsWindow_data() { waysToClose(); }
    void aDownloadIsGivenUpWithItsWindow()
    {
        QFETCH(const QString, way);
        offerUpdate();
        m_server->setAnswer(filePath, {m_file.chopped(1), "200 OK", {}, 1, m_file.size(), true});
        pressDefaultButton();
        QTRY_VERIFY(window()->findChild<QProgressBar *>()->value() > 0);
        QCOMPARE(headline(), u"Downloading Tunedeck 2.0…"_s);
        QCOMPARE(m_server->openConnections(), 1);
        close(way);
        QTRY_COMPARE(m_server->openConnections(), 0);
        QCOMPARE(visibleAndHiddenFiles(), QStringList());
        QCOMPARE(page(), QString());
    }

    void aDownloadIntoAFolderThatHangsIsGivenUpAtOnce()
    {
        FileSystem &system = fileSystem();
        system.closedByMainThread = 0;
        system.closedByOthers = 0;
        system.hangingWrites = 0;
        offerUpdate();
        system.hangs = true;
        pressDefaultButton();
        QTRY_COMPARE(system.hangingWrites, 1);
        window()->close();
        QTRY_COMPARE(m_updater->findChildren<UpdateDownload *>().size(), 0);
        QCOMPARE(system.closedByOthers, 0);
        system.hangs = false;
        system.wakeUp.release();
        QTRY_COMPARE(m_server->openConnections(), 0);
        QTRY_COMPARE(system.closedByOthers, 1);
        QCOMPARE(system.closedByMainThread, 0);
    }

    void theEndOfTheProgramLeavesNothing_data()
    {
        QTest::addColumn<bool>("knowsNameless");
        QTest::newRow("knows files without a name") << true;
        QTest::newRow("knows none") << false;
    }
    void theEndOfTheProgramLeavesNothing()
    {
        QFETCH(const bool, knowsNameless);
        fileSystem().knowsNamelessFiles = knowsNameless;
        const auto known = qScopeGuard([] { fileSystem().knowsNamelessFiles = true; });
        offerUpdate();
        m_server->setAnswer(filePath, {m_file.chopped(1), "200 OK", {}, 1, m_file.size(), true});
        pressDefaultButton();
        QTRY_VERIFY(window()->findChild<QProgressBar *>()->value() > 0);
        m_updater.reset();
        QCOMPARE(visibleAndHiddenFiles(), QStringList());
    }

    void theEndOfTheProgramGivesUpACheckAndWaitsForWhatIsUnderWay()
    {
        m_server->setAnswer(feedPath, {"<rss>", "200 OK", {}, 1, 100, true});
        check();
        QTRY_COMPARE(m_server->requests().size(), 1);
        QSemaphore mayEnd;
        QFuture<bool> hanging = inBackground([&mayEnd] {
            mayEnd.acquire();
            return true;
        });
        m_turns.reset();
        QElapsedTimer clock;
        clock.start();
        m_updater.reset();
        QVERIFY(clock.elapsed() >= 400);
        QVERIFY(clock.elapsed() < 5'000);
        QVERIFY(!hanging.isFinished());
        mayEnd.release();
        QVERIFY(BackgroundWork::awaitEnd(5s));
    }

    void theEndOfTheProgramWaitsForTheFileOfEachDownload()
    {
        FileSystem &system = fileSystem();
        system.hangingCloses = 0;
        m_server->setAnswer(filePath, {m_file.chopped(1), "200 OK", {}, 1, m_file.size(), true});
        offerUpdate();
        pressDefaultButton();
        QTRY_VERIFY(window()->findChild<QProgressBar *>()->value() > 0);
        system.closesSlowly = true;
        window()->close();
        auto closeEnds = qScopeGuard([&system] {
            system.closesSlowly = false;
            system.wakeUp.release();
        });
        QTRY_COMPARE(system.hangingCloses, 1);
        system.closesSlowly = false;
        m_updater->checkForUpdates();
        QTRY_COMPARE(page(), isOffered);
        pressDefaultButton();
        QTRY_VERIFY(window()->findChild<QProgressBar *>()->value() > 0);
        m_turns.reset();
        QElapsedTimer clock;
        clock.start();
        m_updater.reset();
        QVERIFY(clock.elapsed() >= 400);
        closeEnds.dismiss();
        system.wakeUp.release();
        QVERIFY(BackgroundWork::awaitEnd(5s));
    }

    /// Therefore not even a program that is killed leaves a file.
    void aFileHasNoNameBeforeItIsVerified()
    {
        const int nameless = ::open(QFile::encodeName(m_folder->path()).constData(), O_TMPFILE | O_RDWR, S_IRUSR);
        if (nameless < 0) {
            QSKIP("The file system has no files without a name.");
        }
        ::close(nameless);
        offerUpdate();
        m_server->setAnswer(filePath, {m_file.chopped(1), "200 OK", {}, 1, m_file.size(), true});
        pressDefaultButton();
        QTRY_VERIFY(window()->findChild<QProgressBar *>()->value() > 0);
        QCOMPARE(visibleAndHiddenFiles(), QStringList());
    }

    void aSecondCheckBringsTheFirstOnesWindow()
    {
        m_server->setAnswer(feedPath, {"<rss>", "200 OK", {}, 1, 100, true});
        check();
        QTRY_COMPARE(m_server->requests().size(), 1);
        window()->showMinimized();
        m_updater->checkForUpdates();
        QVERIFY(!window()->isMinimized());
        QCOMPARE(requestsSoFar(), 1);
        QCOMPARE(headline(), u"Checking for updates…"_s);
    }

    void anOfferAndItsDownloadAreNotAskedForAgain()
    {
        offerUpdate();
        m_updater->checkForUpdates();
        QCOMPARE(page(), isOffered);
        m_server->setAnswer(filePath, {m_file.chopped(1), "200 OK", {}, 1, m_file.size(), true});
        pressDefaultButton();
        QTRY_COMPARE(headline(), u"Downloading Tunedeck 2.0…"_s);
        m_updater->checkForUpdates();
        QCOMPARE(headline(), u"Downloading Tunedeck 2.0…"_s);
        QTRY_COMPARE(m_server->requests().size(), 3);
    }

    void aCheckThatHasEndedIsFollowedByAnother()
    {
        publish(feedText({}));
        check();
        QTRY_COMPARE(page(), isUpToDate);
        publish(feedText(updateItem()));
        m_updater->checkForUpdates();
        QTRY_COMPARE(page(), isOffered);
        window()->close();
        publish(feedText({}));
        m_updater->checkForUpdates();
        QTRY_COMPARE(page(), isUpToDate);
        QCOMPARE(m_server->requests().size(), 6);
    }

    // A copy without a feed

    void aCopyWithoutAFeedAsksNobody()
    {
        m_configuration.feed = QUrl();
        check();
        QCOMPARE(page(),
            u"This copy of Tunedeck does not look for new versions itself.\nIf it came with your system, new versions "
            "come with the system's updates. If you built it yourself, build it again from newer sources."_s);
        QCOMPARE(requestsSoFar(), 0);
        QCOMPARE(window()->findChildren<QPushButton *>().size(), 1);
    }

    void theSystemsUpdaterIsOpenedWhereThereIsOne()
    {
        const QString entry = m_home.filePath(u"applications/org.kde.discover.desktop"_s);
        const QString witness = m_home.filePath(u"opened"_s);
        QVERIFY(QDir(m_home.path()).mkpath(u"applications"_s));
        QFile file(entry);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(u"[Desktop Entry]\nType=Application\nName=Updater\nExec=touch %1\n"_s.arg(witness).toUtf8());
        file.close();

        m_configuration.feed = QUrl();
        check();
        QTRY_COMPARE(window()->findChildren<QPushButton *>().size(), 2);
        pressDefaultButton();
        QTRY_VERIFY(QFile::exists(witness));
        QTRY_COMPARE(page(), QString());
        QVERIFY(QFile::remove(witness));

        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[Desktop Entry]\nType=Application\nName=Updater\nExec=/nonexistent/program\n");
        file.close();
        m_updater->checkForUpdates();
        QTRY_COMPARE(window()->findChildren<QPushButton *>().size(), 2);
        pressDefaultButton();
        QTRY_COMPARE(headline(), u"The software updater could not be opened."_s);
        QVERIFY(file.remove());
    }

private:
    static void waysToClose()
    {
        QTest::addColumn<QString>("way");
        QTest::newRow("Cancel") << u"Cancel"_s;
        QTest::newRow("Escape") << u"Escape"_s;
        QTest::newRow("the window's button") << u"close"_s;
    }

    static void close(const QString &way)
    {
        if (way == u"Cancel") {
            window()->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Cancel)->click();
        } else if (way == u"Escape") {
            QTest::keyClick(window(), Qt::Key_Escape);
        } else {
            window()->close();
        }
    }

    /// When a request of this test's own has been answered, the updater's earlier ones have arrived: how many they are.
    qsizetype requestsSoFar() const
    {
        QNetworkAccessManager network;
        QNetworkRequest probe(m_server->url(u"/probe"_s));
        QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
        trusting.addCaCertificates(updateServerCertificate());
        probe.setSslConfiguration(trusting);
        const std::unique_ptr<QNetworkReply> reply(network.get(probe));
        const bool isAnswered = QTest::qWaitFor([&] { return reply->isFinished(); });
        const auto isProbe = [](const QByteArray &request) { return request.startsWith("GET /probe "); };
        const auto probes = std::ranges::count_if(m_server->requests(), isProbe);
        return isAnswered && probes == 1 ? m_server->requests().size() - 1 : -1;
    }

    void check()
    {
        m_turns = std::make_unique<TurnWatch>();
        m_updater = std::make_unique<StandardUpdater>(m_configuration, m_bus, *m_settings);
        m_updater->checkForUpdates();
    }

    void offerUpdate(const QByteArray &more = {})
    {
        publish(feedText(updateItem(more)));
        check();
        QTRY_COMPARE(page(), isOffered);
    }

    /// Serves `feed` with its signature.
    void publish(const QByteArray &feed)
    {
        m_server->setAnswer(feedPath, {feed});
        m_server->setAnswer(signaturePath, {m_signer.sign(feedTextToSign(feed))});
    }

    [[nodiscard]] FileStatement statement(const QString &build, const QString &version) const
    {
        return {build, version, m_file.size(), QCryptographicHash::hash(m_file, QCryptographicHash::Sha512)};
    }

    [[nodiscard]] QByteArray fileElement(const QString &build = u"200"_s, const QString &version = u"2.0"_s) const
    {
        const FileStatement stated = statement(build, version);
        return "<enclosure url=\"" + (m_server ? m_server->url(filePath).toEncoded() : "https://tunedeck.example/t.deb")
            + "\" length=\"" + QByteArray::number(m_file.size()) + "\" tunedeck:sha512=\"" + stated.sha512.toBase64()
            + "\" tunedeck:signature=\"" + m_signer.sign(stated.text()) + "\"/>";
    }

    [[nodiscard]] qlonglong keptSerial() const { return m_settings->integerForKey(SettingsKey::newestUpdateFeed); }

    [[nodiscard]] QByteArray updateItem(const QByteArray &more = {}) const
    {
        return feedItem("200", "<sparkle:shortVersionString>2.0</sparkle:shortVersionString>" + more + fileElement());
    }

    /// Downloads the update. Calls `act` when all of it has come and none of it is verified.
    void download(const std::function<void()> &act)
    {
        offerUpdate();
        // The updater is connected before.
        connect(window(), &UpdateWindow::downloadRequested, this,
            [this, act] { connect(m_updater->findChild<UpdateDownload *>(), &UpdateDownload::verifying, this, act); });
        pressDefaultButton();
    }

    /// The path of the only open descriptor of the file that is not saved yet.
    [[nodiscard]] QByteArray descriptorOfTheDownload() const
    {
        QByteArrayList paths;
        for (const QFileInfo &descriptor : QDir(u"/proc/self/fd"_s).entryInfoList(QDir::System | QDir::Files)) {
            if (descriptor.symLinkTarget().startsWith(m_configuration.downloadFolder)) {
                paths.append(QFile::encodeName(descriptor.filePath()));
            }
        }
        return paths.size() == 1 ? paths.constFirst() : QByteArray();
    }

    [[nodiscard]] QString downloaded(const QString &name) const
    {
        return QDir(m_configuration.downloadFolder).filePath(name);
    }

    [[nodiscard]] QStringList visibleAndHiddenFiles() const
    {
        return QDir(m_configuration.downloadFolder)
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    [[nodiscard]] QByteArray contentOf(const QString &name) const
    {
        QFile file(downloaded(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(downloaded(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
    }

    QTemporaryDir m_home;
    const TestSigner m_signer;
    const TestSigner m_nextSigner;
    std::unique_ptr<UserDefaults> m_settings;
    std::unique_ptr<UpdateServer> m_server;
    std::unique_ptr<QTemporaryDir> m_folder;
    QByteArray m_file;
    UpdaterConfiguration m_configuration;
    QDBusConnection m_bus{u"none"_s};
    std::unique_ptr<StandardUpdater> m_updater;
    std::unique_ptr<TurnWatch> m_turns;
    qsizetype m_expectedFiles = 0;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::StandardUpdaterTest, QApplication)
#include "StandardUpdaterTest.moc"

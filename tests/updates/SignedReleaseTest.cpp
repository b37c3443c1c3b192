// SPDX-License-Identifier: MIT
#include "FeedText.h"
#include "TestSigner.h"
#include "UpdateServer.h"
#include "platform/UserDefaults.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"
#include "updates/StandardUpdater.h"
#include "updates/feed/FeedSignature.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDateTime>
#include <QFile>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {
struct Outcome {
    int exitCode = -1;
    QByteArray said;
    QByteArray complained;
};

Outcome sign(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral(RELEASE_SIGNER), arguments);
    if (!process.waitForFinished()) {
        qWarning("The tool does not end.");
    }
    return {process.exitCode(), process.readAllStandardOutput().trimmed(), process.readAllStandardError().trimmed()};
}

QByteArray inDays(int days)
{
    return QDateTime::currentDateTimeUtc().addDays(days).toString(Qt::ISODate).toLatin1();
}

QString headline()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (const auto *window = qobject_cast<UpdateWindow *>(widget)) {
            return window->accessibleDescription().section(u'\n', 0, 0);
        }
    }
    return {};
}

void press(const QString &text)
{
    for (QWidget *widget : QApplication::allWidgets()) {
        auto *button = qobject_cast<QPushButton *>(widget);
        if (button && button->text().remove(u'&') == text) {
            button->click();
            return;
        }
    }
    qWarning("There is no such button.");
}
} // namespace

/// The makers sign with their tool, and the program believes them.
class SignedReleaseTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("no_proxy", "127.0.0.1");
        QVERIFY(m_makers.isValid());
        write(m_package, QByteArray("a program").repeated(10'000));
        for (const QString &key : {m_key, m_nextKey}) {
            const Outcome made = sign({u"make-key"_s, key});
            QVERIFY2(made.exitCode == 0, made.complained.constData());
            m_publicKeys.append(made.said);
        }
        const Outcome signedFile = signFile();
        QVERIFY2(signedFile.exitCode == 0, signedFile.complained.constData());
        m_attributes = signedFile.said;
    }

    void init() { failOnWarning(); }

    void aReleaseThatTheToolHasSignedIsFoundDownloadedAndVerified()
    {
        UpdateServer server;
        const QTemporaryDir home;
        write(m_feed, feed(server.url(u"/t.deb"_s)));
        const Outcome signedFeed = sign({u"sign-feed"_s, m_key, m_feed, u"--first"_s});
        QVERIFY2(signedFeed.exitCode == 0, signedFeed.complained.constData());
        server.setAnswer(u"/feed.xml"_s, {contentOf(m_feed)});
        server.setAnswer(u"/feed.xml.signature"_s, {contentOf(m_feed + u".signature"_s)});
        server.setAnswer(u"/t.deb"_s, {contentOf(m_package)});

        const QDBusConnection bus(u"none"_s);
        UserDefaults settings(home.filePath(u"settings"_s));
        StandardUpdater updater({server.url(u"/feed.xml"_s), m_publicKeys, {u"100"_s, u"1.0"_s, u"12"_s}, home.path(),
                                    {updateServerCertificate()}},
            bus, settings);
        updater.checkForUpdates();
        QTRY_COMPARE(headline(), u"A new version of Tunedeck is available."_s);
        QCOMPARE(settings.integerForKey(SettingsKey::newestUpdateFeed), 12);
        press(u"Download"_s);
        QTRY_COMPARE(headline(), u"The new version has been downloaded."_s);
        const QString saved = home.filePath(u"tunedeck_2.0.deb"_s);
        QCOMPARE(contentOf(saved), contentOf(m_package));
        QCOMPARE(contentOf(saved + u".signature"_s), contentOf(m_package + u".signature"_s));
        QCOMPARE(verify(saved, m_publicKeys.at(0)).said, QByteArray("genuine: version 2.0, build 200"));
    }

    void aFeedMayHaveTheSignaturesOfBothKeys()
    {
        write(m_feed, feed());
        QCOMPARE(sign({u"sign-feed"_s, m_key, m_feed, u"--first"_s}).exitCode, 0);
        QCOMPARE(sign({u"sign-feed"_s, m_nextKey, m_feed, u"--first"_s, u"--add"_s, u"--key"_s,
                          QString::fromLatin1(m_publicKeys.at(0))})
                     .exitCode,
            0);
        QVERIFY(verify(m_feed, m_publicKeys.at(0)).said.startsWith("genuine: serial 12, expires "));
        QVERIFY(verify(m_feed, m_publicKeys.at(1)).said.startsWith("genuine: serial 12, expires "));
    }

    void aFeedSignedTwiceWithAKeyHasOneSignature()
    {
        write(m_feed, feed());
        QCOMPARE(sign({u"sign-feed"_s, m_key, m_feed, u"--first"_s}).exitCode, 0);
        const QByteArray signature = contentOf(m_feed + u".signature"_s);
        QCOMPARE(sign({u"sign-feed"_s, m_key, m_feed, u"--first"_s, u"--add"_s}).exitCode, 0);
        QCOMPARE(contentOf(m_feed + u".signature"_s), signature);
    }

    void aSignatureOfAnotherFeedIsNotKept()
    {
        write(m_feed, feed());
        QCOMPARE(sign({u"sign-feed"_s, m_key, m_feed, u"--first"_s}).exitCode, 0);
        const QByteArray signature = contentOf(m_feed + u".signature"_s);
        write(m_feed, feed() + '\n');
        const Outcome outcome = sign({u"sign-feed"_s, m_nextKey, m_feed, u"--first"_s, u"--add"_s, u"--key"_s,
            QString::fromLatin1(m_publicKeys.at(0))});
        QCOMPARE(outcome.exitCode, 1);
        QVERIFY2(
            outcome.complained.contains("has a signature that is not of this feed"), outcome.complained.constData());
        QCOMPARE(contentOf(m_feed + u".signature"_s), signature);
    }

    void aFeedWithAMistakeIsNotSigned_data()
    {
        QTest::addColumn<QByteArray>("feed");
        QTest::addColumn<QByteArray>("complaint");
        const QByteArray item = feedItem("200", file());
        const auto with = [](QByteArray text, const QByteArray &before, const QByteArray &after) {
            return text.replace(before, after);
        };
        const QByteArray month = inDays(30);
        QTest::newRow("malformed") << feedText(item, "12", month).chopped(20) << QByteArray("it is not a feed");
        QTest::newRow("the serial of the published feed")
            << feedText(item, "11", month) << QByteArray("its serial is 11, and must be above 11");
        QTest::newRow("a lower serial") << feedText(item, "10", month)
                                        << QByteArray("its serial is 10, and must be above 11");
        QTest::newRow("a serial far above that of the published feed")
            << feedText(item, "1012", month) << QByteArray("its serial is 1012, and must be at most 1011");
        QTest::newRow("no serial") << feedText(item, {}, month) << QByteArray("its serial is 0");
        QTest::newRow("an expiry in the past")
            << feedText(item, "12", inDays(-1)) << QByteArray("its expiry is in the past");
        QTest::newRow("an expiry too far away")
            << feedText(item, "12", inDays(400)) << QByteArray("its expiry is more than 366 days away");
        QTest::newRow("no expiry") << feedText(item, "12", {}) << QByteArray("it has no expiry");
        QTest::newRow("no version") << feedText({}, "12", month) << QByteArray("it has no version for Linux");
        QTest::newRow("another build") << feedText(feedItem("201", file()), "12", month)
                                       << QByteArray("version 2.0 (201) is not signed with this key");
        QTest::newRow("another version") << feedText(with(item, ">2.0<", ">2.1<"), "12", month)
                                         << QByteArray("version 2.1 (200) is not signed with this key");
        QTest::newRow("a version that is not plain")
            << feedText(with(item, ">2.0<", ">2 0<"), "12", month) << QByteArray("lacks a plain version");
        QTest::newRow("another length") << feedText(with(item, "length=\"90000\"", "length=\"90001\""), "12", month)
                                        << QByteArray("is not signed with this key");
        QTest::newRow("no hash") << feedText(with(item, "tunedeck:sha512", "sha512"), "12", month)
                                 << QByteArray("lacks a plain version, a length or a hash");
        QTest::newRow("plain http") << feedText(with(item, "https://", "http://"), "12", month)
                                    << QByteArray("has no https address");
    }
    void aFeedWithAMistakeIsNotSigned()
    {
        QFETCH(const QByteArray, feed);
        QFETCH(const QByteArray, complaint);
        write(m_feed, feed);
        publish(feedText({}, "11"));
        const Outcome outcome = sign({u"sign-feed"_s, m_key, m_feed, u"--after"_s, m_published});
        QCOMPARE(outcome.exitCode, 1);
        QVERIFY2(outcome.complained.contains(complaint), outcome.complained.constData());
        QVERIFY(!QFile::exists(m_feed + u".signature"_s));
    }

    void aFeedFollowsThePublishedOne()
    {
        publish(feedText({}, "11"));
        write(m_feed, feed());
        const Outcome outcome = sign({u"sign-feed"_s, m_key, m_feed, u"--after"_s, m_published});
        QVERIFY2(outcome.exitCode == 0, outcome.complained.constData());
        QCOMPARE(verify(m_feed, m_publicKeys.at(0)).exitCode, 0);
    }

    /// Its serial is that of the makers only if they have signed it.
    void aPublishedFeedThatWasChangedIsNotFollowed()
    {
        publish(feedText({}, "11"));
        write(m_published, contentOf(m_published) + '\n');
        write(m_feed, feed());
        const QStringList signing{u"sign-feed"_s, m_key, m_feed, u"--after"_s, m_published};
        QVERIFY2(sign(signing).complained.contains("published.xml is not signed with a key that --key names"),
            sign(signing).complained.constData());
        QVERIFY(QFile::remove(m_published + u".signature"_s));
        QVERIFY(sign(signing).complained.contains("published.xml.signature: "));
        QVERIFY(!QFile::exists(m_feed + u".signature"_s));
    }

    void aPublishedFeedMayBeSignedWithTheOtherKey()
    {
        publish(feedText({}, "11"));
        write(m_feed, feed());
        const QStringList signing{u"sign-feed"_s, m_nextKey, m_feed, u"--after"_s, m_published};
        QCOMPARE(sign(signing).exitCode, 1);
        const Outcome outcome = sign(signing + QStringList{u"--key"_s, QString::fromLatin1(m_publicKeys.at(0))});
        QVERIFY2(outcome.exitCode == 0, outcome.complained.constData());
    }

    void thePublishedFeedMustBeNamed()
    {
        write(m_feed, feed());
        publish("no feed");
        QVERIFY(sign({u"sign-feed"_s, m_key, m_feed}).complained.contains("--after, or say --first"));
        QVERIFY(sign({u"sign-feed"_s, m_key, m_feed, u"--first"_s, u"--after"_s, m_published})
                .complained.contains("--after, or say --first"));
        QVERIFY(sign({u"sign-feed"_s, m_key, m_feed, u"--after"_s, m_published})
                .complained.contains("is not a feed with a serial"));
        QVERIFY(!QFile::exists(m_feed + u".signature"_s));
    }

    void aKeyThatOthersCanReadSignsNothing()
    {
        write(m_feed, feed());
        const auto owner = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
        QCOMPARE(QFile::permissions(m_key) & ~(QFileDevice::ReadUser | QFileDevice::WriteUser), owner);
        QVERIFY(QFile::setPermissions(m_key, owner | QFileDevice::ReadGroup));
        const Outcome outcome = sign({u"sign-feed"_s, m_key, m_feed, u"--first"_s});
        QVERIFY(QFile::setPermissions(m_key, owner));
        QCOMPARE(outcome.exitCode, 1);
        QVERIFY2(outcome.complained.contains("others have access"), outcome.complained.constData());
        QVERIFY(!QFile::exists(m_feed + u".signature"_s));
    }

    void whatIsNoKeySignsNothing()
    {
        const QString noKey = m_makers.filePath(u"no.key"_s);
        for (const QByteArray &text : {QByteArray(), QByteArray("key"), contentOf(m_key).chopped(2),
                 QByteArray(contentOf(m_key) + "x"), contentOf(m_key).replace("key 1", "key 2")}) {
            write(noKey, text);
            QVERIFY(QFile::setPermissions(noKey, QFileDevice::ReadOwner | QFileDevice::WriteOwner));
            QVERIFY(sign({u"sign-file"_s, noKey, m_package, u"--build"_s, u"1"_s, u"--version"_s, u"1"_s})
                    .complained.contains("is not a key"));
        }
    }

    void aKeyIsNeverReplaced()
    {
        const QByteArray before = contentOf(m_key);
        QCOMPARE(sign({u"make-key"_s, m_key}).exitCode, 1);
        QCOMPARE(contentOf(m_key), before);
    }

    void whatIsNotTheSignedFileIsNotGenuine()
    {
        QCOMPARE(verify(m_package, m_publicKeys.at(0)).exitCode, 0);
        QVERIFY(verify(m_package, m_publicKeys.at(1)).complained.contains("is not signed with this key"));
        const QByteArray content = contentOf(m_package);
        write(m_package, content + 'x');
        const Outcome outcome = verify(m_package, m_publicKeys.at(0));
        write(m_package, content);
        QCOMPARE(outcome.exitCode, 1);
        QVERIFY2(outcome.complained.contains("is not the file that was signed"), outcome.complained.constData());
    }

    void aFeedThatWasChangedIsNotGenuine()
    {
        write(m_feed, feed());
        QCOMPARE(sign({u"sign-feed"_s, m_key, m_feed, u"--first"_s}).exitCode, 0);
        QCOMPARE(verify(m_feed, m_publicKeys.at(0)).exitCode, 0);
        QCOMPARE(verify(m_feed, m_publicKeys.at(1)).exitCode, 1);
        write(m_feed, feed() + '\n');
        QCOMPARE(verify(m_feed, m_publicKeys.at(0)).exitCode, 1);
    }

    void anUnknownCommandIsExplained()
    {
        const Outcome outcome = sign({u"sign"_s});
        QCOMPARE(outcome.exitCode, 2);
        QVERIFY(outcome.complained.contains("sign-feed KEYFILE FEED"));
    }

    void cleanup()
    {
        QFile::remove(m_feed + u".signature"_s);
        QFile::remove(m_published + u".signature"_s);
    }

private:
    static void write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
    }

    static QByteArray contentOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    static Outcome verify(const QString &path, const QByteArray &key)
    {
        return sign({u"verify"_s, path, u"--key"_s, QString::fromLatin1(key)});
    }

    /// The tool itself signs no feed that is empty or older.
    void publish(const QByteArray &feed) const
    {
        write(m_published, feed);
        QByteArray seed = QByteArray::fromBase64(contentOf(m_key).split('\n').value(1));
        QCOMPARE(seed.size(), qsizetype(crypto_sign_SEEDBYTES));
        write(m_published + u".signature"_s, TestSigner(seed).sign(feedTextToSign(feed)));
    }

    [[nodiscard]] Outcome signFile() const
    {
        return sign({u"sign-file"_s, m_key, m_package, u"--build"_s, u"200"_s, u"--version"_s, u"2.0"_s});
    }

    /// The elements of version 2.0 and its file.
    [[nodiscard]] QByteArray file(const QUrl &url = QUrl(u"https://tunedeck.example/t.deb"_s)) const
    {
        return "<sparkle:shortVersionString>2.0</sparkle:shortVersionString><enclosure url=\"" + url.toEncoded() + "\" "
            + m_attributes + "/>";
    }

    [[nodiscard]] QByteArray feed(const QUrl &url = QUrl(u"https://tunedeck.example/t.deb"_s)) const
    {
        return feedText(feedItem("200", file(url)), "12", inDays(30));
    }

    QTemporaryDir m_makers;
    const QString m_key = m_makers.filePath(u"release.key"_s);
    const QString m_nextKey = m_makers.filePath(u"next.key"_s);
    const QString m_package = m_makers.filePath(u"tunedeck_2.0_amd64.deb"_s);
    const QString m_feed = m_makers.filePath(u"feed.xml"_s);
    const QString m_published = m_makers.filePath(u"published.xml"_s);
    QByteArrayList m_publicKeys;
    /// The attributes that the tool says for the feed.
    QByteArray m_attributes;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::SignedReleaseTest, QApplication)
#include "SignedReleaseTest.moc"

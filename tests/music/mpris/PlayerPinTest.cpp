// SPDX-License-Identifier: MIT
#include "music/mpris/choice/PlayerPin.h"
#include "support/registerTest.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

class PlayerPinTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aFamilyIsNamedWithoutWhatIsNewAtEveryStart_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("family");
        QTest::newRow("plain") << u"strawberry"_s << u"strawberry"_s;
        QTest::newRow("with points in it") << u"org.example.player"_s << u"org.example.player"_s;
        QTest::newRow("instance") << u"chromium.instance77"_s << u"chromium"_s;
        QTest::newRow("instance of two numbers") << u"firefox.instance_1_42"_s << u"firefox"_s;
        QTest::newRow("nothing but an instance") << u".instance"_s << u".instance"_s;
        QTest::newRow("KDE Connect") << u"kdeconnect.mpris_3f0b9a44c1de4c2f8f2f0d6a9be1c7aa"_s << u"kdeconnect"_s;
        QTest::newRow("KDE Connect, counting") << u"kdeconnect.mpris_000001"_s << u"kdeconnect"_s;
        QTest::newRow("GSConnect") << u"GSConnect.Pixel.Podcast"_s << u"GSConnect"_s;
        QTest::newRow("a UUID") << u"bridge.3f0b9a44-c1de-4c2f-8f2f-0d6a9be1c7aa"_s << u"bridge"_s;
        QTest::newRow("a UUID after a letter") << u"bridge.x3f0b9a44c1de"_s << u"bridge"_s;
        QTest::newRow("a process") << u"bridge_12345"_s << u"bridge"_s;
        QTest::newRow("a device with a short number") << u"Pixel_6"_s << u"Pixel_6"_s;
        QTest::newRow("a word of hexadecimal digits") << u"the.facade"_s << u"the.facade"_s;
        QTest::newRow("a number alone") << u"12345"_s << u"12345"_s;
        QTest::newRow("empty") << QString() << QString();
    }
    void aFamilyIsNamedWithoutWhatIsNewAtEveryStart()
    {
        QFETCH(const QString, name);
        QTEST(playerFamily(name), "family");
    }

    void aPlayerIsPinnedByItsFamily()
    {
        QCOMPARE(ids({{u"strawberry"_s, u"Strawberry"_s}, {u"chromium.instance77"_s, u"Chromium"_s}}),
            (QStringList{u"strawberry"_s, u"chromium"_s}));
    }

    void aPlayerWhoseNameIsNewAtEveryStartIsPinnedByWhatItCallsItself()
    {
        QCOMPARE(ids({{u"kdeconnect.mpris_3f0b9a44c1de"_s, u"Pixel: Podcast"_s}}),
            QStringList{u"kdeconnect//Pixel: Podcast"_s});
    }

    void twoPlayersOfOneFamilyHaveDifferentPins()
    {
        QCOMPARE(ids({{u"mpv"_s, u"mpv"_s}, {u"mpv.instance5"_s, u"mpv"_s}, {u"vlc"_s, u"VLC"_s}}),
            (QStringList{u"mpv/mpv/mpv"_s, u"mpv/mpv.instance5/mpv"_s, u"vlc"_s}));
    }

    void aPinSurvivesANewBusName_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("identity");
        QTest::addColumn<int>("match");
        const int none = int(PlayerPin::Match::None);
        const int player = int(PlayerPin::Match::SamePlayer);
        const int name = int(PlayerPin::Match::SameName);
        const QString podcast = u"kdeconnect//Pixel: Podcast"_s;
        QTest::newRow("family") << u"chromium"_s << u"chromium.instance77"_s << u"Chromium"_s << player;
        QTest::newRow("family of a name") << u"chromium.instance77"_s << u"chromium.instance99"_s << u"X"_s << player;
        QTest::newRow("part of a family") << u"chrom"_s << u"chromium"_s << u"Chromium"_s << none;
        QTest::newRow("new name") << podcast << u"kdeconnect.mpris_0123456789ab"_s << u"Pixel: Podcast"_s << player;
        QTest::newRow("another app") << podcast << u"kdeconnect.mpris_0123456789ab"_s << u"Pixel: Music"_s << none;
        QTest::newRow("another bridge") << podcast << u"phones.1234567"_s << u"Pixel: Podcast"_s << none;
        QTest::newRow("the instance") << u"mpv/mpv.instance5/mpv"_s << u"mpv.instance5"_s << u"mpv"_s << name;
        QTest::newRow("another instance") << u"mpv/mpv.instance5/mpv"_s << u"mpv"_s << u"mpv"_s << player;
        QTest::newRow("slashes in an identity") << u"a//b/c"_s << u"a"_s << u"b/c"_s << player;
        QTest::newRow("no pin") << QString() << QString() << QString() << none;
        QTest::newRow("nonsense") << u"///"_s << QString() << QString() << none;
    }
    void aPinSurvivesANewBusName()
    {
        QFETCH(const QString, id);
        QFETCH(const QString, name);
        QFETCH(const QString, identity);
        QTEST(int(PlayerPin::fromId(id).match(name, identity)), "match");
    }

    void anIdentifierIsReadAsItWasWritten()
    {
        for (const QString &id : {u"mpv"_s, u"mpv/mpv.instance5/mpv"_s, u"kdeconnect//Pixel: A/B"_s, QString()}) {
            QCOMPARE(PlayerPin::fromId(id).id(), id);
        }
    }

private:
    static QStringList ids(const QList<NamedPlayer> &players)
    {
        QStringList ids;
        const QList<PlayerPin> pins = distinctPins(players);
        for (const PlayerPin &pin : pins) {
            ids.append(pin.id());
        }
        return ids;
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PlayerPinTest, QCoreApplication)
#include "PlayerPinTest.moc"

// SPDX-License-Identifier: MIT
#include "music/mpris/choice/phoneBridge.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

class phoneBridgeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aBridgeIsKnownByItsNames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("isOfBridge");
        QTest::newRow("KDE Connect") << u"kdeconnect.mpris_3f0b9a44c1de4c2f8f2f0d6a9be1c7aa"_s << true;
        QTest::newRow("GSConnect") << u"GSConnect.Pixel.Podcast"_s << true;
        QTest::newRow("written otherwise") << u"KDEConnect.mpris_1"_s << true;
        QTest::newRow("the word alone") << u"kdeconnect"_s << false;
        QTest::newRow("a longer word") << u"kdeconnectx.mpris_1"_s << false;
        QTest::newRow("the word later") << u"player.kdeconnect.mpris_1"_s << false;
        QTest::newRow("a player") << u"vlc"_s << false;
    }

    void aBridgeIsKnownByItsNames()
    {
        QFETCH(const QString, name);
        QTEST(isOfPhoneBridge(name), "isOfBridge");
    }

    void anotherBridgeIsKnownByTheDeviceThatItsPlayersName_data()
    {
        QTest::addColumn<QStringList>("identities");
        QTest::addColumn<bool>("nameADevice");
        const QStringList first{u"Pixel: Podcast"_s, u"Pixel: Music"_s, u"Pixel: Radio"_s, u"Pixel: Video"_s};
        const QStringList last{u"Podcast - Pixel"_s, u"Music - Pixel"_s, u"Radio - Pixel"_s, u"Video - Pixel"_s};
        QTest::newRow("the device first") << first << true;
        QTest::newRow("the device last") << last << true;
        QTest::newRow("five players") << first + QStringList{u"Pixel: Books"_s} << true;
        QTest::newRow("a mark after the device's too")
            << first + QStringList{u"Pixel: Radio: One"_s, u"Pixel: Two - Three"_s} << true;
        QTest::newRow("a mark before the device's too") << last + QStringList{u"Two - Three - Pixel"_s} << true;
        QTest::newRow("three players") << first.first(3) << false;
        QTest::newRow("no players") << QStringList() << false;
        QTest::newRow("two that are alike") << first + QStringList{u"Pixel: Radio"_s} << false;
        QTest::newRow("two devices") << first + QStringList{u"Galaxy: Radio"_s} << false;
        QTest::newRow("one without a device") << first + QStringList{u"Radio"_s} << false;
        QTest::newRow("both ways") << first.first(2) + last.first(2) << false;
        QTest::newRow("no device before the mark")
            << QStringList{u": Podcast"_s, u": Music"_s, u": Radio"_s, u": Video"_s} << false;
        QTest::newRow("no device after the mark")
            << QStringList{u"Podcast - "_s, u"Music - "_s, u"Radio - "_s, u"Video - "_s} << false;
        QTest::newRow("no mark") << QStringList{u"One"_s, u"Two"_s, u"Three"_s, u"Four"_s} << false;
        QTest::newRow("only half a mark")
            << QStringList{u"Pixel:Podcast"_s, u"Pixel:Music"_s, u"Pixel:Radio"_s, u"Pixel:Video"_s} << false;
    }

    void anotherBridgeIsKnownByTheDeviceThatItsPlayersName()
    {
        QFETCH(const QStringList, identities);
        QTEST(nameOneDevice(identities), "nameADevice");
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::phoneBridgeTest, QCoreApplication)
#include "phoneBridgeTest.moc"

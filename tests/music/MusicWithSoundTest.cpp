// SPDX-License-Identifier: MIT
#include "music/MusicWithSound.h"

#include "music/MusicConnector.h"
#include "platform/WindowActivation.h"
#include "support/ScriptedMusicApplication.h"
#include "support/ScriptedPlayerSound.h"
#include "support/registerTest.h"

#include <QGuiApplication>
#include <QLocale>
#include <QObject>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QString>
#include <QStringList>
#include <QTest>

#include <optional>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

struct Desk {
    explicit Desk(ControlAnswer own, std::optional<int> ownVolume = {})
    {
        player.setPlayer(u"Strawberry"_s, true);
        player.answers.soundVolume = ownVolume;
        player.answerControl(MusicControl::volume, own);
        player.launch();
    }

    ScriptedMusicApplication player;
    ScriptedPlayerSound sound;
    MusicWithSound music{player, sound};
};

QStringList names(const std::optional<QList<MusicAirPlayDevice>> &devices)
{
    QStringList names;
    const QList<MusicAirPlayDevice> answered = devices.value_or(QList<MusicAirPlayDevice>());
    for (const MusicAirPlayDevice &device : answered) {
        names.append(device.name.value_or(QString()));
    }
    return names;
}

} // namespace

class MusicWithSoundTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aPlayersOwnVolumeIsTheOne()
    {
        Desk desk(ControlAnswer::taken, 34);
        desk.sound.report(soundInKitchen(70));
        QVERIFY(!desk.music.isVolumeOfStreams());
        QCOMPARE(desk.music.soundVolume(), 34);
        QVERIFY(desk.music.setSoundVolume(50));
        QCOMPARE(desk.player.commands(), QStringList{u"setSoundVolume 50"_s});
        QCOMPARE(desk.sound.commands(), QStringList());
    }

    void theStreamsHaveTheVolumeOfAPlayerThatHasNone()
    {
        Desk desk(ControlAnswer::missing);
        QCOMPARE(desk.music.answerTo(MusicControl::volume), ControlAnswer::missing);
        QCOMPARE(desk.music.soundVolume(), std::nullopt);
        QSignalSpy controls(&desk.music, &MusicApplication::controlsDidChange);
        QSignalSpy settings(&desk.music, &MusicApplication::playbackSettingsDidChange);
        desk.sound.report(soundInKitchen(70));
        QCOMPARE(controls.count(), 1);
        QCOMPARE(settings.count(), 1);
        QVERIFY(desk.music.isVolumeOfStreams());
        QCOMPARE(desk.music.answerTo(MusicControl::volume), ControlAnswer::taken);
        QCOMPARE(desk.music.soundVolume(), 70);
        QVERIFY(desk.music.setSoundVolume(400));
        QCOMPARE(desk.music.soundVolume(), 100);
        QVERIFY(desk.music.setSoundVolume(-400));
        QCOMPARE(desk.sound.commands(), (QStringList{u"setVolume 100"_s, u"setVolume 0"_s}));
        QCOMPARE(desk.player.commands(), QStringList());
    }

    void theUsersOwnVolumeIsNotReportedBack()
    {
        Desk desk(ControlAnswer::missing);
        desk.sound.report(soundInKitchen(70));
        QSignalSpy settings(&desk.music, &MusicApplication::playbackSettingsDidChange);
        desk.music.setSoundVolume(57);
        desk.sound.report(soundInKitchen(57));
        QCOMPARE(settings.count(), 0);
        desk.sound.report(soundInKitchen(20));
        QCOMPARE(settings.count(), 1);
    }

    void aStreamThatFollowsThePlayersVolumeReportsNothing()
    {
        Desk desk(ControlAnswer::taken, 70);
        desk.sound.report(soundInKitchen(70));
        QSignalSpy settings(&desk.music, &MusicApplication::playbackSettingsDidChange);
        desk.player.answers.soundVolume = 57;
        desk.music.setSoundVolume(57);
        desk.sound.report(soundInKitchen(57));
        QCOMPARE(settings.count(), 0);
    }

    void aFractionOfTheConnectorsVolumeSurvivesTheServersAnswer()
    {
        Desk desk(ControlAnswer::missing);
        const WindowActivation windowActivation;
        MusicConnector connector(desk.music, windowActivation);
        desk.sound.report(soundInKitchen(70));
        QCOMPARE(connector.soundVolume(), 70.0);
        connector.setVolume(55.7);
        desk.sound.report(soundInKitchen(55));
        QCOMPARE(connector.soundVolume(), 55.7);
        QCOMPARE(desk.sound.commands(), QStringList{u"setVolume 55"_s});
        connector.adjustVolume(100);
        QCOMPARE(desk.sound.commands().constLast(), u"setVolume 100"_s);
        desk.player.quit();
        QCOMPARE(connector.soundVolume(), 0.0);
    }

    void aPlayerThatKeepsItsVolumeIsTurnedByItsStreamsUntilItQuits()
    {
        Desk desk(ControlAnswer::taken, 100);
        desk.sound.report(soundInKitchen(80));
        QVERIFY(desk.music.setSoundVolume(30));
        desk.player.answerControl(MusicControl::volume, ControlAnswer::ignored);
        // The volume that it did not take is its streams' now.
        QCOMPARE(desk.sound.commands(), QStringList{u"setVolume 30"_s});
        QCOMPARE(desk.music.soundVolume(), 30);
        desk.player.answerControl(MusicControl::volume, ControlAnswer::taken);
        QVERIFY(desk.music.isVolumeOfStreams());
        QVERIFY(desk.music.setSoundVolume(20));
        QCOMPARE(desk.player.commands(), QStringList{u"setSoundVolume 30"_s});

        desk.player.answerControl(MusicControl::volume, ControlAnswer::ignored);
        desk.sound.report({});
        QCOMPARE(desk.music.answerTo(MusicControl::volume), ControlAnswer::ignored);
        QVERIFY(!desk.music.setSoundVolume(10));
        QCOMPARE(desk.player.commands(), QStringList{u"setSoundVolume 30"_s});

        desk.player.quit();
        desk.player.answerControl(MusicControl::volume, ControlAnswer::taken);
        desk.player.launch();
        desk.sound.report(soundInKitchen(80));
        QVERIFY(!desk.music.isVolumeOfStreams());
        QCOMPARE(desk.music.soundVolume(), 100);
    }

    void aPlayerThatTakesItsVolumeAgainIsBelieved()
    {
        Desk desk(ControlAnswer::ignored, 30);
        QVERIFY(!desk.music.setSoundVolume(10));
        desk.player.answerControl(MusicControl::volume, ControlAnswer::taken);
        QCOMPARE(desk.music.answerTo(MusicControl::volume), ControlAnswer::taken);
        QVERIFY(desk.music.setSoundVolume(10));
        QCOMPARE(desk.player.commands(), QStringList{u"setSoundVolume 10"_s});
    }

    void aPlayerThatLosesItsVolumeForAWhileKeepsIt()
    {
        Desk desk(ControlAnswer::taken, 40);
        desk.sound.report(soundInKitchen(80));
        desk.player.answers.soundVolume.reset();
        desk.player.answerControl(MusicControl::volume, ControlAnswer::missing);
        QVERIFY(!desk.music.isVolumeOfStreams());
        QCOMPARE(desk.music.answerTo(MusicControl::volume), ControlAnswer::missing);
    }

    void aSilentPlayerIsSentNothing()
    {
        Desk desk(ControlAnswer::missing);
        desk.sound.report(soundInKitchen(80));
        desk.player.setResponding(false);
        QVERIFY(!desk.music.setSoundVolume(10));
        QCOMPARE(desk.sound.commands(), QStringList());
    }

    void turningUpUnmutesOnce_data()
    {
        QTest::addColumn<ControlAnswer>("own");
        QTest::newRow("own volume") << ControlAnswer::taken;
        QTest::newRow("volume of the streams") << ControlAnswer::missing;
    }
    void turningUpUnmutesOnce()
    {
        QFETCH(const ControlAnswer, own);
        Desk desk(own, 50);
        PlayerSoundState muted = soundInKitchen(50);
        muted.isMuted = true;
        desk.sound.report(muted);
        desk.music.setSoundVolume(49);
        QVERIFY(!desk.sound.commands().contains(u"setMuted false"_s));
        desk.player.answers.soundVolume = 49;
        desk.music.setSoundVolume(55);
        QCOMPARE(desk.sound.commands().count(u"setMuted false"_s), 1);
    }

    void fullVolumeUnmutesAPlayerThatHasIt()
    {
        Desk desk(ControlAnswer::missing);
        PlayerSoundState muted = soundInKitchen(100);
        muted.isMuted = true;
        desk.sound.report(muted);
        desk.music.setSoundVolume(100);
        QCOMPARE(desk.sound.commands(), (QStringList{u"setMuted false"_s, u"setVolume 100"_s}));
    }

    void theOutputsAreThoseOfTheStreamsWithTheirKinds()
    {
        Desk desk(ControlAnswer::taken, 50);
        QCOMPARE(desk.music.currentAirPlayDevices().has_value(), false);
        PlayerSoundState state = soundInKitchen(70);
        state.currentOutputs = {u"bluez_output.1"_s, u"alsa_output.pci"_s, u"gone"_s};
        desk.sound.report(state);
        const auto devices = desk.music.currentAirPlayDevices();
        QCOMPARE(names(devices), (QStringList{u"Built-in Audio"_s, u"Kitchen"_s}));
        QCOMPARE(devices->at(0).kind, AirPlayDeviceKind::computer);
        QCOMPARE(devices->at(1).kind, AirPlayDeviceKind::bluetooth);
        desk.sound.report({});
        QCOMPARE(desk.music.currentAirPlayDevices().has_value(), false);
    }

    void theConnectorNamesTheOutputsWithoutTheComputersOwn()
    {
        const QLocale before;
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
        const auto restore = qScopeGuard([before] { QLocale::setDefault(before); });
        Desk desk(ControlAnswer::taken, 50);
        const WindowActivation windowActivation;
        const MusicConnector connector(desk.music, windowActivation);
        PlayerSoundState state = soundInKitchen(70);
        desk.sound.report(state);
        QTRY_COMPARE(connector.audioOutputNames(), u"Kitchen"_s);
        state.outputs.prepend({.id = u"usb"_s, .name = u"Headphones"_s, .kind = SoundOutput::Kind::Usb});
        state.currentOutputs.append({u"usb"_s, u"alsa_output.pci"_s});
        desk.sound.report(state);
        QTRY_COMPARE(connector.audioOutputNames(), u"Headphones and Kitchen"_s);
        state.currentOutputs = {u"alsa_output.pci"_s};
        desk.sound.report(state);
        QTRY_COMPARE(connector.audioOutputNames(), std::nullopt);
    }

    void aVolumeIsNoChangeOfTheOutputs()
    {
        Desk desk(ControlAnswer::taken, 50);
        QSignalSpy changed(&desk.music, &MusicApplication::soundDidChange);
        desk.sound.report(soundInKitchen(70));
        QCOMPARE(changed.count(), 1);
        desk.sound.report(soundInKitchen(60));
        QCOMPARE(changed.count(), 1);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::MusicWithSoundTest, QGuiApplication)

#include "MusicWithSoundTest.moc"

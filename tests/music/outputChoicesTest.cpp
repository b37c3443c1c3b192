// SPDX-License-Identifier: MIT
#include "music/outputChoices.h"

#include "music/MusicWithSound.h"
#include "support/ScriptedMusicApplication.h"
#include "support/ScriptedPlayerSound.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QObject>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {
struct Desk {
    Desk()
    {
        player.setPlayer(u"Strawberry"_s, true);
        player.answers.soundVolume = 50;
    }

    ScriptedMusicApplication player;
    ScriptedPlayerSound sound;
    MusicWithSound music{player, sound};
};

QStringList texts(const OutputChoices &choices)
{
    QStringList texts;
    for (const OutputChoice &choice : choices.choices) {
        texts.append((choice.isCurrent ? u"*"_s : QString()) + choice.text);
    }
    return texts;
}
} // namespace

class outputChoicesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void defaultIsFirstAndTheOutputsFollowByName()
    {
        Desk desk;
        PlayerSoundState state = soundInKitchen(50);
        state.outputs.append({.id = u"usb"_s, .name = u"Attic"_s, .kind = SoundOutput::Kind::Usb});
        desk.sound.report(state);
        const OutputChoices choices = outputChoices(desk.music);
        QCOMPARE(choices.obstacle, QString());
        QCOMPARE(texts(choices), (QStringList{u"Default"_s, u"Attic"_s, u"Built-in Audio"_s, u"*Kitchen"_s}));
        QCOMPARE(choices.choices.at(0).id, QString());
        QCOMPARE(choices.choices.at(3).id, u"bluez_output.1"_s);
    }

    void aStreamThatMustNotBeMovedSaysSoAboveTheOutputs()
    {
        Desk desk;
        PlayerSoundState state = soundInKitchen(50);
        state.canMove = false;
        desk.sound.report(state);
        QCOMPARE(outputChoices(desk.music).obstacle, u"Strawberry chooses its output itself"_s);
        QCOMPARE(texts(outputChoices(desk.music)), (QStringList{u"Default"_s, u"Built-in Audio"_s, u"*Kitchen"_s}));
    }

    void aNameCannotRearrangeTheMenu()
    {
        Desk desk;
        PlayerSoundState state = soundInKitchen(50);
        state.outputs = {{.id = u"a"_s, .name = u"Kit\u202echen\n\x07room"_s}, {.id = u"Attic"_s, .name = u"\u202e"_s},
            {.id = u"c"_s, .name = QString(1'000'000, u'x')}};
        desk.sound.report(state);
        const QStringList shown = texts(outputChoices(desk.music));
        QCOMPARE(shown.size(), 4);
        QCOMPARE(shown.at(1), u"Attic"_s);
        QCOMPARE(shown.at(2), u"Kitchen room"_s);
        QCOMPARE(shown.at(3).size(), 60);
    }

    void withoutOutputsTheReasonIsThere_data()
    {
        QTest::addColumn<SoundObstacle>("obstacle");
        QTest::addColumn<QString>("text");
        QTest::newRow("no player") << SoundObstacle::NoPlayer << u"Strawberry plays no sound yet"_s;
        QTest::newRow("elsewhere") << SoundObstacle::PlayerElsewhere << u"Strawberry plays on another device"_s;
        QTest::newRow("no server") << SoundObstacle::NoServer << u"There is no sound server"_s;
        QTest::newRow("silence") << SoundObstacle::NotResponding << u"The sound server is not responding"_s;
        QTest::newRow("not asked") << SoundObstacle::NotAsked << u"Strawberry plays no sound yet"_s;
        QTest::newRow("no stream") << SoundObstacle::NoStream << u"Strawberry plays no sound yet"_s;
        QTest::newRow("ambiguous") << SoundObstacle::Ambiguous
                                   << u"The sound of Strawberry cannot be told from that of others"_s;
    }
    void withoutOutputsTheReasonIsThere()
    {
        QFETCH(const SoundObstacle, obstacle);
        QFETCH(const QString, text);
        Desk desk;
        PlayerSoundState state;
        state.obstacle = obstacle;
        desk.sound.report(state);
        QCOMPARE(outputChoices(desk.music, false), (OutputChoices{.obstacle = text, .choices = {}}));
        const QString inSandbox =
            obstacle == SoundObstacle::NoServer ? u"The sandbox keeps the sound server from Tunedeck"_s : text;
        QCOMPARE(outputChoices(desk.music, true).obstacle, inSandbox);
    }

    void withoutAPlayerMusicIsNotOpen()
    {
        Desk desk;
        desk.player.quit();
        QCOMPARE(outputChoices(desk.music).obstacle, u"Music is not open"_s);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::outputChoicesTest, QCoreApplication)

#include "outputChoicesTest.moc"

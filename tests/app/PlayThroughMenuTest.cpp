// SPDX-License-Identifier: MIT
#include "app/sound/PlayThroughMenu.h"

#include "music/MusicWithSound.h"
#include "support/ScriptedMusicApplication.h"
#include "support/ScriptedPlayerSound.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QStringList>
#include <QTest>

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {
struct Desk {
    Desk()
    {
        player.setPlayer(u"Salt & Pepper"_s, true);
        player.answers.soundVolume = 50;
    }

    [[nodiscard]] QStringList items() const
    {
        QStringList items;
        const QList<QAction *> actions = menu.actions();
        for (const QAction *action : actions) {
            items.append((action->isEnabled() ? QString() : u"-"_s) + (action->isChecked() ? u"*"_s : QString())
                + action->text());
        }
        return items;
    }

    ScriptedMusicApplication player;
    ScriptedPlayerSound sound;
    MusicWithSound music{player, sound};
    QMenu menu;
    PlayThroughMenu playThrough{menu, music};
};
} // namespace

class PlayThroughMenuTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void aClosedMenuFollowsTheOutputs()
    {
        Desk desk;
        QCOMPARE(desk.items(), QStringList{u"-Salt && Pepper plays no sound yet"_s});
        desk.sound.report(soundInKitchen(50));
        QCOMPARE(desk.items(), (QStringList{u"Default"_s, u"Built-in Audio"_s, u"*Kitchen"_s}));
    }

    void aChosenOutputIsMovedTo()
    {
        Desk desk;
        desk.sound.report(soundInKitchen(50));
        desk.menu.actions().at(1)->trigger();
        desk.menu.actions().at(0)->trigger();
        QCOMPARE(desk.sound.commands(), (QStringList{u"moveTo alsa_output.pci"_s, u"moveTo "_s}));
        // The server has not moved it yet.
        Q_EMIT desk.menu.aboutToShow();
        QCOMPARE(desk.items(), (QStringList{u"Default"_s, u"Built-in Audio"_s, u"*Kitchen"_s}));
    }

    void anOpenMenuStays()
    {
        Desk desk;
        desk.sound.report(soundInKitchen(50));
        desk.menu.popup({});
        QVERIFY(desk.menu.isVisible());
        desk.sound.report({});
        QCOMPARE(desk.items(), (QStringList{u"Default"_s, u"Built-in Audio"_s, u"*Kitchen"_s}));
        desk.menu.close();
        Q_EMIT desk.menu.aboutToShow();
        QCOMPARE(desk.items().size(), 1);
    }

    void outputsOfAPlayerThatCannotMoveAreDisabled()
    {
        Desk desk;
        PlayerSoundState state = soundInKitchen(50);
        state.canMove = false;
        desk.sound.report(state);
        QCOMPARE(desk.items(),
            (QStringList{
                u"-Salt && Pepper chooses its output itself"_s, u"-Default"_s, u"-Built-in Audio"_s, u"-*Kitchen"_s}));
    }
};

TUNEDECK_TEST(PlayThroughMenuTest, QApplication)

#include "PlayThroughMenuTest.moc"

// SPDX-License-Identifier: MIT
#include "music/mpris/TakenControls.h"
#include "support/registerTest.h"

#include <QTest>

namespace tunedeck {

namespace {

constexpr MusicControl volume = MusicControl::volume;
constexpr ControlAnswer taken = ControlAnswer::taken;
constexpr ControlAnswer missing = ControlAnswer::missing;
constexpr ControlAnswer ignored = ControlAnswer::ignored;

/// A player that is told things at certain times, in milliseconds.
class Told {
public:
    Told &shows(std::optional<double> value)
    {
        PlayerReport report;
        report.volume = value;
        m_controls.read(report, m_now);
        return *this;
    }
    Told &isAsked(double value)
    {
        m_controls.askedForVolume(value);
        return *this;
    }
    Told &answers()
    {
        m_controls.answered(volume, m_now);
        return *this;
    }
    Told &after(int milliseconds)
    {
        m_now += Milliseconds(milliseconds);
        return *this;
    }
    /// Is told `value`, answers, and shows `result` when it was to have taken effect.
    Told &isSet(double value, double result) { return isAsked(value).answers().after(300).shows(result); }
    Told &isDisturbed()
    {
        m_controls.forgetAsked(volume);
        return *this;
    }

    [[nodiscard]] const TakenControls &controls() const { return m_controls; }

private:
    TakenControls m_controls;
    Instant m_now{std::chrono::hours(1)};
};

} // namespace

class TakenControlsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatWasShownDecides_data()
    {
        QTest::addColumn<Told>("player");
        QTest::addColumn<ControlAnswer>("answer");
        QTest::newRow("nothing yet") << Told() << missing;
        QTest::newRow("a value") << Told().shows(0.5) << taken;
        QTest::newRow("a value that is gone") << Told().shows(0.5).shows(std::nullopt) << missing;
        QTest::newRow("a value that comes back") << Told().shows(0.5).shows(std::nullopt).shows(0.5) << taken;
        QTest::newRow("Chromium, once") << Told().shows(1).isSet(0.5, 1) << taken;
        QTest::newRow("Chromium, twice") << Told().shows(1).isSet(0.5, 1).isSet(0.3, 1) << ignored;
        QTest::newRow("Chromium, whose value is read often")
            << Told().shows(1).isSet(0.5, 1).shows(1).shows(1).shows(1) << taken;
        QTest::newRow("a value that is taken in between")
            << Told().shows(1).isSet(0.5, 1).isSet(0.3, 0.3).isSet(0.5, 0.3) << taken;
        QTest::newRow("VLC, which loses one set in two")
            << Told().shows(1).isSet(0.5, 1).isSet(0.5, 0.5).isSet(0.3, 0.5).isSet(0.3, 0.3) << taken;
        QTest::newRow("Dragon, which rounds") << Told().shows(1).isSet(0.5, 0.495).isSet(0.3, 0.297) << taken;
        QTest::newRow("cmus, which cuts off small steps")
            << Told().shows(0.5).isSet(0.504, 0.5).isSet(0.508, 0.5).isSet(0.504, 0.5) << taken;
        QTest::newRow("what is there already")
            << Told().shows(0.5).isSet(0.5, 0.5).isSet(0.5, 0.5).isSet(0.5, 0.5) << taken;
        QTest::newRow("mpDris2, which is late") << Told().shows(1).isSet(0, 1).isSet(0, 1).shows(0) << taken;
        QTest::newRow("a user of the player who changes it")
            << Told().shows(1).isSet(0, 1).isSet(0, 1).after(60'000).shows(0.4) << taken;
        QTest::newRow("ignored again") << Told().shows(1).isSet(0, 1).isSet(0, 1).shows(0.4).isSet(0, 0.4).isSet(0, 0.4)
                                       << ignored;
        QTest::newRow("Elisa, whose old value is read right after the answer")
            << Told().shows(1).isAsked(0).answers().after(160).shows(1).isAsked(0).answers().after(160).shows(1)
            << taken;
        QTest::newRow("a read before the answer")
            << Told().shows(1).isAsked(0).after(900).shows(1).isAsked(0).after(900).shows(1) << taken;
        QTest::newRow("a drag, whose last value counts")
            << Told().shows(1).isAsked(0.9).answers().isAsked(0.8).answers().isAsked(0.7).answers().after(300).shows(1)
            << taken;
        QTest::newRow("VLC, whose track changes after each set") << Told()
                                                                        .shows(1)
                                                                        .isAsked(0)
                                                                        .answers()
                                                                        .isDisturbed()
                                                                        .after(300)
                                                                        .shows(1)
                                                                        .isAsked(0)
                                                                        .answers()
                                                                        .isDisturbed()
                                                                        .after(300)
                                                                        .shows(1)
                                                                 << taken;
    }
    void whatWasShownDecides()
    {
        QFETCH(Told, player);
        QTEST(player.controls().answer(volume), "answer");
    }

    void dragonsModesAreIgnored()
    {
        TakenControls controls;
        PlayerReport dragon;
        dragon.shuffle = false;
        dragon.loopStatus = LoopStatus::None;
        Instant now(std::chrono::hours(1));
        controls.read(dragon, now);
        for (int attempt = 0; attempt < 2; ++attempt) {
            QCOMPARE(controls.answer(MusicControl::shuffle), taken);
            QCOMPARE(controls.answer(MusicControl::repeat), taken);
            controls.askedForShuffle(true);
            controls.askedForLoopStatus(LoopStatus::Playlist);
            controls.answered(MusicControl::shuffle, now);
            controls.answered(MusicControl::repeat, now);
            now += Milliseconds(200);
            controls.read(dragon, now);
        }
        QCOMPARE(controls.answer(MusicControl::shuffle), ignored);
        QCOMPARE(controls.answer(MusicControl::repeat), ignored);
    }

    void rhythmboxIgnoresOneModeAlone()
    {
        TakenControls controls;
        PlayerReport rhythmbox;
        rhythmbox.loopStatus = LoopStatus::None;
        Instant now(std::chrono::hours(1));
        controls.read(rhythmbox, now);
        for (int attempt = 0; attempt < 5; ++attempt) {
            controls.askedForLoopStatus(LoopStatus::Track);
            controls.answered(MusicControl::repeat, now);
            now += Milliseconds(200);
            controls.read(rhythmbox, now);
        }
        QCOMPARE(controls.answer(MusicControl::repeat), taken);
    }

    void anAnnouncementOfOtherPropertiesShowsNothing()
    {
        TakenControls controls;
        PlayerReport chromium;
        chromium.volume = 1;
        Instant now(std::chrono::hours(1));
        controls.read(chromium, now);
        for (int attempt = 0; attempt < 3; ++attempt) {
            controls.askedForVolume(0.5);
            controls.answered(MusicControl::volume, now);
            now += Milliseconds(200);
            controls.announced(PlayerReport(), now);
        }
        QCOMPARE(controls.answer(MusicControl::volume), taken);
    }

    void eachControlIsJudgedByItself()
    {
        const Told player = Told().shows(1).isSet(0, 1).isSet(0, 1);
        QCOMPARE(player.controls().answer(MusicControl::volume), ignored);
        QCOMPARE(player.controls().answer(MusicControl::shuffle), missing);
        QCOMPARE(player.controls().answer(MusicControl::repeat), missing);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::TakenControlsTest, QCoreApplication)
#include "TakenControlsTest.moc"

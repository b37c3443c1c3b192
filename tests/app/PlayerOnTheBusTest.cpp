// SPDX-License-Identifier: MIT
#include "app/Application.h"
#include "music/mpris/DemoPlayerProcess.h"
#include "music/mpris/MprisMusicApplication.h"
#include "platform/Appearance.h"
#include "platform/ApplicationLauncher.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"
#include "player/LcdView.h"
#include "player/PlayerView.h"
#include "player/ScrollingMarqueeView.h"
#include "skin/views/ClassicAudioProgressSlider.h"
#include "skin/views/VolumeSlider.h"
#include "support/Desktop.h"
#include "support/PrivateBus.h"
#include "support/endWithParent.h"
#include "support/registerTest.h"
#include "window/WindowController.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

/// Milliseconds from one position of the mouse to the next.
constexpr int mouseStep = 20;
constexpr int answerDelay = 300;

double secondsSinceEpoch()
{
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

/// The whole program, following a demo player over a bus of its own.
struct Program {
    explicit Program(const QStringList &playerArguments)
        : player(bus, bus.connect(u"player's control"_s), playerArguments)
        , music(bus.connect(u"the program"_s), defaults, launcher)
        , application({music, defaults, appearance, windowActivation, players, updater})
    {
        application.showMainWindow();
    }
    ~Program()
    {
        QDBusConnection::disconnectFromBus(u"player's control"_s);
        QDBusConnection::disconnectFromBus(u"the program"_s);
    }
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    [[nodiscard]] PlayerView &view() { return *application.windowController().window().findChild<PlayerView *>(); }

    PrivateBus bus;
    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(u"settings"_s)};
    Appearance appearance{defaults, QDBusConnection(u"none"_s)};
    WindowActivation windowActivation;
    NoPlayers players;
    CountingUpdater updater;
    ApplicationLauncher launcher;
    DemoPlayerProcess player;
    MprisMusicApplication music;
    Application application;
};

/// A mouse that holds a slider's knob.
class Hand {
public:
    explicit Hand(PercentSlider &slider)
        : m_slider(slider)
    {
        QTest::mousePress(&m_slider, Qt::LeftButton, {}, positionAt(m_slider.doubleValue()));
    }
    ~Hand() { QTest::mouseRelease(&m_slider, Qt::LeftButton, {}, m_position); }
    Hand(const Hand &) = delete;
    Hand &operator=(const Hand &) = delete;

    /// Returns the position of the knob after the move.
    double moveTo(double percent)
    {
        m_position = positionAt(percent);
        QMouseEvent move(QEvent::MouseMove, m_position, m_slider.mapToGlobal(m_position), Qt::NoButton, Qt::LeftButton,
            Qt::NoModifier);
        QCoreApplication::sendEvent(&m_slider, &move);
        return m_slider.doubleValue();
    }

private:
    [[nodiscard]] QPoint positionAt(double percent) const
    {
        return {static_cast<int>(std::lround(m_slider.width() * percent / 100)), m_slider.height() / 2};
    }

    PercentSlider &m_slider;
    QPoint m_position;
};

/// When the player announced new properties, as seen by a monitor of the bus.
class Announcements {
public:
    explicit Announcements(const PrivateBus &bus)
    {
        endWithParent(m_monitor);
        m_monitor.start(u"dbus-monitor"_s,
            {u"--address"_s, bus.address(), u"--profile"_s,
                u"type='signal',member='PropertiesChanged',path='/org/mpris/MediaPlayer2'"_s});
        m_monitor.waitForStarted();
    }
    ~Announcements()
    {
        m_monitor.kill();
        m_monitor.waitForFinished();
    }
    Announcements(const Announcements &) = delete;
    Announcements &operator=(const Announcements &) = delete;

    /// The time of the first announcement that was not taken yet, in seconds since the epoch. Not a number if there is
    /// none.
    [[nodiscard]] double takeFirst()
    {
        double first = std::nan("");
        while (m_monitor.canReadLine()) {
            const QList<QByteArray> fields = m_monitor.readLine().split('\t');
            if (std::isnan(first) && fields.size() > 2 && fields[0] == "sig") {
                first = fields[1].toDouble();
            }
        }
        return first;
    }

private:
    QProcess m_monitor;
};

/// Records when a marquee is first painted with other strings than it has now.
class FirstPaint : public QObject {
public:
    explicit FirstPaint(ScrollingMarqueeView &label)
        : m_label(label)
        , m_before(label.displayStrings())
    {
        label.installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (!time && event->type() == QEvent::Paint && m_label.displayStrings() != m_before) {
            time = secondsSinceEpoch();
        }
        return QObject::eventFilter(watched, event);
    }

    std::optional<double> time;

private:
    ScrollingMarqueeView &m_label;
    const QStringList m_before;
};

} // namespace

/// Tests the way from a player, which is a process of its own, to the window and back.
class PlayerOnTheBusTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void theKnobStaysUnderTheHandThatScrubsALatePlayer()
    {
        // A track of 70 minutes.
        Program program({u"--play"_s, u"--track"_s, u"4"_s});
        PercentSlider &slider = program.view().lcd().trackProgressSlider();
        QTRY_VERIFY(slider.isEnabled());
        QVERIFY(program.player.tell(u"late %1"_s.arg(answerDelay)));
        program.player.takeCalls();

        QElapsedTimer sinceStart;
        sinceStart.start();
        double wanted = 0;
        {
            Hand hand(slider);
            for (int percent = 2; percent <= 80; percent += 2) {
                const double before = std::exchange(wanted, hand.moveTo(percent));
                QVERIFY(wanted > before);
                QTest::qWait(mouseStep);
                QCOMPARE(slider.doubleValue(), wanted);
            }
        }
        const qint64 dragged = sinceStart.elapsed();
        // This is after the release, the last answer, and the position that the player reports.
        for (int i = 0; i < 60; ++i) {
            QTest::qWait(mouseStep);
            QVERIFY2(slider.doubleValue() >= wanted - 0.01 && slider.doubleValue() < wanted + 1,
                qPrintable(QString::number(slider.doubleValue())));
        }

        const QStringList commands = program.player.takeCommands();
        qInfo("%lld commands for 40 positions in %lld ms", static_cast<long long>(commands.size()), dragged);
        QVERIFY(commands.size() >= 2);
        QVERIFY(commands.size() <= dragged / answerDelay + 2);
        const double sent = commands.last().section(u' ', -1).toDouble() / 1e6;
        QCOMPARE(sent, wanted / 100 * program.application.musicConnector().duration());
    }

    void theKnobStaysUnderTheHandThatTurnsALatePlayerUp()
    {
        Program program({u"--play"_s, u"--do"_s, u"volume 0.1"_s});
        VolumeSlider &slider = program.view().volumeSlider();
        QTRY_COMPARE(slider.doubleValue(), 10.0);
        QVERIFY(program.player.tell(u"late %1"_s.arg(answerDelay)));
        program.player.takeCalls();

        QElapsedTimer sinceStart;
        sinceStart.start();
        double wanted = 0;
        {
            Hand hand(slider);
            for (int percent = 12; percent <= 80; percent += 2) {
                const double before = std::exchange(wanted, hand.moveTo(percent));
                QVERIFY(wanted >= before);
                QTest::qWait(mouseStep);
                QVERIFY(std::abs(slider.doubleValue() - wanted) < 1);
            }
        }
        const qint64 dragged = sinceStart.elapsed();
        for (int i = 0; i < 60; ++i) {
            QTest::qWait(mouseStep);
            QVERIFY2(std::abs(slider.doubleValue() - wanted) < 1, qPrintable(QString::number(slider.doubleValue())));
        }

        const QStringList commands = program.player.takeCommands();
        qInfo("%lld commands for 35 volumes in %lld ms", static_cast<long long>(commands.size()), dragged);
        QVERIFY(commands.size() >= 2);
        QVERIFY(commands.size() <= dragged / answerDelay + 2);
        const double sent = commands.last().section(u' ', -1).toDouble() * 100;
        QVERIFY(std::abs(sent - std::floor(wanted)) < 0.5);
    }

    void aNewTrackShowsWithinAFrameOfThePlayersSignal()
    {
        Program program({u"--play"_s});
        ScrollingMarqueeView &label = program.view().lcd().trackInfoLabel();
        QTRY_VERIFY(program.application.musicConnector().currentTrack().has_value());
        Announcements announcements(program.bus);
        QTest::qWait(300);
        (void)announcements.takeFirst();

        std::vector<double> delays;
        // A track with fewer properties could be the first half of an announcement, and is believed a moment later.
        for (const int wholeTrack : {1, 4, 0, 8, 5}) {
            const FirstPaint paint(label);
            QVERIFY(program.player.tell(u"track %1"_s.arg(wholeTrack)));
            QTRY_VERIFY(paint.time);
            QTest::qWait(50);
            const double announced = announcements.takeFirst();
            QVERIFY(std::isfinite(announced));
            delays.push_back((*paint.time - announced) * 1000);
        }
        std::sort(delays.begin(), delays.end());
        qInfo("a new track is painted %.1f ms after the player's signal (the median of 5; the slowest: %.1f ms)",
            delays[2], delays[4]);
        QVERIFY(delays[0] > 0);
        QVERIFY(delays[2] < 1000.0 / 60);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PlayerOnTheBusTest, QApplication)
#include "PlayerOnTheBusTest.moc"

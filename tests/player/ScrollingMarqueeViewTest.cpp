// SPDX-License-Identifier: MIT
#include "player/ScrollingMarqueeView.h"
#include "support/registerTest.h"

#include <QAccessible>
#include <QApplication>
#include <QPaintEvent>
#include <QRegularExpression>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <memory>
#include <vector>

using namespace tunedeck;
using namespace std::chrono_literals;

namespace {
const QString shortText = QStringLiteral("Blues");
const QString wideText(200, u'w');

/// A view of 200 × 25 points whose time the test sets.
struct Marquee {
    Marquee() { view.resize(200, 25); }

    [[nodiscard]] bool isTicking() const { return timer().isActive(); }
    [[nodiscard]] QTimer &timer() const { return *view.findChild<QTimer *>(); }

    /// Lets the view's own timer fire as if it were `time` since the start.
    void goTo(std::chrono::milliseconds time)
    {
        now = MarqueeTimeline::TimePoint(time);
        Firings fired(timer());
        timer().start(0);
        QTRY_VERIFY(fired.count > 0);
    }

    [[nodiscard]] QImage picture(double scale = 1)
    {
        QPixmap pixmap(view.size() * scale);
        pixmap.setDevicePixelRatio(scale);
        pixmap.fill(Qt::transparent);
        view.render(&pixmap, {}, {}, {});
        return pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    }

    MarqueeTimeline::TimePoint now{};
    ScrollingMarqueeView view{[this] { return now; }};

private:
    struct Firings {
        explicit Firings(QTimer &timer)
        {
            QObject::connect(&timer, &QTimer::timeout, &context, [this] { ++count; });
        }
        QObject context;
        int count = 0;
    };
};

/// Records where a widget is painted.
class PaintRecorder : public QObject {
public:
    explicit PaintRecorder(QWidget &widget)
        : QObject(&widget)
    {
        widget.installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            painted += static_cast<QPaintEvent *>(event)->region();
        }
        return QObject::eventFilter(watched, event);
    }

    QRegion painted;
};

/// Records what a picture mover is asked for.
class RecordingMover : public PictureMover {
public:
    struct Record {
        bool isAble = true;
        int placements = 0;
        int moves = 0;
        bool isShowing = false;
        QRect field;
        std::vector<PlacedPicture> pictures;
    };

    explicit RecordingMover(Record &record)
        : m_record(record)
    {
    }

    [[nodiscard]] bool place(
        QWidget &, const QRect &field, const QImage &mask, const std::vector<PlacedPicture> &pictures) override
    {
        ++m_record.placements;
        m_record.isShowing = m_record.isAble;
        m_record.field = field;
        m_record.pictures = pictures;
        return m_record.isAble && mask.size() == field.size();
    }
    [[nodiscard]] bool move(const std::vector<PlacedPicture> &pictures) override
    {
        ++m_record.moves;
        m_record.pictures = pictures;
        return m_record.isAble;
    }
    void remove() override { m_record.isShowing = false; }

private:
    Record &m_record;
};

/// A marquee whose pictures a RecordingMover moves.
struct MovedMarquee : Marquee {
    MovedMarquee()
    {
        view.setPictureMover(std::make_unique<RecordingMover>(record));
        view.setDisplayStrings({shortText, QStringLiteral("Jazz")});
        view.show();
    }

    RecordingMover::Record record;
};

int mostAlpha(const QImage &image)
{
    int most = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            most = std::max(most, qAlpha(image.pixel(x, y)));
        }
    }
    return most;
}
} // namespace

class ScrollingMarqueeViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void oneFittingStringStartsNoTimer()
    {
        Marquee marquee;
        marquee.view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&marquee.view));
        marquee.view.setDisplayStrings({shortText});
        QVERIFY(!marquee.isTicking());
        marquee.view.setDisplayStrings({wideText});
        QVERIFY(marquee.isTicking());
        QCOMPARE(marquee.timer().intervalAsDuration(), 4000ms);
        marquee.view.setDisplayStrings({});
        QVERIFY(!marquee.isTicking());
    }

    void aHiddenWindowStopsItAndAShownOneIsRight()
    {
        Marquee marquee;
        marquee.view.setDisplayStrings({shortText, wideText});
        QVERIFY(!marquee.isTicking());
        marquee.view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&marquee.view));
        QVERIFY(marquee.isTicking());
        const QImage first = marquee.picture();
        marquee.view.hide();
        QVERIFY(!marquee.isTicking());
        marquee.now = MarqueeTimeline::TimePoint(6000ms);
        marquee.view.show();
        QTRY_VERIFY(marquee.isTicking());
        QVERIFY(marquee.picture() != first);
        QCOMPARE(marquee.timer().intervalAsDuration(), 3667ms);
    }

    void aMinimizedWindowStopsIt()
    {
        Marquee marquee;
        marquee.view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&marquee.view));
        marquee.view.setDisplayStrings({wideText});
        QVERIFY(marquee.isTicking());
        marquee.view.showMinimized();
        QTRY_VERIFY(!marquee.isTicking());
        marquee.view.showNormal();
        QTRY_VERIFY(marquee.isTicking());
    }

    void itAsksForFramesOnlyWhileAStringMoves()
    {
        Marquee marquee;
        marquee.view.setDisplayStrings({wideText});
        marquee.view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&marquee.view));
        QCoreApplication::processEvents();
        PaintRecorder recorder(marquee.view);
        marquee.goTo(3999ms);
        QCoreApplication::processEvents();
        QVERIFY(recorder.painted.isEmpty());
        // A third of a device pixel is no reason to paint.
        marquee.goTo(4010ms);
        QCoreApplication::processEvents();
        QVERIFY(recorder.painted.isEmpty());
        marquee.goTo(4040ms);
        QTRY_VERIFY(!recorder.painted.isEmpty());
    }

    void eachWakeUpShowsANewPictureAtItsTime_data()
    {
        QTest::addColumn<QStringList>("strings");
        QTest::addColumn<int>("mostFrames");
        // It rolls by its height of 25 points, and scrolls by 30 points in the second that is watched.
        QTest::newRow("rolling") << QStringList{shortText, QStringLiteral("Another")} << 25;
        QTest::newRow("scrolling") << QStringList{QStringLiteral("abcdefghij").repeated(10)} << 31;
    }

    void eachWakeUpShowsANewPictureAtItsTime()
    {
        QFETCH(const QStringList, strings);
        QFETCH(const int, mostFrames);
        Marquee marquee;
        Marquee looksAllTheTime;
        for (Marquee *view : {&marquee, &looksAllTheTime}) {
            view->view.setDisplayStrings(strings);
            view->view.show();
            QVERIFY(QTest::qWaitForWindowExposed(&view->view));
        }
        std::chrono::milliseconds time = 4000ms;
        marquee.goTo(time);
        int frames = 0;
        while (true) {
            const std::chrono::milliseconds next = time + marquee.timer().intervalAsDuration();
            if (next >= 5667ms || (strings.size() == 1 && next > 5000ms)) {
                break;
            }
            const QImage before = marquee.picture();
            // 16 ms are the shortest frame. A wake-up comes up to 1 ms after the time.
            if (next - time > 16ms) {
                looksAllTheTime.goTo(next - 2ms);
                QCOMPARE(looksAllTheTime.picture(), before);
            }
            marquee.goTo(next);
            QVERIFY(marquee.picture() != before);
            looksAllTheTime.goTo(next);
            QCOMPARE(marquee.picture(), looksAllTheTime.picture());
            time = next;
            ++frames;
        }
        QVERIFY(frames > 10);
        QVERIFY2(frames <= mostFrames, qPrintable(QString::number(frames)));
    }

    void onlyTheRowsOfTheTextArePaintedWhileItScrolls()
    {
        Marquee marquee;
        marquee.view.resize(200, 60);
        marquee.view.setDisplayStrings({wideText});
        marquee.view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&marquee.view));
        QCoreApplication::processEvents();
        PaintRecorder recorder(marquee.view);
        marquee.goTo(6000ms);
        QTRY_VERIFY(!recorder.painted.isEmpty());
        const QRect painted = recorder.painted.boundingRect();
        QCOMPARE(painted.width(), 200);
        // The letters are about 6 points high and in the middle.
        QVERIFY(painted.height() < 15);
        QVERIFY(painted.contains(QRect(0, 28, 200, 5)));
    }

    void onlyTheWidestTextsWidthIsPaintedWhileTextsRoll()
    {
        Marquee marquee;
        marquee.view.setDisplayStrings({shortText, QStringLiteral("_")});
        marquee.view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&marquee.view));
        // The first frame draws the text that comes next.
        marquee.goTo(4200ms);
        QCoreApplication::processEvents();
        PaintRecorder recorder(marquee.view);
        marquee.goTo(4600ms);
        QTRY_VERIFY(!recorder.painted.isEmpty());
        const QRect painted = recorder.painted.boundingRect();
        QVERIFY2(painted.width() < 120, qPrintable(QString::number(painted.width())));
        QCOMPARE(painted.center().x(), marquee.view.rect().center().x());
    }

    void whatIsPaintedFrameByFrameLooksLikeTheWhole_data()
    {
        QTest::addColumn<QStringList>("strings");
        QTest::addColumn<bool>("dark");
        const QStringList tall{QStringLiteral("\u00c5\u0302gj\u0327\u0323").repeated(20), QStringLiteral("Qy\u0323")};
        QTest::newRow("scrolling") << QStringList{wideText} << false;
        QTest::newRow("accents, scrolling, then rolling") << tall << false;
        QTest::newRow("accents in the dark") << tall << true;
        QTest::newRow("rolling") << QStringList{shortText, QStringLiteral("_"), QStringLiteral("'")} << false;
    }

    void whatIsPaintedFrameByFrameLooksLikeTheWhole()
    {
        QFETCH(const QStringList, strings);
        QFETCH(const bool, dark);
        QWidget window;
        window.resize(210, 40);
        Marquee marquee;
        marquee.view.setParent(&window);
        // At a fractional scale it begins between device pixels.
        marquee.view.setGeometry(3, 5, 200, 25);
        marquee.view.setDark(dark);
        marquee.view.setDisplayStrings(strings);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        for (std::chrono::milliseconds time = 4000ms; time < 20'000ms; time += 190ms) {
            marquee.goTo(time);
            QCoreApplication::processEvents();
            const QImage frameByFrame = window.screen()->grabWindow(window.winId()).toImage();
            QVERIFY(!frameByFrame.isNull());
            window.repaint();
            QCOMPARE(frameByFrame, window.screen()->grabWindow(window.winId()).toImage());
        }
        marquee.view.setParent(nullptr);
    }

    void onlyItsOwnRectangleIsPainted()
    {
        QWidget window;
        window.resize(400, 100);
        QWidget sibling(&window);
        sibling.setGeometry(0, 50, 400, 50);
        Marquee marquee;
        marquee.view.setParent(&window);
        marquee.view.setGeometry(100, 10, 200, 25);
        marquee.view.setDisplayStrings({wideText});
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCoreApplication::processEvents();
        PaintRecorder behind(window);
        PaintRecorder beside(sibling);
        marquee.goTo(6000ms);
        QTRY_VERIFY(!behind.painted.isEmpty());
        QVERIFY(QRect(100, 10, 200, 25).contains(behind.painted.boundingRect()));
        QVERIFY(beside.painted.isEmpty());
        marquee.view.setParent(nullptr);
    }

    void itsEdgesFadeOut()
    {
        // Full blocks fill the field from edge to edge, so only the mask shows. There may be seams between the blocks;
        // three points further on the seams are elsewhere.
        Marquee marquee;
        marquee.view.resize(200, 10);
        marquee.view.setDisplayStrings({QString(100, QChar(0x2588))});
        marquee.view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&marquee.view));
        marquee.goTo(10'000ms);
        const QImage image = marquee.picture();
        marquee.goTo(10'100ms);
        const QImage later = marquee.picture();
        const auto alpha = [&](int x, int y) { return std::max(qAlpha(image.pixel(x, y)), qAlpha(later.pixel(x, y))); };
        // The middles of the first pixels are 0.5, 1.5 and 2.5 points into a fade of 3.5.
        QCOMPARE(alpha(0, 5), 36);
        QCOMPARE(alpha(1, 5), 109);
        QCOMPARE(alpha(2, 5), 182);
        QCOMPARE(alpha(4, 5), 255);
        QCOMPARE(alpha(100, 5), 255);
        QCOMPARE(alpha(199, 5), 36);
        // 12 % of 10 points are 1.2: the middle of the outermost pixel is 0.5 into them.
        QCOMPARE(alpha(100, 0), 106);
        QCOMPARE(alpha(100, 9), 106);
        QCOMPARE(alpha(100, 1), 255);
        QCOMPARE(alpha(0, 0), 15);
    }

    void theFadeInsetIsNeverNegative()
    {
        Marquee marquee;
        QCOMPARE(marquee.view.fadeInsetInPoints(), 3.5);
        marquee.view.setFadeInsetInPoints(-1);
        QCOMPARE(marquee.view.fadeInsetInPoints(), 0.0);
        marquee.view.setFadeInsetInPoints(500);
        marquee.view.setDisplayStrings({shortText});
        QVERIFY(mostAlpha(marquee.picture()) < 128);
    }

    void itsTextIsDarkOnLightAndLightOnDark()
    {
        Marquee marquee;
        marquee.view.setDisplayStrings({QString(4, QChar(0x2588))});
        const QRgb ink = marquee.picture().pixel(100, 12);
        QCOMPARE(QColor::fromRgba(ink), QColor(0x35, 0x39, 0x2a));
        marquee.view.setDark(true);
        const QRgb light = marquee.picture().pixel(100, 12);
        QCOMPARE(light | 0xff000000, qRgb(255, 255, 255));
        QVERIFY(std::abs(qAlpha(light) - 191) <= 1);
    }

    void aClickShowsTheNextString()
    {
        Marquee marquee;
        marquee.view.setDisplayStrings({shortText, wideText});
        const QImage first = marquee.picture();
        QTest::mouseClick(&marquee.view, Qt::LeftButton);
        QCOMPARE(marquee.view.displayStrings(), (QStringList{wideText, shortText}));
        QVERIFY(marquee.picture() != first);
    }

    void onlyALeftClickInsideShowsTheNextString()
    {
        Marquee marquee;
        const QStringList strings{shortText, wideText};
        marquee.view.setDisplayStrings(strings);
        QTest::mouseClick(&marquee.view, Qt::RightButton);
        QTest::mousePress(&marquee.view, Qt::LeftButton);
        QTest::mouseRelease(&marquee.view, Qt::LeftButton, {}, {100, 60});
        marquee.view.setLabelAdvancesOnClick(false);
        QTest::mouseClick(&marquee.view, Qt::LeftButton);
        QCOMPARE(marquee.view.displayStrings(), strings);
    }

    void nothingPausesIt()
    {
        Marquee marquee;
        QVERIFY(!marquee.view.isPaused());
        marquee.view.setDisplayStrings({shortText, wideText});
        marquee.view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&marquee.view));
        marquee.goTo(4100ms);
        QVERIFY(!marquee.view.isPaused());
    }

    void aNewSizeStartsTheStringOnShowAgain()
    {
        Marquee marquee;
        marquee.view.setDisplayStrings({shortText, wideText});
        marquee.view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&marquee.view));
        marquee.goTo(6000ms);
        QCOMPARE(marquee.timer().intervalAsDuration(), 3667ms);
        marquee.view.resize(150, 25);
        QTRY_COMPARE(marquee.timer().intervalAsDuration(), 4000ms);
    }

    void markupIsShownAsItIs()
    {
        Marquee marquee;
        marquee.view.setDisplayStrings({QStringLiteral("<b></b>")});
        QCOMPARE(mostAlpha(marquee.picture()), 255);
    }

    void everyScriptIsDrawnAtEveryScale_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("right to left") << QString(20, QChar(0x05d0));
        QTest::newRow("mixed directions") << QStringLiteral("Live \u05d0\u05d1\u05d2 \u0627\u0644\u0639 2024");
        QTest::newRow("emoji") << QStringLiteral("\U0001F3B5\U0001F468\u200D\U0001F469\u200D\U0001F467 song");
        QTest::newRow("combining") << QStringLiteral("Ze\u0301\u0302\u0303\u0304\u0305lo");
        QTest::newRow("lines") << QStringLiteral("one\ntwo\tthree\u2028four");
        QTest::newRow("half a surrogate pair") << QString(QChar(0xd83c));
        QTest::newRow("wide") << wideText;
    }

    void everyScriptIsDrawnAtEveryScale()
    {
        QFETCH(const QString, text);
        Marquee marquee;
        marquee.view.setDisplayStrings({text, shortText});
        for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
            QVERIFY(mostAlpha(marquee.picture(scale)) > 128);
        }
    }

    void whatIsTooLongIsCut()
    {
        Marquee marquee;
        const QString emoji = QStringLiteral("\U0001F3B5");
        marquee.view.setDisplayStrings({u'a' + emoji.repeated(1'000'000), QString(1000, u'i'), QString(1000, u'W')});
        const QStringList shown = marquee.view.displayStrings();
        QVERIFY(shown[0].size() <= 1001);
        QVERIFY(shown[0].endsWith(QChar(0x2026)));
        QVERIFY(shown[0].isValidUtf16());
        QCOMPARE(shown[1], QString(1000, u'i'));
        QVERIFY(shown[2].size() < 1000);
        QVERIFY(shown[2].endsWith(QChar(0x2026)));
        QVERIFY(mostAlpha(marquee.picture(2)) > 128);
    }

    void itIsReadAsOneText()
    {
        Marquee marquee;
        marquee.view.setDisplayStrings({QStringLiteral("Salt & Pepper"), QStringLiteral("<i>Band</i>")});
        const QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(&marquee.view);
        QCOMPARE(accessible->role(), QAccessible::Notification);
        QTRY_COMPARE(accessible->text(QAccessible::Name), QStringLiteral("Salt & Pepper, <i>Band</i>"));
    }

    void whatIsClearedToShowSomethingElseIsNotReadOutAsEmpty()
    {
        Marquee marquee;
        marquee.view.setDisplayStrings({shortText});
        QTRY_COMPARE(marquee.view.text(), shortText);
        marquee.view.setDisplayStrings({});
        marquee.view.setDisplayStrings({wideText});
        QCOMPARE(marquee.view.text(), shortText);
        QTRY_COMPARE(marquee.view.text(), wideText);
    }

    void whoDragsTheWindowByItDoesNotClickOnIt()
    {
        Marquee marquee;
        const QStringList strings{shortText, wideText};
        marquee.view.setDisplayStrings(strings);
        QTest::mousePress(&marquee.view, Qt::LeftButton, {}, {100, 12});
        QTest::mouseRelease(&marquee.view, Qt::LeftButton, {}, {100 + QApplication::startDragDistance(), 12});
        QCOMPARE(marquee.view.displayStrings(), strings);
    }

    void inTheDarkTheInkHasAHaloAndInTheLightALip()
    {
        Marquee marquee;
        marquee.view.setDisplayStrings({QString(4, QChar(0x2588))});
        const auto edgeBelow = [&marquee] {
            const QImage picture = marquee.picture();
            int y = 12;
            while (qAlpha(picture.pixel(100, y)) > 180) {
                ++y;
            }
            return QColor::fromRgba(picture.pixel(100, y));
        };
        QVERIFY(edgeBelow().lightness() > 200);
        QVERIFY(edgeBelow().alpha() > 100);
        marquee.view.setDark(true);
        QVERIFY(edgeBelow().lightness() < 100);
        QVERIFY(edgeBelow().alpha() > 100);
    }

    void aStringThatRestsIsPaintedAndOneThatMovesIsMoved()
    {
        MovedMarquee marquee;
        QVERIFY(QTest::qWaitForWindowExposed(&marquee.view));
        QCOMPARE(marquee.record.placements, 0);
        marquee.goTo(4'300ms);
        QTRY_COMPARE(marquee.record.placements, 1);
        QCOMPARE(marquee.record.field, marquee.view.rect());
        QCOMPARE(marquee.record.pictures.size(), 2U);
        const QPoint start = marquee.record.pictures[0].position;

        const PaintRecorder recorder(marquee.view);
        marquee.goTo(4'600ms);
        QCOMPARE(marquee.record.moves, 1);
        QVERIFY(marquee.record.pictures[0].position != start);
        QCoreApplication::processEvents();
        QVERIFY(recorder.painted.isEmpty());
    }

    void theStringsArePlacedAgainOnWhatIsPainted()
    {
        MovedMarquee marquee;
        QVERIFY(QTest::qWaitForWindowExposed(&marquee.view));
        marquee.goTo(4'300ms);
        QTRY_COMPARE(marquee.record.placements, 1);
        marquee.view.setDark(true);
        QTRY_COMPARE(marquee.record.placements, 2);
        marquee.view.resize(220, 25);
        QTRY_COMPARE(marquee.record.field, QRect(0, 0, 220, 25));
    }

    void aPictureOfItHasTheStringsThatAreMoved()
    {
        MovedMarquee marquee;
        QVERIFY(QTest::qWaitForWindowExposed(&marquee.view));
        marquee.goTo(4'300ms);
        QTRY_COMPARE(marquee.record.placements, 1);
        QVERIFY(mostAlpha(marquee.picture()) > 128);
        QCOMPARE(marquee.record.placements, 1);
    }

    void whereNothingCanMoveTheStringsTheViewPaintsThem_data()
    {
        QTest::addColumn<bool>("isAbleAtFirst");
        QTest::newRow("never") << false;
        QTest::newRow("no longer") << true;
    }
    void whereNothingCanMoveTheStringsTheViewPaintsThem()
    {
        QFETCH(const bool, isAbleAtFirst);
        MovedMarquee marquee;
        marquee.record.isAble = isAbleAtFirst;
        QVERIFY(QTest::qWaitForWindowExposed(&marquee.view));
        marquee.goTo(4'300ms);
        QTRY_COMPARE(marquee.record.placements, 1);
        marquee.record.isAble = false;
        marquee.goTo(4'500ms);
        QVERIFY(!marquee.record.isShowing);
        QCoreApplication::processEvents();

        const PaintRecorder recorder(marquee.view);
        marquee.goTo(4'700ms);
        QTRY_VERIFY(!recorder.painted.isEmpty());
        QCOMPARE(marquee.record.placements, 1);
    }

    void aHiddenWindowTakesTheStringsBack()
    {
        MovedMarquee marquee;
        QVERIFY(QTest::qWaitForWindowExposed(&marquee.view));
        marquee.goTo(4'300ms);
        QTRY_VERIFY(marquee.record.isShowing);
        marquee.view.hide();
        QVERIFY(!marquee.record.isShowing);
        marquee.view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&marquee.view));
        QCOMPARE(marquee.record.placements, 1);
    }

    void withReducedMotionATextThatIsTooWideStandsAndNothingWakes()
    {
        Marquee marquee;
        marquee.view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&marquee.view));
        marquee.view.setDisplayStrings({wideText});
        QVERIFY(marquee.isTicking());
        const QImage moving = marquee.picture();
        marquee.view.setMotionReduced(true);
        QVERIFY(!marquee.isTicking());
        QVERIFY(marquee.picture() != moving);
        QCOMPARE(marquee.view.displayStrings(), QStringList{wideText});
        marquee.view.setMotionReduced(false);
        QVERIFY(marquee.isTicking());
        QCOMPARE(marquee.picture(), moving);
    }
};

TUNEDECK_TEST(ScrollingMarqueeViewTest, QApplication)
#include "ScrollingMarqueeViewTest.moc"

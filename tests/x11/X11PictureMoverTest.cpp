// SPDX-License-Identifier: MIT
#include "x11/X11PictureMover.h"
#include "player/ScrollingMarqueeView.h"
#include "support/ApplicationOnX11.h"
#include "support/registerTest.h"
#include "x11/x11.h"

#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QRegularExpression>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <memory>

using namespace std::chrono_literals;

namespace tunedeck {

namespace {
constexpr QRect place(20, 10, 200, 30); // of the display in its window, in points
const QStringList severalTexts{QStringLiteral("Low Hum"), QStringLiteral("The Even Tones"), QStringLiteral("Später")};
const QStringList wideText{QStringLiteral("A title that is much wider than the display and scrolls for a long time")};
/// Times at which the texts are between two positions.
constexpr auto rolling = 4'700ms;
constexpr auto later = 4'900ms;
constexpr auto nextRoll = 10'400ms;
/// The server and Qt round half levels of a color in different ways, the fade and the text once each.
constexpr int sameColor = 2;

/// A display that moves its texts, on a ground whose color differs at each pixel. The test sets the time.
class Desk : public QWidget {
public:
    explicit Desk(std::unique_ptr<PictureMover> mover = {})
    {
        // What the server knows of a window is what is seen of it, so the windows of a test are apart.
        setGeometry(0, mover ? 0 : 200, 240, 50);
        m_marquee.setGeometry(place);
        m_marquee.setPictureMover(std::move(mover));
    }

    [[nodiscard]] ScrollingMarqueeView &marquee() { return m_marquee; }

    [[nodiscard]] bool open()
    {
        show();
        return QTest::qWaitForWindowExposed(this);
    }

    /// Lets the display's own timer fire as if it were `time` since the start, and paints what waits to be painted.
    void goTo(std::chrono::milliseconds time)
    {
        m_now = MarqueeTimeline::TimePoint(time);
        QMetaObject::invokeMethod(m_marquee.findChild<QTimer *>(), "timeout");
        repaintIfNeeded();
    }

    void setGround(const QColor &color)
    {
        m_end = color;
        update();
        repaintIfNeeded();
    }

    /// Whether the server moves the texts, in a window of their own.
    [[nodiscard]] bool isMovedByServer() const
    {
        xcb_connection_t *const server = x11Connection();
        const auto cookie = xcb_query_tree(server, static_cast<xcb_window_t>(winId()));
        const X11Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(server, cookie, nullptr));
        return tree && tree->children_len == 1;
    }

    [[nodiscard]] int paintCount() const { return m_paintCount; }

    [[nodiscard]] QImage seen() const
    {
        return screen()->grabWindow(winId()).toImage().convertToFormat(QImage::Format_RGB32);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        ++m_paintCount;
        QLinearGradient ground(0, 0, width(), height());
        ground.setColorAt(0, Qt::white);
        ground.setColorAt(1, m_end);
        QPainter(this).fillRect(rect(), ground);
    }

private:
    static void repaintIfNeeded() { QCoreApplication::processEvents(); }

    MarqueeTimeline::TimePoint m_now{};
    QColor m_end = Qt::darkGreen;
    int m_paintCount = 0;
    ScrollingMarqueeView m_marquee{[this] { return m_now; }, this};
};

std::unique_ptr<PictureMover> serversMover()
{
    return std::make_unique<X11PictureMover>();
}

int largestDifference(const QImage &one, const QImage &other)
{
    int largest = one.size() == other.size() ? 0 : 255;
    for (int y = 0; largest < 255 && y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QColor a = one.pixelColor(x, y);
            const QColor b = other.pixelColor(x, y);
            largest = std::max(
                {largest, std::abs(a.red() - b.red()), std::abs(a.green() - b.green()), std::abs(a.blue() - b.blue())});
        }
    }
    return largest;
}
} // namespace

class X11PictureMoverTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void whatItMovesLooksLikeWhatTheViewPaints_data()
    {
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<bool>("isDark");
        QTest::addColumn<bool>("isTranslucent");
        QTest::newRow("texts that roll") << severalTexts << false << false;
        QTest::newRow("a text that scrolls") << wideText << false << false;
        QTest::newRow("a text as long as can be") << QStringList{QString(1'000, u'W')} << false << false;
        QTest::newRow("light ink") << severalTexts << true << false;
        QTest::newRow("a window with round corners") << severalTexts << false << true;
    }
    void whatItMovesLooksLikeWhatTheViewPaints()
    {
        QFETCH(const QStringList, texts);
        QFETCH(const bool, isDark);
        QFETCH(const bool, isTranslucent);
        Desk moved(serversMover());
        Desk painted;
        for (Desk *desk : {&moved, &painted}) {
            desk->setAttribute(Qt::WA_TranslucentBackground, isTranslucent);
            desk->marquee().setDark(isDark);
            desk->marquee().setDisplayStrings(texts);
            QVERIFY(desk->open());
        }
        QStringList pictures;
        for (auto time = 3900ms; time < 12'000ms; time += 90ms) {
            moved.goTo(time);
            painted.goTo(time);
            const QImage seen = moved.seen();
            QVERIFY2(largestDifference(seen, painted.seen()) <= sameColor, qPrintable(QString::number(time.count())));
            const QByteArrayView bytes(seen.constBits(), seen.sizeInBytes());
            pictures.append(QString::number(qHash(bytes)));
        }
        pictures.removeDuplicates();
        QVERIFY(pictures.size() > 10);
        QVERIFY(moved.paintCount() < painted.paintCount() - 10);
    }

    void theGroundIsWhatIsPaintedLast()
    {
        Desk moved(serversMover());
        Desk painted;
        for (Desk *desk : {&moved, &painted}) {
            desk->marquee().setDisplayStrings(severalTexts);
            QVERIFY(desk->open());
            desk->goTo(rolling);
            desk->setGround(Qt::darkRed);
            desk->goTo(later);
        }
        QVERIFY(moved.isMovedByServer());
        QVERIFY(largestDifference(moved.seen(), painted.seen()) <= sameColor);
    }

    void whatIsPaintedAfterTheViewIsSeen()
    {
        Desk moved(serversMover());
        Desk painted;
        for (Desk *desk : {&moved, &painted}) {
            desk->marquee().setDisplayStrings(severalTexts);
            auto *const mark = new QLabel(desk);
            QPixmap red(12, 20);
            red.fill(Qt::red);
            mark->setPixmap(red);
            mark->setGeometry(place.x() + 2, place.y() + 20, 12, 20);
            QVERIFY(desk->open());
            desk->goTo(rolling);
        }
        QVERIFY(moved.isMovedByServer());
        QTRY_VERIFY(largestDifference(moved.seen(), painted.seen()) <= sameColor);
    }

    void aNewSizeIsShown()
    {
        Desk moved(serversMover());
        Desk painted;
        for (Desk *desk : {&moved, &painted}) {
            desk->marquee().setDisplayStrings(severalTexts);
            QVERIFY(desk->open());
            desk->goTo(rolling);
            desk->resize(300, 60);
            desk->marquee().setGeometry(5, 15, 290, 30);
            desk->goTo(nextRoll);
        }
        QVERIFY(moved.isMovedByServer());
        QVERIFY(largestDifference(moved.seen(), painted.seen()) <= sameColor);
    }

    void theServerRestoresWhatWasCovered()
    {
        Desk moved(serversMover());
        moved.marquee().setDisplayStrings(severalTexts);
        QVERIFY(moved.open());
        moved.goTo(rolling);
        QVERIFY(moved.isMovedByServer());
        const QImage before = moved.seen();
        QWidget other;
        other.setGeometry(moved.geometry());
        other.setWindowFlag(Qt::X11BypassWindowManagerHint);
        other.show();
        QVERIFY(QTest::qWaitForWindowExposed(&other));
        QTRY_VERIFY(moved.seen() != before);
        other.hide();
        QTRY_COMPARE(moved.seen(), before);
    }

    void thePointerDoesNotMeetIt()
    {
        Desk moved(serversMover());
        moved.marquee().setDisplayStrings(severalTexts);
        QVERIFY(moved.open());
        moved.goTo(rolling);
        QVERIFY(moved.isMovedByServer());
        const QPoint middle = moved.mapToGlobal(place.center()) * moved.devicePixelRatioF();
        xcb_connection_t *const server = x11Connection();
        const auto window = static_cast<xcb_window_t>(moved.winId());
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
        xcb_warp_pointer(server, XCB_NONE, root, 0, 0, 0, 0, static_cast<std::int16_t>(middle.x()),
            static_cast<std::int16_t>(middle.y()));
        const X11Reply<xcb_query_pointer_reply_t> pointer(
            xcb_query_pointer_reply(server, xcb_query_pointer(server, window), nullptr));
        QVERIFY(pointer);
        QCOMPARE(pointer->root_x, middle.x());
        QCOMPARE(pointer->child, xcb_window_t{XCB_NONE});
    }

    void aWindowThatIsHiddenAndShownHasItsTextsOnce()
    {
        Desk moved(serversMover());
        Desk painted;
        for (Desk *desk : {&moved, &painted}) {
            desk->marquee().setDisplayStrings(severalTexts);
            QVERIFY(desk->open());
            desk->goTo(rolling);
            desk->hide();
            QVERIFY(desk->open());
            desk->goTo(later);
            desk->goTo(nextRoll);
        }
        QVERIFY(moved.isMovedByServer());
        QVERIFY(largestDifference(moved.seen(), painted.seen()) <= sameColor);
    }

    void aPictureOfTheWindowHasTheTexts()
    {
        Desk moved(serversMover());
        Desk painted;
        for (Desk *desk : {&moved, &painted}) {
            desk->marquee().setDisplayStrings(severalTexts);
            QVERIFY(desk->open());
            desk->goTo(rolling);
        }
        QCOMPARE(moved.grab().toImage(), painted.grab().toImage());
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::X11PictureMoverTest, tunedeck::ApplicationOnX11)
#include "X11PictureMoverTest.moc"

// SPDX-License-Identifier: MIT
#include "x11/KeyRepeatFilter.h"

#include "support/elapse.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <memory>
#include <utility>

using namespace tunedeck;

namespace {
constexpr quint32 spaceCode = 65;
constexpr quint32 otherCode = 38;

class KeyRecorder : public QWidget {
public:
    [[nodiscard]] QStringList takeTold() { return std::exchange(m_told, {}); }

protected:
    void keyPressEvent(QKeyEvent *event) override { tell(QStringLiteral("press"), *event); }
    void keyReleaseEvent(QKeyEvent *event) override { tell(QStringLiteral("release"), *event); }

private:
    void tell(const QString &what, const QKeyEvent &event)
    {
        m_told.append(event.isAutoRepeat() ? what + QStringLiteral(" again") : what);
    }

    QStringList m_told;
};

/// Sends what Qt makes of an event of the X server.
void send(QWidget &window, QEvent::Type type, quint64 time, quint32 code = spaceCode, bool isRepeat = false)
{
    QKeyEvent event(
        type, code == spaceCode ? Qt::Key_Space : Qt::Key_A, Qt::NoModifier, code, 0, 0, QStringLiteral(" "), isRepeat);
    event.setTimestamp(time);
    QCoreApplication::sendEvent(window.windowHandle(), &event);
}

void press(QWidget &window, quint64 time, quint32 code = spaceCode)
{
    send(window, QEvent::KeyPress, time, code);
}

void release(QWidget &window, quint64 time, quint32 code = spaceCode)
{
    send(window, QEvent::KeyRelease, time, code);
}

bool isShortcutOverridden(QWidget &window, quint64 time)
{
    QKeyEvent event(QEvent::ShortcutOverride, Qt::Key_Space, Qt::NoModifier, spaceCode, 0, 0, QStringLiteral(" "));
    event.setTimestamp(time);
    event.ignore();
    QCoreApplication::sendEvent(window.windowHandle(), &event);
    return event.isAccepted();
}

QTimer &timer(const KeyRepeatFilter &filter)
{
    return *filter.findChild<QTimer *>();
}

const QString pressed = QStringLiteral("press");
const QString released = QStringLiteral("release");
const QStringList repeated{QStringLiteral("release again"), QStringLiteral("press again")};
} // namespace

class KeyRepeatFilterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        tunedeck::failOnWarning();
        m_window = std::make_unique<KeyRecorder>();
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup() { m_window.reset(); }

    void aReleaseAndAPressOfTheSameTimeAreARepetition()
    {
        const KeyRepeatFilter filter(true);
        press(*m_window, 1000);
        QCOMPARE(m_window->takeTold(), {pressed});
        for (const quint64 time : {1660, 1700, 1740}) {
            release(*m_window, time);
            QVERIFY(m_window->takeTold().isEmpty());
            press(*m_window, time);
            QCOMPARE(m_window->takeTold(), repeated);
        }
        QVERIFY(!timer(filter).isActive());
    }

    void aReleaseThatNoPressFollowsComesALittleLater()
    {
        const KeyRepeatFilter filter(true);
        press(*m_window, 1000);
        release(*m_window, 1100);
        QCOMPARE(m_window->takeTold(), {pressed});
        QVERIFY(timer(filter).interval() <= 20);
        QVERIFY(elapse(timer(filter)));
        QCOMPARE(m_window->takeTold(), {released});
    }

    void aKeyThatIsPressedTwiceIsNoRepetition()
    {
        const KeyRepeatFilter filter(true);
        press(*m_window, 1000);
        release(*m_window, 1100);
        press(*m_window, 1101);
        QCOMPARE(m_window->takeTold(), (QStringList{pressed, released, pressed}));
    }

    void anotherKeyIsNoRepetitionEither()
    {
        const KeyRepeatFilter filter(true);
        press(*m_window, 1000);
        release(*m_window, 1100);
        press(*m_window, 1100, otherCode);
        QCOMPARE(m_window->takeTold(), (QStringList{pressed, released, pressed}));
        release(*m_window, 1200, otherCode);
        release(*m_window, 1300);
        QCOMPARE(m_window->takeTold(), {released});
        QVERIFY(elapse(timer(filter)));
        QCOMPARE(m_window->takeTold(), {released});
    }

    void whatQtKnowsToBeARepetitionIsLeftAlone()
    {
        const KeyRepeatFilter filter(true);
        send(*m_window, QEvent::KeyRelease, 1000, spaceCode, true);
        send(*m_window, QEvent::KeyPress, 1000, spaceCode, true);
        QCOMPARE(m_window->takeTold(), repeated);
    }

    void aHeldKeyClicksAButtonOnceWhenItIsReleased()
    {
        QPushButton button;
        button.show();
        QVERIFY(QTest::qWaitForWindowActive(&button));
        button.setFocus();
        const QSignalSpy clicked(&button, &QPushButton::clicked);
        const KeyRepeatFilter filter(true);
        press(button, 1000);
        for (const quint64 time : {1660, 1700, 1740}) {
            release(button, time);
            press(button, time);
        }
        QCOMPARE(clicked.count(), 0);
        release(button, 1800);
        QVERIFY(elapse(timer(filter)));
        QCOMPARE(clicked.count(), 1);
    }

    void aShortcutThatDoesNotRepeatIsUsedOnce()
    {
        QAction once;
        once.setShortcut(Qt::Key_Space);
        once.setAutoRepeat(false);
        m_window->addAction(&once);
        const QSignalSpy triggered(&once, &QAction::triggered);
        const KeyRepeatFilter filter(true);
        QVERIFY(!isShortcutOverridden(*m_window, 1000));
        press(*m_window, 1000);
        release(*m_window, 1660);
        QVERIFY(isShortcutOverridden(*m_window, 1660));
        press(*m_window, 1660);
        QCOMPARE(triggered.count(), 1);
        release(*m_window, 1700);
        QVERIFY(!isShortcutOverridden(*m_window, 1750));
        once.setAutoRepeat(true);
        QVERIFY(!isShortcutOverridden(*m_window, 1700));
    }

    void aWindowThatGoesWhileAReleaseIsKeptGetsNone()
    {
        const KeyRepeatFilter filter(true);
        press(*m_window, 1000);
        release(*m_window, 1100);
        m_window.reset();
        QVERIFY(elapse(timer(filter)));
    }

    void itDoesNothingWhereItIsNotNeeded()
    {
        const KeyRepeatFilter filter(false);
        press(*m_window, 1000);
        release(*m_window, 1000);
        press(*m_window, 1000);
        QCOMPARE(m_window->takeTold(), (QStringList{pressed, released, pressed}));
    }

private:
    std::unique_ptr<KeyRecorder> m_window;
};

TUNEDECK_TEST(KeyRepeatFilterTest, QApplication)
#include "KeyRepeatFilterTest.moc"

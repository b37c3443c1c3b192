// SPDX-License-Identifier: MIT
#include "app/TerminationSignals.h"

#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QSignalSpy>
#include <QTest>

#include <csignal>

using namespace tunedeck;

namespace {
bool endsTheProgram(int signal)
{
    struct sigaction action{};
    ::sigaction(signal, nullptr, &action);
    return action.sa_handler == SIG_DFL;
}
} // namespace

class TerminationSignalsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnWarning();
        // A test that runs in the background ignores some of them.
        for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
            std::signal(signal, SIG_DFL);
        }
    }

    void aSignalIsReportedByTheEventLoop_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("of a session") << SIGTERM;
        QTest::newRow("of a terminal that is closed") << SIGHUP;
        QTest::newRow("of a terminal's keyboard") << SIGINT;
    }

    void aSignalIsReportedByTheEventLoop()
    {
        QFETCH(const int, signal);
        const TerminationSignals terminationSignals;
        QSignalSpy received(&terminationSignals, &TerminationSignals::received);
        std::raise(signal);
        QCOMPARE(received.count(), 0);
        QVERIFY(received.wait());
        QCOMPARE(received.count(), 1);
    }

    void aSignalThatComesAgainEndsTheProgram()
    {
        const TerminationSignals terminationSignals;
        QVERIFY(!endsTheProgram(SIGTERM));
        std::raise(SIGTERM);
        QVERIFY(endsTheProgram(SIGTERM));
        QVERIFY(!endsTheProgram(SIGINT));
    }

    void twoSignalsAreReportedOnce()
    {
        const TerminationSignals terminationSignals;
        QSignalSpy received(&terminationSignals, &TerminationSignals::received);
        std::raise(SIGTERM);
        std::raise(SIGHUP);
        QVERIFY(received.wait());
        QCoreApplication::processEvents();
        QCOMPARE(received.count(), 1);
    }

    void aSignalThatWasIgnoredStaysIgnored()
    {
        std::signal(SIGHUP, SIG_IGN);
        {
            const TerminationSignals terminationSignals;
            QSignalSpy received(&terminationSignals, &TerminationSignals::received);
            std::raise(SIGHUP);
            std::raise(SIGTERM);
            QVERIFY(received.wait());
            QVERIFY(!endsTheProgram(SIGHUP));
        }
        QVERIFY(!endsTheProgram(SIGHUP));
    }

    void afterwardsEachEndsTheProgram()
    {
        {
            const TerminationSignals terminationSignals;
            QVERIFY(!endsTheProgram(SIGTERM));
        }
        QVERIFY(endsTheProgram(SIGTERM));
        QVERIFY(endsTheProgram(SIGHUP));
        QVERIFY(endsTheProgram(SIGINT));
    }
};

TUNEDECK_TEST(TerminationSignalsTest, QCoreApplication)
#include "TerminationSignalsTest.moc"

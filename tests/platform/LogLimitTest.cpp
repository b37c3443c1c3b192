// SPDX-License-Identifier: MIT
#include "platform/LogLimit.h"

#include "support/registerTest.h"

#include <QTest>

#include <chrono>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace tunedeck {

class LogLimitTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_limit = LogLimit(); }

    void tenLinesOfAKindAreWritten()
    {
        for (int line = 0; line < 10; ++line) {
            QVERIFY(isWritten("qt", u"out of range"_s));
        }
        QVERIFY(!isWritten("qt", u"out of range"_s));
        QVERIFY(isWritten("qt", u"within range"_s));
        QVERIFY(isWritten("tunedeck", u"out of range"_s));
    }

    void quotedTextsAndNumbersMakeNoKindOfTheirOwn_data()
    {
        QTest::addColumn<QString>("line");
        QTest::newRow("a number") << u"Position %1 out of range"_s;
        QTest::newRow("quotes") << u"no owner of \"x%1\""_s;
        QTest::newRow("single quotes") << u"name 'x%1' had an owner"_s;
        QTest::newRow("far from the beginning") << QString(60, u'x') + u"%1"_s;
    }
    void quotedTextsAndNumbersMakeNoKindOfTheirOwn()
    {
        QFETCH(const QString, line);
        for (int number = 0; number < 10; ++number) {
            QVERIFY(isWritten("qt", line.arg(number)));
        }
        QVERIFY(!isWritten("qt", line.arg(10)));
    }

    void afterTenSecondsLinesAreWrittenAgainAndTheOthersAreCounted()
    {
        for (int line = 0; line < 93'932; ++line) {
            static_cast<void>(isWritten("qt.dbus", u"name 'x' is odd"_s));
        }
        m_now += 9'999ms;
        QVERIFY(!isWritten("qt.dbus", u"name 'x' is odd"_s));
        m_now += 1ms;
        const LogLimit::Decision decision = m_limit.decide("qt.dbus", u"name 'x' is odd"_s, m_now);
        QVERIFY(decision.isWritten);
        QCOMPARE(decision.leftOut, QStringList{u"and 93923 more lines of qt.dbus: name …"_s});
        QCOMPARE(m_limit.leftOut(), QStringList());
    }

    void aLineOfAnotherKindReportsWhatWasLeftOut()
    {
        for (int line = 0; line < 11; ++line) {
            static_cast<void>(isWritten("qt", u"odd"_s));
        }
        QCOMPARE(m_limit.leftOut(), QStringList{u"and 1 more lines of qt: odd …"_s});
        m_now += 1h;
        QCOMPARE(m_limit.decide("qt", u"even"_s, m_now).leftOut, QStringList{u"and 1 more lines of qt: odd …"_s});
    }

    void nobodyMakesMoreThanFiftyKinds()
    {
        int written = 0;
        for (int line = 1; line < 100'000; ++line) {
            QString beginning;
            for (int rest = line; rest > 0; rest /= 26) {
                beginning += QChar(u'a' + rest % 26);
            }
            written += isWritten("tunedeck.players", beginning) ? 1 : 0;
        }
        QCOMPARE(written, 60);
        QVERIFY(isWritten("qt", u"odd"_s));
    }

private:
    bool isWritten(const QByteArray &category, const QString &line)
    {
        return m_limit.decide(category, line, m_now).isWritten;
    }

    LogLimit m_limit;
    LogLimit::Time m_now;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::LogLimitTest, QCoreApplication)
#include "LogLimitTest.moc"

// SPDX-License-Identifier: MIT
#include "music/formatTime.h"
#include "support/abortedRun.h"
#include "support/registerTest.h"

#include <QRegularExpression>
#include <QTest>

#include <limits>

using namespace tunedeck;

class formatTimeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void secondsBecomeATime_data()
    {
        QTest::addColumn<double>("seconds");
        QTest::addColumn<QString>("time");

        QTest::newRow("zero") << 0.0 << QStringLiteral("0:00");
        QTest::newRow("negative zero") << -0.0 << QStringLiteral("0:00");
        QTest::newRow("the fraction is cut off") << 65.9 << QStringLiteral("1:05");
        QTest::newRow("just below a minute") << 59.999 << QStringLiteral("0:59");
        QTest::newRow("a minute") << 60.0 << QStringLiteral("1:00");
        QTest::newRow("ten minutes") << 600.0 << QStringLiteral("10:00");
        QTest::newRow("just below an hour") << 3599.0 << QStringLiteral("59:59");
        QTest::newRow("an hour less a fraction") << 3599.9 << QStringLiteral("59:59");
        QTest::newRow("an hour") << 3600.0 << QStringLiteral("1:00:00");
        QTest::newRow("an hour and a little") << 3661.0 << QStringLiteral("1:01:01");
        QTest::newRow("ten hours") << 36000.0 << QStringLiteral("10:00:00");
        QTest::newRow("more than four digits of hours") << 1e9 << QStringLiteral("277777:46:40");
    }
    void secondsBecomeATime()
    {
        QFETCH(double, seconds);
        QTEST(formatTime(seconds), "time");
    }

    void everyPartOfANegativeTimeKeepsItsSign_data()
    {
        QTest::addColumn<double>("seconds");
        QTest::addColumn<QString>("time");

        QTest::newRow("less than a second") << -0.9 << QStringLiteral("0:00");
        QTest::newRow("a second") << -1.0 << QStringLiteral("0:-1");
        QTest::newRow("two digits") << -59.0 << QStringLiteral("0:-59");
        QTest::newRow("a minute") << -60.0 << QStringLiteral("-1:00");
        QTest::newRow("minute and seconds") << -65.0 << QStringLiteral("-1:-5");
        QTest::newRow("ten minutes") << -600.0 << QStringLiteral("-10:00");
        QTest::newRow("just above an hour before") << -3599.0 << QStringLiteral("-59:-59");
        QTest::newRow("an hour") << -3600.0 << QStringLiteral("-1:00:00");
        QTest::newRow("all three parts") << -3661.0 << QStringLiteral("-1:-1:-1");
        QTest::newRow("ten hours") << -36000.0 << QStringLiteral("-10:00:00");
    }
    void everyPartOfANegativeTimeKeepsItsSign()
    {
        QFETCH(double, seconds);
        QTEST(formatTime(seconds), "time");
    }

    void whatIsNotFiniteHasNoText()
    {
        QCOMPARE(formatTime(std::numeric_limits<double>::infinity()), QString());
        QCOMPARE(formatTime(-std::numeric_limits<double>::infinity()), QString());
        QCOMPARE(formatTime(std::numeric_limits<double>::quiet_NaN()), QString());
    }

    void theWholeRangeOf64BitsIsTaken()
    {
        QCOMPARE(formatTime(-9223372036854775808.0), QStringLiteral("-2562047788015215:-30:-8"));
        QCOMPARE(formatTime(9223372036854774784.0), QStringLiteral("2562047788015215:13:04"));
    }

    void beyond64BitsIsFatal_data()
    {
        QTest::addColumn<QString>("seconds");
        QTest::newRow("above") << QStringLiteral("9223372036854775808");
        QTest::newRow("below") << QStringLiteral("-1e19");
    }
    void beyond64BitsIsFatal()
    {
        QFETCH(QString, seconds);
        const auto lastWords = lastWordsOfAbortedRun(seconds);
        QVERIFY(lastWords);
        QVERIFY2(lastWords->contains(QStringLiteral("A time is beyond 64 bits")), qPrintable(*lastWords));
    }
};

TUNEDECK_TEST(formatTimeTest, QCoreApplication, [](const QString &seconds) { Q_UNUSED(formatTime(seconds.toDouble())) })

#include "formatTimeTest.moc"

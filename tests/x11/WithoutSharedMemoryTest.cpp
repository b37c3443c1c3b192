// SPDX-License-Identifier: MIT
#include "x11/WithoutSharedMemory.h"
#include "support/registerTest.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QTest>

namespace tunedeck {

namespace {
constexpr char variable[] = "QT_XCB_NO_MITSHM";
} // namespace

class WithoutSharedMemoryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { qunsetenv(variable); }
    void cleanup() { qunsetenv(variable); }

    void belowScale2QtIsTold_data()
    {
        QTest::addColumn<double>("scale");
        QTest::newRow("1") << 1.0;
        QTest::newRow("1.75") << 1.75;
    }
    void belowScale2QtIsTold()
    {
        QFETCH(const double, scale);
        const WithoutSharedMemory withoutSharedMemory(scale);
        QVERIFY(qEnvironmentVariableIsSet(variable));
    }

    void programsThatAreStartedLaterDoNotInheritIt()
    {
        {
            const WithoutSharedMemory withoutSharedMemory(1);
        }
        QVERIFY(!qEnvironmentVariableIsSet(variable));
    }

    void fromScale2OnQtDecides()
    {
        const WithoutSharedMemory withoutSharedMemory(2);
        QVERIFY(!qEnvironmentVariableIsSet(variable));
    }

    void withoutAScaleQtDecides()
    {
        const WithoutSharedMemory withoutSharedMemory(std::nullopt);
        QVERIFY(!qEnvironmentVariableIsSet(variable));
    }

    void theUsersOwnVariableStays()
    {
        qputenv(variable, "user");
        {
            const WithoutSharedMemory withoutSharedMemory(1);
        }
        QCOMPARE(qgetenv(variable), "user");
        {
            const WithoutSharedMemory withoutSharedMemory(2);
        }
        QCOMPARE(qgetenv(variable), "user");
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::WithoutSharedMemoryTest, QCoreApplication)
#include "WithoutSharedMemoryTest.moc"

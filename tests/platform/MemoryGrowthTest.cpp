// SPDX-License-Identifier: MIT
#include "platform/bus/MemoryGrowth.h"

#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QTest>

using namespace tunedeck;

namespace {
constexpr qint64 start = 100'000'000;
constexpr qint64 half = MemoryGrowth::noticeable / 2;
} // namespace

class MemoryGrowthTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void aLargeStepIsNoticed()
    {
        MemoryGrowth growth(start);
        QVERIFY(!growth.isNoticeable(start));
        QVERIFY(growth.isNoticeable(start + MemoryGrowth::noticeable));
    }

    void smallStepsAddUp()
    {
        MemoryGrowth growth(start);
        QVERIFY(!growth.isNoticeable(start + half));
        QVERIFY(growth.isNoticeable(start + 2 * half));
    }

    void growthCountsFromTheLeastSinceTheStart()
    {
        MemoryGrowth growth(start);
        QVERIFY(!growth.isNoticeable(start - 2 * half));
        QVERIFY(!growth.isNoticeable(start - half));
        QVERIFY(growth.isNoticeable(start));
    }
};

TUNEDECK_TEST(MemoryGrowthTest, QCoreApplication)
#include "MemoryGrowthTest.moc"

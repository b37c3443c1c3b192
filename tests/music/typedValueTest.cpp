// SPDX-License-Identifier: MIT
#include "music/typedValue.h"
#include "support/registerTest.h"

#include <QRegularExpression>
#include <QTest>
#include <QUrl>

#include <limits>

using namespace tunedeck;

class typedValueTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void anIntegerOfAnyWidthIsAnInteger()
    {
        QCOMPARE(integerFrom(QVariant::fromValue<signed char>(-1)), -1);
        QCOMPARE(integerFrom(QVariant::fromValue<uchar>(200)), 200);
        QCOMPARE(integerFrom(QVariant::fromValue<short>(-2)), -2);
        QCOMPARE(integerFrom(QVariant::fromValue<ushort>(60000)), 60000);
        QCOMPARE(integerFrom(QVariant::fromValue<int>(-3)), -3);
        QCOMPARE(integerFrom(QVariant::fromValue<uint>(4000000000U)), 4000000000);
        QCOMPARE(integerFrom(QVariant::fromValue<long>(-4)), -4);
        QCOMPARE(integerFrom(QVariant::fromValue<ulong>(5)), 5);
        QCOMPARE(integerFrom(QVariant::fromValue<qlonglong>(-9223372036854775807)), -9223372036854775807);
        QCOMPARE(integerFrom(QVariant::fromValue<qulonglong>(9223372036854775807U)), 9223372036854775807);
    }

    void whatIsNoIntegerIsNotReadAsOne()
    {
        QCOMPARE(integerFrom(QVariant()), std::nullopt);
        QCOMPARE(integerFrom(QStringLiteral("12")), std::nullopt);
        QCOMPARE(integerFrom(12.0), std::nullopt);
        QCOMPARE(integerFrom(true), std::nullopt);
        QCOMPARE(integerFrom(QVariantList{1}), std::nullopt);
        QCOMPARE(integerFrom(QVariant::fromValue<qulonglong>(9223372036854775808U)), std::nullopt);
    }

    void integersAndFloatingPointAreNumbers()
    {
        QCOMPARE(numberFrom(245), 245.0);
        QCOMPARE(numberFrom(QVariant::fromValue<qulonglong>(7)), 7.0);
        QCOMPARE(numberFrom(2.5), 2.5);
        QCOMPARE(numberFrom(2.5F), 2.5);
        QCOMPARE(numberFrom(std::numeric_limits<double>::infinity()), std::numeric_limits<double>::infinity());
    }

    void whatIsNoNumberIsNotReadAsOne()
    {
        QCOMPARE(numberFrom(QVariant()), std::nullopt);
        QCOMPARE(numberFrom(QStringLiteral("2.5")), std::nullopt);
        QCOMPARE(numberFrom(true), std::nullopt);
    }

    void onlyATextIsAText()
    {
        QCOMPARE(stringFrom(QStringLiteral("So What")), QStringLiteral("So What"));
        QCOMPARE(stringFrom(QString()), QString());
        QCOMPARE(stringFrom(QVariant()), std::nullopt);
        QCOMPARE(stringFrom(12), std::nullopt);
        QCOMPARE(stringFrom(QByteArray("So What")), std::nullopt);
        QCOMPARE(stringFrom(QUrl(QStringLiteral("https://radio.example"))), std::nullopt);
    }
};

TUNEDECK_TEST(typedValueTest, QCoreApplication)
#include "typedValueTest.moc"

// SPDX-License-Identifier: MIT
#include "platform/BundleInfo.h"
#include "support/registerTest.h"

#include <QRegularExpression>
#include <QTest>

namespace tunedeck {

class BundleInfoTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void knowsTheFactsOfTheBuild()
    {
        QCOMPARE(bundleInfo(u"CFBundleName"), QStringLiteral("Tunedeck"));
        QCOMPARE(bundleInfo(u"CFBundleShortVersionString"), QStringLiteral(TUNEDECK_VERSION));
        QCOMPARE(bundleInfo(u"CFBundleVersion"), QStringLiteral(TUNEDECK_BUILD_NUMBER));
        QCOMPARE(bundleInfo(u"CFBundleHelpBookName"), QStringLiteral("Tunedeck Help"));
    }

    void hasNoValueForAnyOtherKey()
    {
        QVERIFY(!bundleInfo(u"CFBundleIdentifier"));
        QVERIFY(!bundleInfo(u"cfbundlename"));
        QVERIFY(!bundleInfo(u""));
    }

    void theApplicationIdIsAReverseDnsName()
    {
        QCOMPARE(applicationId.toString(), QStringLiteral("org.tunedeck.Tunedeck"));
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::BundleInfoTest, QCoreApplication)
#include "BundleInfoTest.moc"

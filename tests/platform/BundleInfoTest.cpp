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

    void knowsTheAddressesThatTheBuildNames()
    {
        QCOMPARE(bundleInfo(u"TunedeckHomepage").value_or(QString()), QStringLiteral(TUNEDECK_HOMEPAGE));
        QCOMPARE(bundleInfo(u"TunedeckContact").value_or(QString()), QStringLiteral(TUNEDECK_CONTACT));
        QVERIFY(bundleInfo(u"TunedeckHomepage") != QString());
        QVERIFY(bundleInfo(u"TunedeckContact") != QString());
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

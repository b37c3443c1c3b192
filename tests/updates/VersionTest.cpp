// SPDX-License-Identifier: MIT
#include "updates/feed/Version.h"
#include "support/registerTest.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

class VersionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aVersionComesBeforeAnother_data()
    {
        QTest::addColumn<QString>("lower");
        QTest::addColumn<QString>("higher");
        QTest::newRow("build numbers") << u"9"_s << u"10"_s;
        QTest::newRow("by their numbers") << u"1.9"_s << u"1.10"_s;
        QTest::newRow("the first number decides") << u"1.99.99"_s << u"2"_s;
        QTest::newRow("one more number") << u"1.2"_s << u"1.2.1"_s;
        QTest::newRow("a number after zeros") << u"1"_s << u"1.0.0.1"_s;
        QTest::newRow("numbers of any length") << u"99999999999999999999"_s << u"100000000000000000000"_s;
        QTest::newRow("a beta") << u"1.2b1"_s << u"1.2"_s;
        QTest::newRow("a release candidate") << u"1.2-rc1"_s << u"1.2"_s;
        QTest::newRow("a release candidate with a dot") << u"1.2.rc.1"_s << u"1.2"_s;
        QTest::newRow("a beta and a release candidate") << u"1.2b9"_s << u"1.2-rc1"_s;
        QTest::newRow("two betas") << u"1.2b9"_s << u"1.2b10"_s;
        QTest::newRow("a beta without and with a number") << u"1.2b"_s << u"1.2b1"_s;
        QTest::newRow("a release and the next one's beta") << u"1.2"_s << u"1.3b1"_s;
        QTest::newRow("a beta of the bare number") << u"1b1"_s << u"1.0"_s;
        QTest::newRow("a revision") << u"1.2"_s << u"1.2-3"_s;
        QTest::newRow("zero") << u"0"_s << u"0.0.1"_s;
        QTest::newRow("a beta of zero") << u"0-beta"_s << u"0"_s;
    }
    void aVersionComesBeforeAnother()
    {
        QFETCH(const QString, lower);
        QFETCH(const QString, higher);
        QVERIFY(Version::fromString(lower) < Version::fromString(higher));
        QVERIFY(Version::fromString(higher) > Version::fromString(lower));
        QVERIFY(Version::fromString(lower) != Version::fromString(higher));
    }

    void versionsAreEqual_data()
    {
        QTest::addColumn<QString>("one");
        QTest::addColumn<QString>("other");
        QTest::newRow("itself") << u"1.2.3"_s << u"1.2.3"_s;
        QTest::newRow("zeros at the end") << u"1.0"_s << u"1.0.0"_s;
        QTest::newRow("zeros at the start") << u"1.02"_s << u"1.2"_s;
        QTest::newRow("a v") << u"v1.2"_s << u"1.2"_s;
        QTest::newRow("a name") << u"Tunedeck 1.2"_s << u"1.2"_s;
        QTest::newRow("spaces") << u" 1.2 "_s << u"1.2"_s;
        QTest::newRow("a build's mark") << u"1.2+git5"_s << u"1.2"_s;
        QTest::newRow("the writing of a beta") << u"1.2-BETA.1"_s << u"1.2beta1"_s;
        QTest::newRow("dots too many") << u"..1..2.."_s << u"1.2"_s;
    }
    void versionsAreEqual()
    {
        QFETCH(const QString, one);
        QFETCH(const QString, other);
        QVERIFY(Version::fromString(one) == Version::fromString(other));
        QVERIFY(std::is_eq(*Version::fromString(one) <=> *Version::fromString(other)));
    }

    void lettersAfterTheNumbersMakeAPrerelease()
    {
        QVERIFY(Version::fromString(u"1.2-rc1")->isPrerelease());
        QVERIFY(Version::fromString(u"1.2a")->isPrerelease());
        QVERIFY(!Version::fromString(u"1.2")->isPrerelease());
        QVERIFY(!Version::fromString(u"v1.2-3")->isPrerelease());
        QVERIFY(!Version::fromString(u"1.2+beta")->isPrerelease());
    }

    void whatIsNoVersionIsNone()
    {
        QCOMPARE(Version::fromString(u"").has_value(), false);
        QCOMPARE(Version::fromString(u"latest").has_value(), false);
        QCOMPARE(Version::fromString(u"...").has_value(), false);
        QCOMPARE(Version::fromString(u"+1").has_value(), false);
        QCOMPARE(Version::fromString(u"١.٢").has_value(), false);
        QCOMPARE(Version::fromString(QString(101, u'1')).has_value(), false);
        QCOMPARE(Version::fromString(QString(100, u'1')).has_value(), true);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::VersionTest, QCoreApplication)
#include "VersionTest.moc"

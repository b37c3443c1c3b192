// SPDX-License-Identifier: MIT
#include "platform/ActivationToken.h"
#include "support/registerTest.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

class ActivationTokenTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        qunsetenv("DESKTOP_STARTUP_ID");
        qunsetenv("XDG_ACTIVATION_TOKEN");
    }

    void whatTheDesktopGaveIsTakenOutOfTheEnvironment()
    {
        qputenv("DESKTOP_STARTUP_ID", "dock-1_TIME7");
        qputenv("XDG_ACTIVATION_TOKEN", "token");
        QCOMPARE(ActivationToken::takeFromEnvironment(), (ActivationToken{u"dock-1_TIME7"_s, u"token"_s}));
        QVERIFY(!qEnvironmentVariableIsSet("DESKTOP_STARTUP_ID"));
        QVERIFY(!qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
        QCOMPARE(ActivationToken::takeFromEnvironment(), ActivationToken());
    }

    void itIsHandedOnAsPlatformData()
    {
        const ActivationToken token{u"dock-1_TIME7"_s, u"token"_s};
        QCOMPARE(token.platformData(),
            (QVariantMap{{u"desktop-startup-id"_s, u"dock-1_TIME7"_s}, {u"activation-token"_s, u"token"_s}}));
        QCOMPARE(ActivationToken::fromPlatformData(token.platformData()), token);
        QCOMPARE(ActivationToken().platformData(), QVariantMap());
        QCOMPARE(ActivationToken::fromPlatformData({}), ActivationToken());
    }

    void anIdIsTheTokenWhereThereIsNoOther()
    {
        QCOMPARE(ActivationToken::fromPlatformData({{u"desktop-startup-id"_s, u"id"_s}}),
            (ActivationToken{u"id"_s, u"id"_s}));
        QCOMPARE(ActivationToken::fromPlatformData({{u"activation-token"_s, u"token"_s}}),
            (ActivationToken{{}, u"token"_s}));
    }

    void whatCanBeNoneIsNone_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("too long") << QVariant(QString(1'001, u'x'));
        QTest::newRow("far too long") << QVariant(QString(1'000'000, u'x'));
        QTest::newRow("lines") << QVariant(u"id\nremove: ID=other"_s);
        QTest::newRow("a zero byte") << QVariant(u"id"_s + QChar(0) + u"remove"_s);
        QTest::newRow("a control character") << QVariant(u"id\u0085"_s);
        QTest::newRow("a list") << QVariant(QVariantList{1, 2});
    }
    void whatCanBeNoneIsNone()
    {
        QFETCH(const QVariant, value);
        QCOMPARE(ActivationToken::fromPlatformData({{u"desktop-startup-id"_s, value}, {u"activation-token"_s, value}}),
            ActivationToken());
    }

    void theLongestIsStillOne()
    {
        const QString longest(1'000, u'x');
        QCOMPARE(ActivationToken::fromPlatformData({{u"desktop-startup-id"_s, longest}}).x11StartupId, longest);
    }

    void theEndOfAnIdTellsWhenTheUserAskedForIt_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<std::optional<quint32>>("time");
        const std::optional<quint32> none;
        QTest::newRow("a time") << u"dock/tunedeck/17-0-host_TIME123456"_s << std::optional<quint32>(123'456);
        QTest::newRow("the last of two") << u"a_TIME1_TIME2"_s << std::optional<quint32>(2);
        QTest::newRow("the greatest") << u"a_TIME4294967295"_s << std::optional<quint32>(4'294'967'295);
        QTest::newRow("one more") << u"a_TIME4294967296"_s << none;
        QTest::newRow("many digits") << u"a_TIME"_s + QString(900, u'9') << none;
        QTest::newRow("no time") << u"a_TIME0"_s << none;
        QTest::newRow("a sign") << u"a_TIME+5"_s << none;
        QTest::newRow("a minus") << u"a_TIME-5"_s << none;
        QTest::newRow("a space") << u"a_TIME 5"_s << none;
        QTest::newRow("more after it") << u"a_TIME5x"_s << none;
        QTest::newRow("hexadecimal") << u"a_TIME0x5"_s << none;
        QTest::newRow("digits of another script") << u"a_TIME٣"_s << none;
        QTest::newRow("nothing after the mark") << u"a_TIME"_s << none;
        QTest::newRow("no mark") << u"a17"_s << none;
        QTest::newRow("no id") << QString() << none;
    }
    void theEndOfAnIdTellsWhenTheUserAskedForIt()
    {
        QFETCH(const QString, id);
        QFETCH(const std::optional<quint32>, time);
        QCOMPARE((ActivationToken{id, {}}.userTime(time.value_or(5))), time);
    }

    void onlyATimeOfTheLastTenMinutesCounts_data()
    {
        QTest::addColumn<quint32>("time");
        QTest::addColumn<quint32>("now");
        QTest::addColumn<bool>("counts");
        QTest::newRow("now") << 1'000'000U << 1'000'000U << true;
        QTest::newRow("the next millisecond") << 1'000'001U << 1'000'000U << false;
        QTest::newRow("ten minutes ago") << 400'000U << 1'000'000U << true;
        QTest::newRow("longer ago") << 399'999U << 1'000'000U << false;
        QTest::newRow("the clock has begun again since") << 4'294'967'295U << 599'999U << true;
        QTest::newRow("longer ago than that") << 4'294'967'295U << 600'000U << false;
        QTest::newRow("before the clock begins again") << 1U << 4'294'967'295U << false;
    }
    void onlyATimeOfTheLastTenMinutesCounts()
    {
        QFETCH(const quint32, time);
        QFETCH(const quint32, now);
        QFETCH(const bool, counts);
        const ActivationToken token{u"dock_TIME%1"_s.arg(time), {}};
        QCOMPARE(token.userTime(now), counts ? std::optional(time) : std::nullopt);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::ActivationTokenTest, QCoreApplication)
#include "ActivationTokenTest.moc"

// SPDX-License-Identifier: MIT
#include "audio/SettledStreams.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QTest>

using namespace tunedeck;
using namespace std::chrono_literals;

namespace {
SoundStream stream(std::uint32_t index, bool isCorked = false)
{
    SoundStream found;
    found.origin.stream = index;
    found.output = 1;
    found.isCorked = isCorked;
    pa_cvolume_set(&found.volume, 2, PA_VOLUME_NORM);
    return found;
}

SoundStream withoutOutput(SoundStream found)
{
    found.output = PA_INVALID_INDEX;
    pa_cvolume_set(&found.volume, 2, PA_VOLUME_MUTED);
    return found;
}

SoundStream withVolume(SoundStream found, pa_volume_t left, pa_volume_t right)
{
    found.volume.values[0] = left;
    found.volume.values[1] = right;
    return found;
}
} // namespace

class SettledStreamsTest : public QObject {
    Q_OBJECT

private:
    SettledStreams m_settled;
    SettledStreams::Instant m_now;

private Q_SLOTS:
    void init()
    {
        m_settled = {};
        m_now = {};
    }

    void aNewStreamWithoutAnOutputIsNotBelieved()
    {
        m_settled.report({withoutOutput(stream(7))}, m_now);
        QVERIFY(m_settled.streams().isEmpty());
        m_settled.report({stream(7)}, m_now + 130ms);
        QCOMPARE(m_settled.streams().size(), 1);
        QCOMPARE(m_settled.streams().first().volume.values[0], PA_VOLUME_NORM);
    }

    void aStreamThatLosesItsOutputStaysAsItWas()
    {
        m_settled.report({stream(7)}, m_now);
        m_settled.report({withoutOutput(stream(7))}, m_now + 1ms);
        QCOMPARE(m_settled.streams().size(), 1);
        QCOMPARE(m_settled.streams().first().output, 1U);
        QCOMPARE(m_settled.streams().first().volume.values[0], PA_VOLUME_NORM);
    }

    void aStreamThatIsGoneIsGoneAtOnce()
    {
        m_settled.report({stream(7)}, m_now);
        m_settled.report({}, m_now);
        QVERIFY(m_settled.streams().isEmpty());
    }

    void corkingThatHasStoodIsBelieved()
    {
        m_settled.report({stream(7)}, m_now);
        m_settled.report({stream(7, true)}, m_now + 1s);
        QCOMPARE(m_settled.settlesAt(), m_now + 1s + 150ms);
        QVERIFY(!m_settled.settle(m_now + 1s + 149ms));
        QVERIFY(!m_settled.streams().first().isCorked);
        QVERIFY(m_settled.settle(m_now + 1s + 150ms));
        QVERIFY(m_settled.streams().first().isCorked);
        QCOMPARE(m_settled.settlesAt(), std::nullopt);
    }

    void corkingOfSomeMillisecondsIsNotBelieved()
    {
        m_settled.report({stream(7)}, m_now);
        m_settled.report({stream(7, true)}, m_now + 1s);
        m_settled.report({stream(7)}, m_now + 1s + 5ms);
        QCOMPARE(m_settled.settlesAt(), std::nullopt);
        QVERIFY(!m_settled.settle(m_now + 2s));
        QVERIFY(!m_settled.streams().first().isCorked);
    }

    void furtherReportsDoNotDelayTheBelief()
    {
        m_settled.report({stream(7)}, m_now);
        m_settled.report({stream(7, true)}, m_now + 1s);
        m_settled.report({stream(7, true)}, m_now + 1s + 100ms);
        QCOMPARE(m_settled.settlesAt(), m_now + 1s + 150ms);
    }

    void silenceDoesNotForgetTheBalance()
    {
        m_settled.report({withVolume(stream(7), 4'000, 2'000)}, m_now);
        m_settled.report({withVolume(stream(7), 0, 0)}, m_now);
        QCOMPARE(m_settled.streams().first().volume.values[0], 0U);
        QCOMPARE(m_settled.streams().first().balance.values[0], 4'000U);
        QCOMPARE(m_settled.streams().first().balance.values[1], 2'000U);
    }
};

TUNEDECK_TEST(SettledStreamsTest, QCoreApplication)

#include "SettledStreamsTest.moc"

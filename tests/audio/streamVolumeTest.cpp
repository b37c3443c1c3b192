// SPDX-License-Identifier: MIT
#include "audio/streamVolume.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QTest>

#include <cmath>

using namespace tunedeck;

namespace {
pa_cvolume stereo(pa_volume_t left, pa_volume_t right)
{
    pa_cvolume volume = {};
    volume.channels = 2;
    volume.values[0] = left;
    volume.values[1] = right;
    return volume;
}
} // namespace

class streamVolumeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyPercentIsReadBackAsItWasSet()
    {
        for (int percent = 0; percent <= 100; ++percent) {
            const pa_cvolume volume = turnedTo(stereo(PA_VOLUME_NORM, PA_VOLUME_NORM), percent);
            QCOMPARE(percentOf(volume), percent);
        }
    }

    void halfIsTheCubeOfAHalf()
    {
        const pa_cvolume half = turnedTo(stereo(PA_VOLUME_NORM, PA_VOLUME_NORM), 50);
        QCOMPARE(std::lround(pa_sw_volume_to_linear(half.values[0]) * 1'000), 125);
    }

    void theBalanceStays()
    {
        const pa_cvolume volume = turnedTo(stereo(PA_VOLUME_NORM, PA_VOLUME_NORM / 2), 50);
        QCOMPARE(volume.values[0], PA_VOLUME_NORM / 2);
        QCOMPARE(volume.values[1], PA_VOLUME_NORM / 4);
    }

    void theLoudestChannelCounts() { QCOMPARE(percentOf(stereo(PA_VOLUME_NORM / 4, PA_VOLUME_NORM / 2)), 50); }

    void aVolumeAbove100PercentIsShownAs100()
    {
        QCOMPARE(percentOf(stereo(PA_VOLUME_NORM * 3 / 2, PA_VOLUME_NORM)), 100);
        QCOMPARE(percentOf(stereo(PA_VOLUME_MAX, 0)), 100);
    }

    void aMonoStreamStaysMono()
    {
        pa_cvolume mono = {};
        pa_cvolume_set(&mono, 1, PA_VOLUME_NORM);
        QCOMPARE(turnedTo(mono, 30).channels, 1);
        QCOMPARE(percentOf(turnedTo(mono, 30)), 30);
    }

    void aVolumeOutOfRangeBecomesTheNearest()
    {
        QCOMPARE(percentOf(turnedTo(stereo(PA_VOLUME_NORM, 0), 1'000)), 100);
        QCOMPARE(percentOf(turnedTo(stereo(PA_VOLUME_NORM, 0), -5)), 0);
    }
};

TUNEDECK_TEST(streamVolumeTest, QCoreApplication)

#include "streamVolumeTest.moc"

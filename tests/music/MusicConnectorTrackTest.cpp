// SPDX-License-Identifier: MIT
#include "music/MusicConnectorTrack.h"
#include "support/registerTest.h"

#include <QRegularExpression>
#include <QTest>

#include <type_traits>

using namespace tunedeck;

static_assert(!std::is_default_constructible_v<MusicConnectorTrack>, "a track is made with its five fields only");

class MusicConnectorTrackTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void aTrackHoldsItsFiveFields()
    {
        const MusicConnectorTrack track(QStringLiteral("So What"), QStringLiteral("Miles Davis"),
            QStringLiteral("Kind of Blue"), 545.0, QStringLiteral("Jazz"));
        QCOMPARE(track.trackName, QStringLiteral("So What"));
        QCOMPARE(track.artistName, QStringLiteral("Miles Davis"));
        QCOMPARE(track.albumName, QStringLiteral("Kind of Blue"));
        QCOMPARE(track.duration, 545.0);
        QCOMPARE(track.genre, QStringLiteral("Jazz"));
    }

    void tracksAreEqualWhenAllFiveFieldsAre()
    {
        const QString text = QStringLiteral("a");
        const MusicConnectorTrack track(text, text, text, 1.0, text);
        QVERIFY(track == MusicConnectorTrack(text, text, text, 1.0, text));
        QVERIFY(track != MusicConnectorTrack(QStringLiteral("b"), text, text, 1.0, text));
        QVERIFY(track != MusicConnectorTrack(text, QStringLiteral("b"), text, 1.0, text));
        QVERIFY(track != MusicConnectorTrack(text, text, QStringLiteral("b"), 1.0, text));
        QVERIFY(track != MusicConnectorTrack(text, text, text, 1.5, text));
        QVERIFY(track != MusicConnectorTrack(text, text, text, 1.0, QStringLiteral("b")));
    }

    void anAbsentFieldEqualsOnlyAnAbsentOne()
    {
        const MusicConnectorTrack empty({}, {}, {}, {}, {});
        QVERIFY(empty == MusicConnectorTrack({}, {}, {}, {}, {}));
        QVERIFY(empty != MusicConnectorTrack(QString(), {}, {}, {}, {}));
        QVERIFY(empty != MusicConnectorTrack({}, QString(), {}, {}, {}));
        QVERIFY(empty != MusicConnectorTrack({}, {}, QString(), {}, {}));
        QVERIFY(empty != MusicConnectorTrack({}, {}, {}, 0.0, {}));
        QVERIFY(empty != MusicConnectorTrack({}, {}, {}, {}, QString()));
    }
};

TUNEDECK_TEST(MusicConnectorTrackTest, QCoreApplication)
#include "MusicConnectorTrackTest.moc"

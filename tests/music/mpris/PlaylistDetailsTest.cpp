// SPDX-License-Identifier: MIT
#include "music/mpris/PlaylistDetails.h"
#include "music/mpris/bus/BusValue.h"
#include "support/registerTest.h"

#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QTest>

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {

const QString path = u"/org/player/Playlist/0x55d0"_s;

QVariantList playlist(const QVariant &pathValue, const QVariant &name)
{
    return {pathValue, name, QString()};
}

} // namespace

class PlaylistDetailsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void theIdIsTheFirst63BitsOfAStableHashOfThePath()
    {
        // printf %s PATH | sha1sum, the first sixteen digits, halved
        const PlaylistDetails expected{.id = 856103291235210310, .path = path, .name = u"Evening"_s};
        QCOMPARE(decodePlaylist(playlist(path, u"Evening"_s)), std::optional(expected));
        QCOMPARE(decodePlaylist(playlist(path, u"Renamed"_s))->id, expected.id);
    }

    void noTwoOfTenThousandPathsShareAnIdAndNoneIsNegative()
    {
        QSet<qint64> ids;
        for (int number = 0; number < 10'000; ++number) {
            const auto details = decodePlaylist(playlist(u"/p/%1"_s.arg(number), QString()));
            QVERIFY(details && details->id >= 0);
            ids.insert(details->id);
        }
        QCOMPARE(ids.size(), 10'000);
    }

    void whatIsNoPathIsNoPlaylist_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("nothing") << QVariant();
        QTest::newRow("a number") << QVariant(7);
        QTest::newRow("an empty structure") << QVariant(QVariantList());
        QTest::newRow("a number for a path") << QVariant(playlist(7, u"A"_s));
        QTest::newRow("the root, which is none") << QVariant(playlist(u"/"_s, u"A"_s));
        QTest::newRow("no slash first") << QVariant(playlist(u"a/b"_s, u"A"_s));
        QTest::newRow("a slash last") << QVariant(playlist(u"/a/"_s, u"A"_s));
        QTest::newRow("two slashes") << QVariant(playlist(u"/a//b"_s, u"A"_s));
        QTest::newRow("a letter no path has") << QVariant(playlist(u"/a/b-c"_s, u"A"_s));
        QTest::newRow("a line end") << QVariant(playlist(u"/a/b\n"_s, u"A"_s));
        QTest::newRow("endless") << QVariant(playlist(u'/' + QString(1'000, u'a'), u"A"_s));
        QTest::newRow("a structure for a path") << QVariant(playlist(QVariantList{path}, u"A"_s));
    }
    void whatIsNoPathIsNoPlaylist()
    {
        QFETCH(const QVariant, value);
        QCOMPARE(decodePlaylist(value), std::nullopt);
        QCOMPARE(decodeActivePlaylist(QVariantList{true, value}), std::nullopt);
    }

    void aPathMayComeAsAPathOrAsAText()
    {
        const QVariant asPath = QVariant::fromValue(QDBusObjectPath(path));
        const QVariant packed = QVariant::fromValue(QDBusVariant(asPath));
        QCOMPARE(decodePlaylist(playlist(bus::plainValue(asPath), u"A"_s)), decodePlaylist(playlist(path, u"A"_s)));
        QCOMPARE(decodePlaylist(playlist(bus::plainValue(packed), u"A"_s))->path, path);
    }

    void theNameIsCleanText_data()
    {
        QTest::addColumn<QVariant>("name");
        QTest::addColumn<QString>("shown");
        QTest::newRow("plain") << QVariant(u"Café – 夜"_s) << u"Café – 夜"_s;
        QTest::newRow("control characters") << QVariant(u"A\nB\tC\x7f"
                                                        "D\u2028E"_s)
                                            << u"A B C D E"_s;
        QTest::newRow("endless") << QVariant(QString(5'000'000, u'x')) << QString(1'000, u'x');
        QTest::newRow("empty") << QVariant(QString()) << QString();
        QTest::newRow("a number") << QVariant(7) << QString();
        QTest::newRow("missing") << QVariant() << QString();
        QTest::newRow("a list of texts") << QVariant(QStringList{u"A"_s, u"B"_s}) << u"A, B"_s;
    }
    void theNameIsCleanText()
    {
        QFETCH(const QVariant, name);
        QTEST(decodePlaylist(playlist(path, name))->name, "shown");
    }

    void thePlaylistThatPlaysIsThereOnlyIfThePlayerSaysSo()
    {
        const QVariantList evening = playlist(path, u"Evening"_s);
        QCOMPARE(decodeActivePlaylist(QVariantList{true, evening}), decodePlaylist(evening));
        QVERIFY(decodeActivePlaylist(QVariantList{true, evening}).has_value());
        QCOMPARE(decodeActivePlaylist(QVariantList{false, evening}), std::nullopt);
        QCOMPARE(decodeActivePlaylist(QVariantList{1, evening}), std::nullopt);
        QCOMPARE(decodeActivePlaylist(QVariantList{true}), std::nullopt);
        QCOMPARE(decodeActivePlaylist(evening), std::nullopt);
        QCOMPARE(decodeActivePlaylist(QVariant()), std::nullopt);
    }
};

TUNEDECK_TEST(PlaylistDetailsTest, QGuiApplication)
#include "PlaylistDetailsTest.moc"

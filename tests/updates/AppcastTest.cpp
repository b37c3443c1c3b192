// SPDX-License-Identifier: MIT
#include "updates/feed/Appcast.h"

#include "FeedText.h"
#include "support/registerTest.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>
#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {
const RunningProgram running{u"100"_s, u"1.0"_s, u"12"_s};

QByteArray enclosure(const QByteArray &attributes = {})
{
    return "<enclosure url=\"https://tunedeck.example/t.deb\" length=\"10\" type=\"application/x-deb\" " + attributes
        + "/>";
}

/// `depth` elements, one in the other.
QByteArray deep(int depth)
{
    return QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth);
}

/// A feed whose deepest element is `depth` deep.
QByteArray nested(int depth)
{
    constexpr int depthOfItems = 2;
    return feedText(deep(depth - depthOfItems));
}

std::optional<QList<AppcastItem>> itemsIn(const QByteArray &xml)
{
    const std::optional<Appcast> appcast = readAppcast(xml);
    return appcast ? std::optional(appcast->items) : std::nullopt;
}

/// The build that is offered to the running one, if any.
QString offered(const QByteArray &items, const RunningProgram &program = running)
{
    const auto read = itemsIn(feedText(items));
    if (!read) {
        return u"not understood"_s;
    }
    const auto update = newestUpdate(*read, program);
    return update ? update->version : QString();
}

QByteArray mutated(QByteArray text, QRandomGenerator &random)
{
    static const QByteArrayList pieces{"<", ">", "\"", "'", "&", "&lt;", "&#x0;", "]]>", "<![CDATA[", "<!--", "-->",
        "<!DOCTYPE r [", "<!ENTITY a \"b\">", "&a;", "<item>", "</item>", "</channel>", "<?x ?>", "\xff",
        QByteArray(1, '\0'), "xmlns:sparkle=\"b\"", "xmlns:tunedeck=\"b\"", "length=\"99999999999999999999\""};
    for (int changes = random.bounded(1, 6); changes > 0 && !text.isEmpty(); --changes) {
        const int at = random.bounded(int(text.size()));
        const int length = std::min(random.bounded(1, 40), int(text.size()) - at);
        switch (random.bounded(4)) {
        case 0:
            text.remove(at, length);
            break;
        case 1:
            text.insert(at, text.mid(random.bounded(int(text.size())), length));
            break;
        case 2:
            text[at] = char(random.bounded(256));
            break;
        default:
            text.insert(at, pieces.at(random.bounded(int(pieces.size()))));
        }
    }
    return text;
}
} // namespace

class AppcastTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void anItemIsReadWhole()
    {
        const QByteArray signature(64, 's');
        const QByteArray hash(64, 'h');
        const auto items = itemsIn(feedText(feedItem(" 200 ",
            "<sparkle:shortVersionString>2.0</sparkle:shortVersionString>"
            "<sparkle:minimumSystemVersion>11.5</sparkle:minimumSystemVersion>"
            "<sparkle:channel>beta</sparkle:channel>"
            "<sparkle:releaseNotesLink>https://tunedeck.example/notes</sparkle:releaseNotesLink>"
            "<description><![CDATA[<p>New &amp; better</p>]]></description>"
            "<unknown><version>3</version></unknown>"
                + enclosure("sparkle:os=\"linux\" tunedeck:sha512=\"" + hash.toBase64() + "\" tunedeck:signature=\""
                    + signature.toBase64() + "\""))));
        QCOMPARE(items->size(), 1);
        const AppcastItem &item = items->constFirst();
        QCOMPARE(item.version, u"200"_s);
        QCOMPARE(item.shortVersion, u"2.0"_s);
        QCOMPARE(item.displayVersion(), u"2.0"_s);
        QCOMPARE(item.minimumSystemVersion, u"11.5"_s);
        QCOMPARE(item.channel, u"beta"_s);
        QCOMPARE(item.releaseNotes, u"<p>New &amp; better</p>"_s);
        QCOMPARE(item.url, QUrl(u"https://tunedeck.example/t.deb"_s));
        QCOMPARE(item.length, 10);
        QCOMPARE(item.sha512, hash);
        QCOMPARE(item.signature, signature);
    }

    void aFeedHasASerialAndAnExpiry_data()
    {
        QTest::addColumn<QByteArray>("serial");
        QTest::addColumn<QByteArray>("expiry");
        QTest::addColumn<qint64>("readSerial");
        QTest::addColumn<QDateTime>("readExpiry");
        const QByteArray day("2027-01-31T12:30:00Z");
        const QDateTime readDay(QDate(2027, 1, 31), QTime(12, 30), QTimeZone::utc());
        QTest::newRow("both") << QByteArray(" 12 ") << day << 12LL << readDay;
        QTest::newRow("the highest serial") << QByteArray("1000000000") << day << 1'000'000'000LL << readDay;
        QTest::newRow("too high a serial") << QByteArray("1000000001") << day << 0LL << readDay;
        QTest::newRow("no serial") << QByteArray() << day << 0LL << readDay;
        QTest::newRow("a negative serial") << QByteArray("-1") << day << 0LL << readDay;
        QTest::newRow("a serial that is no number") << QByteArray("12a") << day << 0LL << readDay;
        QTest::newRow("no expiry") << QByteArray("12") << QByteArray() << 12LL << QDateTime();
        QTest::newRow("an expiry in an unknown zone")
            << QByteArray("12") << QByteArray("2027-01-31T12:30:00") << 12LL << QDateTime();
        QTest::newRow("an expiry that is no time") << QByteArray("12") << QByteArray("soon") << 12LL << QDateTime();
        QTest::newRow("a day that does not exist")
            << QByteArray("12") << QByteArray("2027-02-31T12:30:00Z") << 12LL << QDateTime();
    }
    void aFeedHasASerialAndAnExpiry()
    {
        QFETCH(const QByteArray, serial);
        QFETCH(const QByteArray, expiry);
        const auto appcast = readAppcast(feedText({}, serial, expiry));
        QVERIFY(appcast);
        QTEST(appcast->serial, "readSerial");
        QTEST(appcast->expiry, "readExpiry");
    }

    void versionsMayStandAtTheFile()
    {
        const auto items =
            itemsIn(feedText("<item>" + enclosure("sparkle:version=\"200\" sparkle:shortVersionString=\"2.0\"")
                + "</item>" + feedItem("300", enclosure("sparkle:version=\"200\""))));
        QCOMPARE(items->at(0).version, u"200"_s);
        QCOMPARE(items->at(0).displayVersion(), u"2.0"_s);
        QCOMPARE(items->at(1).version, u"300"_s);
        QCOMPARE(items->at(1).displayVersion(), u"300"_s);
    }

    void theHighestVersionIsOffered_data()
    {
        QTest::addColumn<QByteArray>("items");
        QTest::addColumn<QString>("version");
        const QByteArray file = enclosure();
        const QByteArray ours = feedItem("100", file);
        const auto with = [&file](const QByteArray &more) { return feedItem("200", more + file); };
        QTest::newRow("none") << QByteArray() << QString();
        QTest::newRow("newer") << feedItem("101", file) << u"101"_s;
        QTest::newRow("the same") << ours << QString();
        QTest::newRow("the same, written otherwise") << feedItem("100.0", file) << QString();
        QTest::newRow("older") << feedItem("99", file) << QString();
        QTest::newRow("the highest is not the first")
            << QByteArray(feedItem("101", file) + feedItem("103", file) + feedItem("102", file)) << u"103"_s;
        QTest::newRow("of a channel") << with("<sparkle:channel>beta</sparkle:channel>") << QString();
        QTest::newRow("a prerelease") << with("<sparkle:shortVersionString>2.0-rc1</sparkle:shortVersionString>")
                                      << QString();
        QTest::newRow("a prerelease by its build") << feedItem("200b1", file) << QString();
        QTest::newRow("for a newer system")
            << with("<sparkle:minimumSystemVersion>12.1</sparkle:minimumSystemVersion>") << QString();
        QTest::newRow("for this system") << with("<sparkle:minimumSystemVersion>12.0</sparkle:minimumSystemVersion>")
                                         << u"200"_s;
        QTest::newRow("for an odd system")
            << with("<sparkle:minimumSystemVersion>sid</sparkle:minimumSystemVersion>") << u"200"_s;
        QTest::newRow("for another system") << with("<sparkle:os>windows</sparkle:os>") << QString();
        QTest::newRow("for Linux") << with("<sparkle:os>Linux</sparkle:os>") << u"200"_s;
        QTest::newRow("a file for another system") << feedItem("200", enclosure("sparkle:os=\"macos\"")) << QString();
        QTest::newRow("one of two files is for Linux")
            << feedItem("200", enclosure("sparkle:os=\"macos\"") + enclosure("sparkle:os=\"linux\"")) << u"200"_s;
        QTest::newRow("without a file") << feedItem("200", {}) << QString();
        QTest::newRow("without a version") << QByteArray("<item>" + file + "</item>") << QString();
        QTest::newRow("an odd version") << feedItem("latest", file) << QString();
    }
    void theHighestVersionIsOffered()
    {
        QFETCH(const QByteArray, items);
        QFETCH(const QString, version);
        QCOMPARE(offered(items), version);
    }

    void theHighestVersionForANewerSystemIsKnown_data()
    {
        QTest::addColumn<QByteArray>("items");
        QTest::addColumn<QString>("version");
        const QByteArray file = enclosure();
        const QByteArray newer = "<sparkle:minimumSystemVersion>13</sparkle:minimumSystemVersion>" + file;
        const QByteArray same = "<sparkle:minimumSystemVersion>12</sparkle:minimumSystemVersion>" + file;
        QTest::newRow("none") << QByteArray() << QString();
        QTest::newRow("for a newer system") << feedItem("101", newer) << u"101"_s;
        QTest::newRow("the highest is not the first")
            << QByteArray(feedItem("101", newer) + feedItem("103", newer) + feedItem("102", newer)) << u"103"_s;
        QTest::newRow("those for this system do not count")
            << QByteArray(feedItem("101", newer) + feedItem("102", same)) << u"101"_s;
        QTest::newRow("older") << feedItem("99", newer) << QString();
        QTest::newRow("of a channel") << feedItem("200", "<sparkle:channel>beta</sparkle:channel>" + newer)
                                      << QString();
    }
    void theHighestVersionForANewerSystemIsKnown()
    {
        QFETCH(const QByteArray, items);
        QFETCH(const QString, version);
        const auto read = itemsIn(feedText(items));
        QVERIFY(read);
        const auto newest = newestForNewerSystem(*read, running);
        QCOMPARE(newest ? newest->version : QString(), version);
    }

    void aPrereleaseIsOfferedToThoseWhoHaveOne()
    {
        const QByteArray item =
            feedItem("200", "<sparkle:shortVersionString>1.1-rc2</sparkle:shortVersionString>" + enclosure());
        QCOMPARE(offered(item, {u"150"_s, u"1.1-rc1"_s, u"12"_s}), u"200"_s);
        QCOMPARE(offered(item, {u"150"_s, u"1.0"_s, u"12"_s}), QString());
    }

    void aSystemWithoutANumberFits()
    {
        const QByteArray item =
            feedItem("200", "<sparkle:minimumSystemVersion>13</sparkle:minimumSystemVersion>" + enclosure());
        QCOMPARE(offered(item, {u"100"_s, u"1.0"_s, u"rolling"_s}), u"200"_s);
        QCOMPARE(offered(item, {u"100"_s, u"1.0"_s, QString()}), u"200"_s);
        QCOMPARE(offered(item, {u"100"_s, u"1.0"_s, u"12"_s}), QString());
    }

    void whatCannotCheckAFileIsEmpty_data()
    {
        QTest::addColumn<QByteArray>("attributes");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("empty") << QByteArray("length='' tunedeck:signature=''");
        QTest::newRow("no bytes") << QByteArray("length='0'");
        QTest::newRow("fewer than no bytes") << QByteArray("length='-5'");
        QTest::newRow("more than a gigabyte") << QByteArray("length='1073741825'");
        QTest::newRow("no number") << QByteArray("length='10 MB'");
        QTest::newRow("beyond all numbers") << QByteArray("length='99999999999999999999999'");
        QTest::newRow("a short signature") << QByteArray("tunedeck:signature='" + QByteArray(63, 's').toBase64() + "'");
        QTest::newRow("a long signature") << QByteArray("tunedeck:signature='" + QByteArray(65, 's').toBase64() + "'");
        QTest::newRow("no Base64") << QByteArray("tunedeck:signature='" + QByteArray(88, '*') + "'");
        QTest::newRow("another's signature") << QByteArray("signature='" + QByteArray(64, 's').toBase64()
            + "' sparkle:signature='" + QByteArray(64, 's').toBase64() + "'");
        QTest::newRow("a short hash") << QByteArray("tunedeck:sha512='" + QByteArray(63, 'h').toBase64() + "'");
        QTest::newRow("a long hash") << QByteArray("tunedeck:sha512='" + QByteArray(65, 'h').toBase64() + "'");
    }
    void whatCannotCheckAFileIsEmpty()
    {
        QFETCH(const QByteArray, attributes);
        const auto items =
            itemsIn(feedText(feedItem("200", "<enclosure url='https://tunedeck.example/t' " + attributes + "/>")));
        QCOMPARE(items->size(), 1);
        QCOMPARE(items->at(0).length, 0);
        QCOMPARE(items->at(0).sha512, QByteArray());
        QCOMPARE(items->at(0).signature, QByteArray());
        QCOMPARE(items->at(0).statement().text(), QByteArray());
    }

    void whatIsNoFeedIsNone_data()
    {
        QTest::addColumn<QByteArray>("xml");
        const QByteArray good = feedText(feedItem("200", enclosure()));
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("a text") << QByteArray("Not found");
        QTest::newRow("a page") << QByteArray("<html><body>Sign in</body></html>");
        QTest::newRow("cut") << good.chopped(10);
        QTest::newRow("more than one") << QByteArray(good + good.mid(good.indexOf("<rss")));
        QTest::newRow("tags that cross") << feedText("<item><a><b></a></b></item>");
        QTest::newRow("a prefix of nobody") << QByteArray(good).replace("xmlns:sparkle", "xmlns:other");
        QTest::newRow("not UTF-8") << feedText("<item>\xff</item>");
        QTest::newRow("a document type") << QByteArray("<!DOCTYPE rss>" + good.mid(good.indexOf("<rss")));
        QTest::newRow("entities") << QByteArray("<!DOCTYPE rss [<!ENTITY a 'b'>]>" + good.mid(good.indexOf("<rss")));
        QTest::newRow("a document type in small letters")
            << QByteArray("<!doctype rss>" + good.mid(good.indexOf("<rss")));
        QTest::newRow("a document type after the feed") << QByteArray(good + "<!DOCTYPE rss>");
        QTest::newRow("a declaration in the feed") << feedText("<!ENTITY a 'b'>");
        QTest::newRow("a long tag") << feedText("<item " + QByteArray(2'048, ' ') + "/>");
        QTest::newRow("a long tag with ends in quotes") << feedText("<item a='" + QByteArray(2'048, '>') + "'/>");
        QTest::newRow("a long tag at the end of an element") << feedText("<item></item" + QByteArray(2'048, ' ') + ">");
        QTest::newRow("65 deep") << nested(65);
        QTest::newRow("65 deep within many others") << feedText(QByteArray("<b></b>").repeated(100) + deep(63));
    }
    void whatIsNoFeedIsNone()
    {
        QFETCH(const QByteArray, xml);
        QCOMPARE(itemsIn(xml).has_value(), false);
    }

    void whatCouldTakeLongIsRefusedAtOnce_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QByteArray laughs = "<!DOCTYPE rss [<!ENTITY l0 'ha'>";
        for (int level = 1; level < 30; ++level) {
            const QByteArray lower = "&l" + QByteArray::number(level - 1) + ';';
            laughs += "<!ENTITY l" + QByteArray::number(level) + " '" + lower.repeated(10) + "'>";
        }
        QByteArray types = "<!DOCTYPE rss [";
        for (int number = 0; types.size() < 1'000'000; ++number) {
            types += "<!ATTLIST r a" + QByteArray::number(number) + " CDATA 'b'>";
        }
        QTest::newRow("a megabyte of document types") << QByteArray(types + "]><rss><channel></channel></rss>");
        // The comment begins with "<!--", and its end comes after that.
        QTest::newRow("document types between comments")
            << QByteArray("<!--><![CDATA[ -->" + types + "]><!-- ]]> --><rss><channel></channel></rss>");
        QTest::newRow("an entity bomb") << QByteArray(laughs + "]><rss><channel>&l29;</channel></rss>");
        QByteArray attributes;
        for (int number = 0; attributes.size() < 900'000; ++number) {
            attributes += " a" + QByteArray::number(number) + "=''";
        }
        QTest::newRow("a tag of many attributes") << feedText("<item" + attributes + "/>");
        QTest::newRow("a tag after a comment in quotes") << feedText("<item b='<!--'" + attributes + "/><!-- -->");
        QTest::newRow("a tag after an instruction with a quote") << feedText("<?x \" ?><item" + attributes + "/>");
    }
    void whatCouldTakeLongIsRefusedAtOnce()
    {
        QFETCH(const QByteArray, xml);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(itemsIn(xml).has_value(), false);
        QVERIFY2(timer.elapsed() < 2'000, qPrintable(QString::number(timer.elapsed())));
    }

    void whatKeepsTheBoundsIsAFeed_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::newRow("64 deep") << nested(64);
        QTest::newRow("many beside each other") << feedText(QByteArray("<b></b><c/>").repeated(1'000));
        QTest::newRow("a tag of 2,048 characters") << feedText("<item " + QByteArray(2'048 - 8, ' ') + "/>");
        QTest::newRow("a document type in notes")
            << feedText(feedItem("200", "<description><![CDATA[<!DOCTYPE html><p>]]></description>" + enclosure()));
        QTest::newRow("a document type in a comment") << feedText("<!-- <!DOCTYPE rss> -->");
    }
    void whatKeepsTheBoundsIsAFeed()
    {
        QFETCH(const QByteArray, xml);
        QVERIFY(itemsIn(xml).has_value());
    }

    void noTextTurnsTheTextAroundIt()
    {
        const auto items = itemsIn(feedText(
            feedItem("2\u202E00",
                "<sparkle:shortVersionString>\u202A2.\u2066\u20690\u202C</sparkle:shortVersionString>"
                "<sparkle:minimumSystemVersion>&#x202D;12</sparkle:minimumSystemVersion>"
                    + enclosure())
            + "<item>" + enclosure("sparkle:version='3\u202B00' sparkle:shortVersionString='&#8295;3'") + "</item>"));
        QCOMPARE(items->at(0).version, u"200"_s);
        QCOMPARE(items->at(0).shortVersion, u"2.0"_s);
        QCOMPARE(items->at(0).minimumSystemVersion, u"12"_s);
        QCOMPARE(items->at(1).version, u"300"_s);
        QCOMPARE(items->at(1).shortVersion, u"3"_s);
    }

    void textsAreCut()
    {
        const auto items = itemsIn(feedText(feedItem(QByteArray(10'000, '1'),
            "<description>" + QByteArray(100'000, 'n')
                + "</description>"
                  "<enclosure url='https://tunedeck.example/"
                + QByteArray(1'900, 'u') + "'/>")));
        QCOMPARE(items->at(0).version.size(), 100);
        QCOMPARE(items->at(0).releaseNotes.size(), 65'536);
        QCOMPARE(items->at(0).url.toEncoded().size(), 1'500);
    }

    void ofManyItemsAThousandAreRead()
    {
        QByteArray items;
        for (int number = 1; number <= 1'500; ++number) {
            items += feedItem(QByteArray::number(number), enclosure());
        }
        QCOMPARE(itemsIn(feedText(items))->size(), 1'000);
        QCOMPARE(offered(items), u"1000"_s);
    }

    void elementsThatAreNotKnownArePassedOver()
    {
        QCOMPARE(offered(feedItem("200", deep(60) + enclosure())), u"200"_s);
        QCOMPARE(offered(feedItem("200", "<description>" + deep(60) + "</description>" + enclosure())), u"200"_s);
    }

    void anyInputKeepsTheBounds()
    {
        constexpr quint32 seed = 20'261'121;
        qInfo("The seed is %u.", seed);
        QRandomGenerator random(seed);
        const QByteArray good =
            feedText(feedItem("200",
                         "<sparkle:os>linux</sparkle:os><description><![CDATA[<b>New</b>]]></description>"
                             + enclosure("tunedeck:signature=\"" + QByteArray(64, 's').toBase64() + "\""))
                + feedItem("300", "<!-- none -->" + enclosure("sparkle:os='windows'")));
        constexpr int inputs = 20'000;
        int understood = 0;
        int notUnderstood = 0;
        for (int input = 0; input < inputs; ++input) {
            const auto items = itemsIn(mutated(good, random));
            ++(items ? understood : notUnderstood);
            for (const AppcastItem &item : items.value_or(QList<AppcastItem>())) {
                QVERIFY(item.version.size() <= 100 && item.shortVersion.size() <= 100 && item.channel.size() <= 100);
                QVERIFY(item.releaseNotes.size() <= 65'536);
                QVERIFY(item.length >= 0 && item.length <= 1'073'741'824);
                QVERIFY(item.sha512.isEmpty() || item.sha512.size() == 64);
                QVERIFY(item.signature.isEmpty() || item.signature.size() == 64);
                QVERIFY(!item.url.isEmpty());
            }
            static_cast<void>(newestUpdate(items.value_or(QList<AppcastItem>()), running));
        }
        QVERIFY(understood > 10);
        QVERIFY(notUnderstood > 10);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::AppcastTest, QCoreApplication)
#include "AppcastTest.moc"

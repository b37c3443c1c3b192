// SPDX-License-Identifier: MIT
#include "audio/decodedInfo.h"
#include "support/registerTest.h"

#include <pulse/proplist.h>

#include <QCoreApplication>
#include <QTest>

#include <memory>

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {
using Properties = std::unique_ptr<pa_proplist, decltype(&pa_proplist_free)>;

Properties properties(const QList<std::pair<QByteArray, QByteArray>> &values)
{
    Properties list(pa_proplist_new(), &pa_proplist_free);
    for (const auto &[key, value] : values) {
        pa_proplist_sets(list.get(), key.constData(), value.constData());
    }
    return list;
}

pa_sink_info sink(const char *name, const char *description, const Properties &list)
{
    pa_sink_info info = {};
    info.name = name;
    info.description = description;
    info.proplist = list.get();
    return info;
}
} // namespace

class decodedInfoTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anOutputHasItsDescriptionAsAName()
    {
        const Properties list = properties({{"device.bus", "usb"}});
        const std::optional<SoundOutput> output = decodedOutput(sink("alsa.7", "Headphones", list));
        QCOMPARE(output, (SoundOutput{.id = u"alsa.7"_s, .name = u"Headphones"_s, .kind = SoundOutput::Kind::Usb}));
    }

    void aNameOfAnOutputIsOneShortPlainLine_data()
    {
        QTest::addColumn<QByteArray>("description");
        QTest::addColumn<QString>("name");
        QTest::newRow("control characters") << QByteArray("A\nB\x1b[31m") << u"A B [31m"_s;
        QTest::newRow("overrides") << QByteArray("Left\xe2\x80\xaetfeL") << u"LefttfeL"_s;
        QTest::newRow("1 MB") << QByteArray(1'000'000, 'x') << QString(59, u'x') + u'…';
        QTest::newRow("not UTF-8") << QByteArray("a\xff\xfe") << u"a\ufffd\ufffd"_s;
        QTest::newRow("empty") << QByteArray() << u"sink"_s;
        QTest::newRow("invisible") << QByteArray("\xe2\x80\x8b") << u"sink"_s;
    }
    void aNameOfAnOutputIsOneShortPlainLine()
    {
        QFETCH(const QByteArray, description);
        const std::optional<SoundOutput> output = decodedOutput(sink("sink", description.constData(), properties({})));
        QVERIFY(output);
        QTEST(output->name, "name");
    }

    void anOutputWhoseIdentifierIsTooLongIsLeftOut()
    {
        const QByteArray longName(1'000'000, 'x');
        QCOMPARE(decodedOutput(sink(longName.constData(), "Kitchen", properties({}))), std::nullopt);
        QCOMPARE(decodedOutput(sink(nullptr, nullptr, properties({}))), std::nullopt);
        QCOMPARE(decodedOutput(sink("", "Kitchen", properties({}))), std::nullopt);
    }

    void aProcessThatIsNoNumberIsNone_data()
    {
        QTest::addColumn<QByteArray>("claim");
        QTest::newRow("text") << QByteArray("mine");
        QTest::newRow("negative") << QByteArray("-1");
        QTest::newRow("beyond 64 bits") << QByteArray("99999999999999999999");
        QTest::newRow("1 MB") << QByteArray(1'000'000, '1');
    }
    void aProcessThatIsNoNumberIsNone()
    {
        QFETCH(const QByteArray, claim);
        const Properties list = properties({{PA_PROP_APPLICATION_PROCESS_ID, claim}});
        pa_client_info info = {};
        info.proplist = list.get();
        QCOMPARE(decodedClient(info).claimedProcess, 0);
    }

    void theProcessOfPipeWiresOwnServerIsNotTheClients()
    {
        const Properties through = properties(
            {{"client.api", "pipewire-pulse"}, {"pipewire.sec.pid", "950"}, {PA_PROP_APPLICATION_PROCESS_ID, "800"}});
        pa_client_info info = {};
        info.proplist = through.get();
        QCOMPARE(decodedClient(info).vouchedProcess, 0);
        QCOMPARE(decodedClient(info).claimedProcess, 800);
        const Properties itself = properties({{"pipewire.sec.pid", "850"}});
        info.proplist = itself.get();
        QCOMPARE(decodedClient(info).vouchedProcess, 850);
    }

    void aStreamLacksNothingThatItsClientSays()
    {
        const StreamOrigin client{
            .claimedProcess = 8, .vouchedProcess = 9, .sandbox = u"a"_s, .application = u"b"_s, .binary = u"c"_s};
        const StreamOrigin bare{.stream = 1, .client = 2};
        QCOMPARE(completedOrigin(bare, client),
            (StreamOrigin{.stream = 1,
                .client = 2,
                .claimedProcess = 8,
                .vouchedProcess = 9,
                .sandbox = u"a"_s,
                .application = u"b"_s,
                .binary = u"c"_s}));
    }

    void aStreamMayNotClaimAnotherSandboxThanItsClients()
    {
        const StreamOrigin liar{.stream = 1, .client = 2, .sandbox = u"org.example.Victim"_s};
        QCOMPARE(completedOrigin(liar, {.sandbox = u"org.example.Flat"_s}).sandbox, u"org.example.Flat"_s);
    }

    void theSoundOfAButtonIsNoMusic()
    {
        const Properties list = properties({{PA_PROP_MEDIA_ROLE, "event"}});
        pa_sink_input_info info = {};
        info.proplist = list.get();
        QVERIFY(isEventSound(info));
        const Properties music = properties({{PA_PROP_MEDIA_ROLE, "music"}});
        info.proplist = music.get();
        QVERIFY(!isEventSound(info));
    }
};

TUNEDECK_TEST(decodedInfoTest, QCoreApplication)

#include "decodedInfoTest.moc"

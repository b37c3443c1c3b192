// SPDX-License-Identifier: MIT
#include "audio/outputKind.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QTest>

using namespace tunedeck;
using namespace Qt::StringLiterals;
using Kind = SoundOutput::Kind;

Q_DECLARE_METATYPE(tunedeck::OutputFacts)

class outputKindTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theKindIsThatOfTheFirstRuleThatFits_data()
    {
        QTest::addColumn<OutputFacts>("facts");
        QTest::addColumn<Kind>("kind");
        const auto named = [](const QString &name) { return OutputFacts{.name = name}; };
        const auto with = [](const QString &key, const QString &value) {
            return OutputFacts{.name = u"sink"_s, .properties = {{key, value}}};
        };
        QTest::newRow("AirPlay, PulseAudio")
            << OutputFacts{.name = u"kitchen"_s, .driver = u"module-raop-sink.c"_s} << Kind::AirPlay;
        QTest::newRow("AirPlay, PulseAudio, by name") << named(u"raop_output.Kitchen.local"_s) << Kind::AirPlay;
        QTest::newRow("AirPlay, PipeWire") << named(u"raop_sink.Kitchen.local.192.168.1.7.7000"_s) << Kind::AirPlay;
        QTest::newRow("AirPlay, older PipeWire") << named(u"raop-sink-1234-28"_s) << Kind::AirPlay;
        QTest::newRow("AirPlay that is on the network, too")
            << OutputFacts{.name = u"raop_sink.x"_s, .isNetwork = true} << Kind::AirPlay;
        QTest::newRow("tunnel") << OutputFacts{.name = u"tunnel"_s, .isNetwork = true} << Kind::Network;
        QTest::newRow("network, PipeWire") << with(u"node.network"_s, u"true"_s) << Kind::Network;
        QTest::newRow("not on the network") << with(u"node.network"_s, u"false"_s) << Kind::Computer;
        QTest::newRow("Bluetooth, PulseAudio") << with(u"device.bus"_s, u"bluetooth"_s) << Kind::Bluetooth;
        QTest::newRow("Bluetooth, PipeWire") << with(u"device.api"_s, u"bluez5"_s) << Kind::Bluetooth;
        QTest::newRow("Bluetooth by its codec") << with(u"api.bluez5.codec"_s, u"sbc"_s) << Kind::Bluetooth;
        QTest::newRow("Bluetooth by name") << named(u"bluez_output.AA_BB_CC.1"_s) << Kind::Bluetooth;
        QTest::newRow("HDMI by its port") << OutputFacts{.isActivePortHdmi = true} << Kind::Hdmi;
        QTest::newRow("HDMI by the port's name") << OutputFacts{.activePort = u"hdmi-output-0"_s} << Kind::Hdmi;
        QTest::newRow("HDMI by profile") << with(u"device.profile.name"_s, u"HiFi: HDMI1: sink"_s) << Kind::Hdmi;
        QTest::newRow("HDMI by name") << named(u"alsa_output.pci-0000_01_00.1.hdmi-stereo"_s) << Kind::Hdmi;
        QTest::newRow("USB") << with(u"device.bus"_s, u"usb"_s) << Kind::Usb;
        QTest::newRow("USB by name") << named(u"alsa_output.usb-Maker_Thing-00.analog-stereo"_s) << Kind::Usb;
        QTest::newRow("built in") << named(u"alsa_output.pci-0000_00_1f.3.analog-stereo"_s) << Kind::Computer;
        QTest::newRow("null sink") << OutputFacts{.name = u"null"_s, .driver = u"module-null-sink.c"_s}
                                   << Kind::Computer;
    }
    void theKindIsThatOfTheFirstRuleThatFits()
    {
        QFETCH(const OutputFacts, facts);
        QTEST(outputKind(facts), "kind");
    }
};

TUNEDECK_TEST(outputKindTest, QCoreApplication)

#include "outputKindTest.moc"

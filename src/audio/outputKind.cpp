// SPDX-License-Identifier: MIT
#include "audio/outputKind.h"

#include <QStringList>

#include <algorithm>

namespace tunedeck {

namespace {
bool isAirPlay(const OutputFacts &output)
{
    // PipeWire names the sink "raop_sink" or "raop-sink" by its version, and does not say that it is on the network.
    return output.driver == QLatin1String("module-raop-sink.c") || output.name.startsWith(QLatin1String("raop_"))
        || output.name.startsWith(QLatin1String("raop-"));
}

bool isNetwork(const OutputFacts &output)
{
    return output.isNetwork || output.properties.value(QStringLiteral("node.network")) == QLatin1String("true");
}

bool isBluetooth(const OutputFacts &output)
{
    return output.properties.value(QStringLiteral("device.bus")) == QLatin1String("bluetooth")
        || output.properties.value(QStringLiteral("device.api")) == QLatin1String("bluez5")
        || output.properties.contains(QStringLiteral("api.bluez5.codec"))
        || output.name.startsWith(QLatin1String("bluez_"));
}

bool isHdmi(const OutputFacts &output)
{
    const QStringList texts{
        output.activePort, output.properties.value(QStringLiteral("device.profile.name")), output.name};
    return output.isActivePortHdmi || std::ranges::any_of(texts, [](const QString &text) {
        return text.contains(QLatin1String("hdmi"), Qt::CaseInsensitive);
    });
}

bool isUsb(const OutputFacts &output)
{
    return output.properties.value(QStringLiteral("device.bus")) == QLatin1String("usb")
        || output.name.startsWith(QLatin1String("alsa_output.usb-"));
}
} // namespace

SoundOutput::Kind outputKind(const OutputFacts &output)
{
    using Kind = SoundOutput::Kind;
    if (isAirPlay(output)) {
        return Kind::AirPlay;
    }
    if (isNetwork(output)) {
        return Kind::Network;
    }
    if (isBluetooth(output)) {
        return Kind::Bluetooth;
    }
    if (isHdmi(output)) {
        return Kind::Hdmi;
    }
    return isUsb(output) ? Kind::Usb : Kind::Computer;
}

} // namespace tunedeck

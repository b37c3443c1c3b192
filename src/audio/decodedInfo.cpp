// SPDX-License-Identifier: MIT
#include "audio/decodedInfo.h"

#include "audio/outputKind.h"
#include "music/menuText.h"

#include <pulse/proplist.h>

#include <QByteArray>

namespace tunedeck {

namespace {
constexpr uint longestText = 1'000; // bytes

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes, qsizetype(qstrnlen(bytes, longestText)));
}

QString property(const pa_proplist *properties, const char *key)
{
    return text(pa_proplist_gets(properties, key));
}

qint64 processIn(const pa_proplist *properties, const char *key)
{
    const qint64 process = property(properties, key).toLongLong();
    return process > 0 ? process : 0;
}

StreamOrigin originIn(const pa_proplist *properties)
{
    return {.claimedProcess = processIn(properties, PA_PROP_APPLICATION_PROCESS_ID),
        .sandbox = property(properties, "pipewire.access.portal.app_id"),
        .application = property(properties, PA_PROP_APPLICATION_NAME),
        .binary = property(properties, PA_PROP_APPLICATION_PROCESS_BINARY)};
}

OutputFacts factsOf(const pa_sink_info &info)
{
    OutputFacts facts{.name = text(info.name),
        .driver = text(info.driver),
        .isNetwork = (info.flags & PA_SINK_NETWORK) != 0,
        .activePort = info.active_port ? text(info.active_port->name) : QString(),
        .isActivePortHdmi = info.active_port && info.active_port->type == PA_DEVICE_PORT_TYPE_HDMI,
        .properties = {}};
    for (const char *key : {"device.api", "device.bus", "device.profile.name", "api.bluez5.codec", "node.network"}) {
        if (pa_proplist_contains(info.proplist, key) > 0) {
            facts.properties.insert(QString::fromLatin1(key), property(info.proplist, key));
        }
    }
    return facts;
}
} // namespace

SoundStream decodedStream(const pa_sink_input_info &info)
{
    SoundStream stream{.origin = originIn(info.proplist),
        .output = info.sink,
        .volume = info.volume,
        .balance = info.volume,
        .canSetVolume = info.has_volume != 0 && info.volume_writable != 0,
        .isMuted = info.mute != 0,
        .isCorked = info.corked != 0};
    stream.origin.stream = info.index;
    stream.origin.client = info.client;
    return stream;
}

StreamOrigin decodedClient(const pa_client_info &info)
{
    StreamOrigin origin = originIn(info.proplist);
    origin.client = info.index;
    // PipeWire's PulseAudio server is what the kernel sees of the clients that speak to that.
    if (property(info.proplist, "client.api") != QLatin1String("pipewire-pulse")) {
        origin.vouchedProcess = processIn(info.proplist, "pipewire.sec.pid");
    }
    return origin;
}

StreamOrigin completedOrigin(const StreamOrigin &stream, const StreamOrigin &client)
{
    StreamOrigin origin = stream;
    origin.vouchedProcess = client.vouchedProcess;
    if (origin.claimedProcess == 0) {
        origin.claimedProcess = client.claimedProcess;
    }
    if (!client.sandbox.isEmpty()) {
        origin.sandbox = client.sandbox;
    }
    if (origin.application.isEmpty()) {
        origin.application = client.application;
    }
    if (origin.binary.isEmpty()) {
        origin.binary = client.binary;
    }
    return origin;
}

std::optional<SoundOutput> decodedOutput(const pa_sink_info &info)
{
    if (!info.name || qstrnlen(info.name, longestText) == longestText || info.name[0] == '\0') {
        return std::nullopt;
    }
    const OutputFacts facts = factsOf(info);
    const QString description = menuText(text(info.description));
    const QString name = description.isEmpty() ? menuText(facts.name) : description;
    return name.isEmpty() ? std::nullopt
                          : std::optional(SoundOutput{.id = facts.name, .name = name, .kind = outputKind(facts)});
}

bool isEventSound(const pa_sink_input_info &info)
{
    return property(info.proplist, PA_PROP_MEDIA_ROLE) == QLatin1String("event");
}

} // namespace tunedeck

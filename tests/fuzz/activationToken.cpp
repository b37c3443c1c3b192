// SPDX-License-Identifier: MIT
#include "platform/ActivationToken.h"

#include "require.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QString>
#include <QVariantMap>

#include <algorithm>

using namespace tunedeck;
using fuzz::require;

namespace {
constexpr quint32 tenMinutes = 10 * 60 * 1'000; // milliseconds

void checkText(const QString &text)
{
    require(text.size() <= 1'000, "a token is short");
    require(std::none_of(
                text.begin(), text.end(), [](QChar character) { return character.category() == QChar::Other_Control; }),
        "a token has no control characters");
}

void checkTime(const ActivationToken &token, quint32 now)
{
    const std::optional<quint32> time = token.userTime(now);
    if (time) {
        require(*time != 0, "no time is zero");
        require(now - *time <= tenMinutes, "a start was in the last ten minutes");
        require(token.x11StartupId.endsWith(QString::number(*time)), "the startup id names the time");
    }
}

void check(const ActivationToken &token)
{
    checkText(token.x11StartupId);
    checkText(token.waylandToken);
    const ActivationToken again = ActivationToken::fromPlatformData(token.platformData());
    require(again.x11StartupId == token.x11StartupId, "a token arrives as it was sent");
    require(again.waylandToken == token.waylandToken || token.waylandToken.isEmpty(), "both tokens arrive");
    for (const quint32 now : {0U, 1U, 123'456'789U, 4'294'967'295U}) {
        checkTime(token, now);
    }
}

/// An environment variable ends at a zero byte.
void put(const char *name, const QByteArray &value)
{
    qputenv(name, QByteArray(value.constData()));
}
} // namespace

/// The first line is the startup id, the second one the token of Wayland.
int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayList lines = QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)).split('\n');
    const QVariantMap sent{{QStringLiteral("desktop-startup-id"), QString::fromUtf8(lines.value(0))},
        {QStringLiteral("activation-token"), QString::fromUtf8(lines.value(1))}};
    check(ActivationToken::fromPlatformData(sent));

    put("DESKTOP_STARTUP_ID", lines.value(0));
    put("XDG_ACTIVATION_TOKEN", lines.value(1));
    const ActivationToken token = ActivationToken::takeFromEnvironment();
    check(token);
    require(!qEnvironmentVariableIsSet("DESKTOP_STARTUP_ID") && !qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"),
        "no other program takes the token");
    return 0;
}

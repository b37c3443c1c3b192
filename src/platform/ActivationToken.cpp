// SPDX-License-Identifier: MIT
#include "platform/ActivationToken.h"

#include <algorithm>

namespace tunedeck {

namespace {
constexpr int longestText = 1'000;
constexpr quint32 longestStart = 10 * 60 * 1'000; // milliseconds
constexpr QLatin1String idKey("desktop-startup-id");
constexpr QLatin1String tokenKey("activation-token");
constexpr char idVariable[] = "DESKTOP_STARTUP_ID";
constexpr char tokenVariable[] = "XDG_ACTIVATION_TOKEN";

bool isControl(QChar character)
{
    return character.category() == QChar::Other_Control;
}

/// Empty if `text` is not valid.
QString validText(const QString &text)
{
    const bool isValid = text.size() <= longestText && std::ranges::none_of(text, isControl);
    return isValid ? text : QString();
}

QString takeVariable(const char *name)
{
    const QString text = qEnvironmentVariable(name);
    qunsetenv(name);
    return validText(text);
}

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}
} // namespace

ActivationToken ActivationToken::takeFromEnvironment()
{
    return {takeVariable(idVariable), takeVariable(tokenVariable)};
}

ActivationToken ActivationToken::fromPlatformData(const QVariantMap &platformData)
{
    ActivationToken token{
        validText(platformData.value(idKey).toString()), validText(platformData.value(tokenKey).toString())};
    // Older desktops send the Wayland token as the startup id.
    if (token.waylandToken.isEmpty()) {
        token.waylandToken = token.x11StartupId;
    }
    return token;
}

QVariantMap ActivationToken::platformData() const
{
    QVariantMap data;
    if (!x11StartupId.isEmpty()) {
        data.insert(idKey, x11StartupId);
    }
    if (!waylandToken.isEmpty()) {
        data.insert(tokenKey, waylandToken);
    }
    return data;
}

std::optional<quint32> ActivationToken::userTime(quint32 now) const
{
    const QString mark = QStringLiteral("_TIME");
    const qsizetype place = x11StartupId.lastIndexOf(mark);
    const QStringView digits = place < 0 ? QStringView() : QStringView(x11StartupId).sliced(place + mark.size());
    bool isNumber = false;
    const quint32 time = digits.toUInt(&isNumber);
    // toUInt() accepts a sign; and zero means no time on X11.
    const bool isTime = isNumber && time != 0 && std::ranges::all_of(digits, isDigit);
    // A time in the future is a very long time ago on this clock.
    return isTime && now - time <= longestStart ? std::optional(time) : std::nullopt;
}

} // namespace tunedeck

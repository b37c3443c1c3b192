// SPDX-License-Identifier: MIT
#include "platform/ActivationToken.h"

#include <algorithm>

namespace tunedeck {

namespace {
constexpr int longestRight = 1'000;
constexpr QLatin1String idKey("desktop-startup-id");
constexpr QLatin1String tokenKey("activation-token");
constexpr char idVariable[] = "DESKTOP_STARTUP_ID";
constexpr char tokenVariable[] = "XDG_ACTIVATION_TOKEN";

bool isControl(QChar character)
{
    return character.category() == QChar::Other_Control;
}

/// Empty where `text` can be none.
QString validRight(const QString &text)
{
    const bool isOne = text.size() <= longestRight && std::ranges::none_of(text, isControl);
    return isOne ? text : QString();
}

QString takeVariable(const char *name)
{
    const QString text = qEnvironmentVariable(name);
    qunsetenv(name);
    return validRight(text);
}

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}
} // namespace

Startup Startup::takeFromEnvironment()
{
    return {takeVariable(idVariable), takeVariable(tokenVariable)};
}

Startup Startup::fromPlatformData(const QVariantMap &platformData)
{
    Startup startup{
        validRight(platformData.value(idKey).toString()), validRight(platformData.value(tokenKey).toString())};
    // Desktops that know no tokens yet have them in the startup id.
    if (startup.token.isEmpty()) {
        startup.token = startup.id;
    }
    return startup;
}

QVariantMap Startup::platformData() const
{
    QVariantMap data;
    if (!id.isEmpty()) {
        data.insert(idKey, id);
    }
    if (!token.isEmpty()) {
        data.insert(tokenKey, token);
    }
    return data;
}

std::optional<quint32> Startup::userTime() const
{
    const QString mark = QStringLiteral("_TIME");
    const qsizetype place = id.lastIndexOf(mark);
    const QStringView digits = place < 0 ? QStringView() : QStringView(id).sliced(place + mark.size());
    bool isNumber = false;
    const quint32 time = digits.toUInt(&isNumber);
    // A number could have a sign as well; and zero is X11's word for no time.
    return isNumber && time != 0 && std::ranges::all_of(digits, isDigit) ? std::optional(time) : std::nullopt;
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "music/mpris/report/PropertyTypes.h"

#include "music/mpris/bus/playersLog.h"

#include <QDBusMetaType>

#include <string_view>

namespace tunedeck {

namespace {

struct ExpectedType {
    QLatin1String key;
    const char *signature;
};

constexpr ExpectedType playerTypes[] = {{QLatin1String("PlaybackStatus"), "s"}, {QLatin1String("LoopStatus"), "s"},
    {QLatin1String("Shuffle"), "b"}, {QLatin1String("Metadata"), "a{sv}"}, {QLatin1String("Position"), "x"},
    {QLatin1String("Rate"), "d"}, {QLatin1String("Volume"), "d"}, {QLatin1String("CanControl"), "b"},
    {QLatin1String("CanPause"), "b"}, {QLatin1String("CanSeek"), "b"}, {QLatin1String("CanGoNext"), "b"},
    {QLatin1String("CanGoPrevious"), "b"}};

// The list leaves out mpris:trackid: its plain value is a text, whether it came as a path or as a text.
constexpr ExpectedType metadataTypes[] = {{QLatin1String("mpris:length"), "x"}, {QLatin1String("xesam:url"), "s"},
    {QLatin1String("xesam:title"), "s"}, {QLatin1String("xesam:artist"), "as"}, {QLatin1String("xesam:album"), "s"},
    {QLatin1String("xesam:genre"), "as"}};

/// "?" for a type that has no signature on the bus.
std::string_view signatureOf(const QVariant &value)
{
    const char *signature = QDBusMetaType::typeToSignature(value.metaType());
    return signature ? signature : "?";
}

} // namespace

PropertyTypes::PropertyTypes(const QString &player)
    : m_player(player)
{
}

void PropertyTypes::check(const QVariantMap &properties)
{
    if (!playersLog().isDebugEnabled()) {
        return;
    }
    for (const auto &[key, signature] : playerTypes) {
        check(properties, key, signature);
    }
    const QVariantMap metadata = properties.value(QStringLiteral("Metadata")).toMap();
    for (const auto &[key, signature] : metadataTypes) {
        check(metadata, key, signature);
    }
}

void PropertyTypes::check(const QVariantMap &map, const QString &key, const char *expected)
{
    const auto found = map.constFind(key);
    if (found == map.cend() || m_logged.contains(key)) {
        return;
    }
    if (const std::string_view actual = signatureOf(*found); actual != expected) {
        m_logged.insert(key);
        qCDebug(playersLog).noquote() << loggable(m_player) << "sends" << key << "with the type"
                                      << QLatin1String(actual.data(), actual.size()) << "instead of" << expected;
    }
}

} // namespace tunedeck

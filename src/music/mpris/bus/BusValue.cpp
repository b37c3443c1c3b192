// SPDX-License-Identifier: MIT
#include "music/mpris/bus/BusValue.h"

#include "platform/directionControls.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusSignature>
#include <QDBusVariant>
#include <QList>
#include <QVariantList>
#include <QVariantMap>

#include <cmath>

namespace tunedeck::bus {

namespace {

constexpr int maximumDepth = 8;
/// The messages that players send have up to three.
constexpr qsizetype maximumArguments = 8;

/// Unpacks a value as far as it is kept. QtDBus would unpack a list of texts in a variant as a whole: 30 megabytes of
/// them take a second and 200 megabytes.
class Unpacking {
public:
    [[nodiscard]] QVariant plain(const QVariant &value, int depth)
    {
        if (depth > maximumDepth) {
            return {};
        }
        switch (const QMetaType type = value.metaType(); type.id()) {
        case QMetaType::QString:
            return cut(value.toString());
        case QMetaType::QByteArray:
            return cut(value.toByteArray());
        case QMetaType::QStringList:
            return cutList(value.value<QStringList>());
        default:
            return plainOfBus(value, type, depth);
        }
    }

private:
    /// For a copy that does not hold on to the whole.
    template <typename Text> static Text cut(const Text &text)
    {
        return text.size() > longestRawText ? text.left(longestRawText) : text;
    }

    [[nodiscard]] QStringList cutList(const QStringList &texts)
    {
        QStringList list;
        const QStringList taken = texts.mid(0, maximumElements);
        for (const QString &text : taken) {
            if (!takeOne()) {
                break;
            }
            list.append(cut(text));
        }
        return list;
    }

    [[nodiscard]] QVariant plainOfBus(const QVariant &value, QMetaType type, int depth)
    {
        if (type == QMetaType::fromType<QDBusVariant>()) {
            return plain(value.value<QDBusVariant>().variant(), depth + 1);
        }
        if (type == QMetaType::fromType<QDBusArgument>()) {
            return plainArgument(value.value<QDBusArgument>(), depth);
        }
        if (type == QMetaType::fromType<QDBusObjectPath>()) {
            return cut(value.value<QDBusObjectPath>().path());
        }
        if (type == QMetaType::fromType<QDBusSignature>()) {
            return value.value<QDBusSignature>().signature();
        }
        return value;
    }

    /// Reads the current element. Every container that is begun must be ended, or it leaks with its message.
    [[nodiscard]] QVariant plainArgument(const QDBusArgument &argument, int depth)
    {
        switch (argument.currentType()) {
        case QDBusArgument::MapType: {
            argument.beginMap();
            const QVariantMap map = depth > maximumDepth ? QVariantMap() : entries(argument, depth);
            argument.endMap();
            return depth > maximumDepth ? QVariant() : map;
        }
        case QDBusArgument::ArrayType: {
            argument.beginArray();
            const QVariantList list = depth > maximumDepth ? QVariantList() : elements(argument, depth);
            argument.endArray();
            return depth > maximumDepth ? QVariant() : list;
        }
        case QDBusArgument::StructureType: {
            argument.beginStructure();
            const QVariantList list = depth > maximumDepth ? QVariantList() : elements(argument, depth);
            argument.endStructure();
            return depth > maximumDepth ? QVariant() : list;
        }
        case QDBusArgument::VariantType: {
            // QtDBus enters any container so, also the one that a variant is on the bus.
            argument.beginStructure();
            const QVariant value = depth > maximumDepth ? QVariant() : plainArgument(argument, depth + 1);
            argument.endStructure();
            return value;
        }
        case QDBusArgument::BasicType:
            return basic(argument, depth);
        case QDBusArgument::MapEntryType:
        case QDBusArgument::UnknownType:
            return {};
        }
        return {};
    }

    [[nodiscard]] QVariant basic(const QDBusArgument &argument, int depth)
    {
        if (argument.currentSignature() != u"as") {
            return plain(argument.asVariant(), depth);
        }
        QStringList texts;
        argument.beginArray();
        while (texts.size() < maximumElements && !argument.atEnd() && takeOne()) {
            texts.append(cut(argument.asVariant().toString()));
        }
        argument.endArray();
        return depth > maximumDepth ? QVariant() : texts;
    }

    [[nodiscard]] QVariantMap entries(const QDBusArgument &argument, int depth)
    {
        QVariantMap map;
        for (int i = 0; i < maximumElements && !argument.atEnd() && takeOne(); ++i) {
            argument.beginMapEntry();
            const QVariant key = argument.asVariant();
            const QVariant value = plainArgument(argument, depth + 1);
            argument.endMapEntry();
            if (key.typeId() == QMetaType::QString) {
                map.insert(key.toString().left(maximumTextLength), value);
            }
        }
        return map;
    }

    [[nodiscard]] QVariantList elements(const QDBusArgument &argument, int depth)
    {
        QVariantList list;
        for (int i = 0; i < maximumElements && !argument.atEnd() && takeOne(); ++i) {
            list.append(plainArgument(argument, depth + 1));
        }
        return list;
    }

    [[nodiscard]] bool takeOne() { return m_left > 0 && m_left-- > 0; }

    int m_left = maximumValues;
};

bool isUnprintable(char32_t character)
{
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
    case QChar::Other_Surrogate:
        return true;
    default:
        return false;
    }
}

QString cleanText(const QString &source)
{
    // The text is cut first, so that ten megabytes cost no more than a short text. The cut may part a surrogate pair,
    // whose half then becomes a space.
    const QString cut = source.left(maximumTextLength);
    QString clean;
    clean.reserve(cut.size());
    const QList<uint> characters = cut.toUcs4();
    for (const char32_t character : characters) {
        if (isDirectionControl(character)) {
            continue;
        }
        clean += isUnprintable(character) || character == QChar::ReplacementCharacter
            ? QStringLiteral(" ")
            : QString::fromUcs4(&character, 1);
    }
    return clean.trimmed();
}

} // namespace

QVariant plainValue(const QVariant &value)
{
    return Unpacking().plain(value, 0);
}

QVariantList plainArguments(const QDBusMessage &message)
{
    QVariantList arguments;
    Unpacking unpacking;
    const QVariantList taken = message.arguments().mid(0, maximumArguments);
    for (const QVariant &argument : taken) {
        arguments.append(unpacking.plain(argument, 0));
    }
    return arguments;
}

QVariantMap plainMap(const QVariant &value)
{
    const QVariant plainVariant = plainValue(value);
    return plainVariant.typeId() == QMetaType::QVariantMap ? plainVariant.toMap() : QVariantMap();
}

std::optional<QString> text(const QVariant &value)
{
    // mpv and Sayonara send the genre, Totem the artist, as a text; a list in the place of a text is read as well.
    const QString joined = cleanText(texts(value, maximumElements).join(QStringLiteral(", ")));
    return joined.isEmpty() ? std::nullopt : std::optional(joined);
}

QStringList texts(const QVariant &value, qsizetype maximum)
{
    QVariantList sources;
    if (value.typeId() == QMetaType::QString) {
        sources = {value};
    } else if (value.typeId() == QMetaType::QStringList) {
        const QStringList strings = value.value<QStringList>().mid(0, maximum);
        sources = QVariantList(strings.cbegin(), strings.cend());
    } else if (value.typeId() == QMetaType::QVariantList) {
        sources = value.toList();
    }
    QStringList result;
    for (const QVariant &source : std::as_const(sources)) {
        if (result.size() == maximum) {
            break;
        }
        if (const QString clean = source.typeId() == QMetaType::QString ? cleanText(source.toString()) : QString();
            !clean.isEmpty()) {
            result.append(clean);
        }
    }
    return result;
}

std::optional<double> number(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        break;
    default:
        return std::nullopt;
    }
    const double result = value.toDouble();
    return std::isfinite(result) ? std::optional(result) : std::nullopt;
}

std::optional<bool> boolean(const QVariant &value)
{
    return value.typeId() == QMetaType::Bool ? std::optional(value.toBool()) : std::nullopt;
}

} // namespace tunedeck::bus

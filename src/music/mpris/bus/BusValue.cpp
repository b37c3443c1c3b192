// SPDX-License-Identifier: MIT
#include "music/mpris/bus/BusValue.h"

#include "platform/directionControls.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusSignature>
#include <QDBusVariant>

#include <cmath>

namespace tunedeck::bus {

namespace {

constexpr int maximumDepth = 8;

QVariant plain(const QVariant &value, int depth);

QVariantMap plainEntries(const QDBusArgument &argument, int depth)
{
    QVariantMap map;
    argument.beginMap();
    for (int i = 0; i < maximumElements && !argument.atEnd(); ++i) {
        argument.beginMapEntry();
        const QVariant key = argument.asVariant();
        const QVariant value = argument.asVariant();
        argument.endMapEntry();
        if (key.typeId() == QMetaType::QString) {
            map.insert(key.toString().left(maximumTextLength), plain(value, depth + 1));
        }
    }
    argument.endMap();
    return map;
}

QVariantList plainElements(const QDBusArgument &argument, int depth)
{
    QVariantList list;
    for (int i = 0; i < maximumElements && !argument.atEnd(); ++i) {
        list.append(plain(argument.asVariant(), depth + 1));
    }
    return list;
}

/// Every container that is begun must be ended, or it leaks with its message.
QVariant plainArgument(const QDBusArgument &argument, int depth)
{
    switch (argument.currentType()) {
    case QDBusArgument::MapType:
        return plainEntries(argument, depth);
    case QDBusArgument::ArrayType: {
        argument.beginArray();
        const QVariantList elements = plainElements(argument, depth);
        argument.endArray();
        return elements;
    }
    case QDBusArgument::StructureType: {
        argument.beginStructure();
        const QVariantList elements = plainElements(argument, depth);
        argument.endStructure();
        return elements;
    }
    case QDBusArgument::BasicType:
    case QDBusArgument::VariantType:
        return plain(argument.asVariant(), depth + 1);
    case QDBusArgument::MapEntryType:
    case QDBusArgument::UnknownType:
        return {};
    }
    return {};
}

QVariant plain(const QVariant &value, int depth)
{
    if (depth > maximumDepth) {
        return {};
    }
    const QMetaType type = value.metaType();
    if (type == QMetaType::fromType<QDBusVariant>()) {
        return plain(value.value<QDBusVariant>().variant(), depth + 1);
    }
    if (type == QMetaType::fromType<QDBusArgument>()) {
        return plainArgument(value.value<QDBusArgument>(), depth);
    }
    if (type == QMetaType::fromType<QDBusObjectPath>()) {
        return value.value<QDBusObjectPath>().path();
    }
    if (type == QMetaType::fromType<QDBusSignature>()) {
        return value.value<QDBusSignature>().signature();
    }
    return value;
}

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
    for (const char32_t character : cut.toUcs4()) {
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
    return plain(value, 0);
}

QVariant plainArgument(const QDBusMessage &message, qsizetype index)
{
    return plainValue(message.arguments().value(index));
}

QVariantMap plainMap(const QVariant &value)
{
    const QVariant plainVariant = plainValue(value);
    return plainVariant.typeId() == QMetaType::QVariantMap ? plainVariant.toMap() : QVariantMap();
}

QVariantMap plainMap(const QDBusMessage &message, qsizetype index)
{
    return plainMap(message.arguments().value(index));
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

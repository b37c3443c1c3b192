// SPDX-License-Identifier: MIT
#include "platform/bus/isSmallMessage.h"

#include <QByteArray>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantList>

namespace tunedeck {

namespace {

constexpr qsizetype mostValues = 10'000;
constexpr qsizetype mostCharacters = 1'000'000;

/// Goes through the values of a message until it is known to be large.
class Measuring {
public:
    [[nodiscard]] bool isSmall() const { return m_values <= mostValues && m_characters <= mostCharacters; }

    void take(const QVariant &value)
    {
        if (value.metaType() == QMetaType::fromType<QDBusArgument>()) {
            read(value.value<QDBusArgument>());
        } else if (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
            take(value.value<QDBusVariant>().variant());
        } else if (value.typeId() == QMetaType::QStringList) {
            m_values += value.value<QStringList>().size();
            const QStringList texts = value.toStringList().mid(0, mostValues);
            for (const QString &text : texts) {
                m_characters += text.size();
            }
        } else {
            ++m_values;
            m_characters +=
                value.typeId() == QMetaType::QByteArray ? value.toByteArray().size() : value.toString().size();
        }
    }

private:
    /// Every container that is begun must be ended, or it leaks with its message.
    void read(const QDBusArgument &argument)
    {
        if (argument.currentType() != QDBusArgument::BasicType) {
            ++m_values;
        }
        switch (argument.currentType()) {
        case QDBusArgument::MapType:
            argument.beginMap();
            while (isSmall() && !argument.atEnd()) {
                argument.beginMapEntry();
                read(argument);
                read(argument);
                argument.endMapEntry();
            }
            argument.endMap();
            break;
        case QDBusArgument::ArrayType:
            argument.beginArray();
            readAll(argument);
            argument.endArray();
            break;
        case QDBusArgument::StructureType:
        case QDBusArgument::VariantType:
            // Qt enters any container so, also the one that a variant is on the bus.
            argument.beginStructure();
            readAll(argument);
            argument.endStructure();
            break;
        case QDBusArgument::BasicType:
            readBasic(argument);
            break;
        case QDBusArgument::MapEntryType:
        case QDBusArgument::UnknownType:
            break;
        }
    }

    void readAll(const QDBusArgument &argument)
    {
        while (isSmall() && !argument.atEnd()) {
            read(argument);
        }
    }

    void readBasic(const QDBusArgument &argument)
    {
        if (argument.currentSignature() != u"as") {
            take(argument.asVariant());
            return;
        }
        argument.beginArray();
        while (isSmall() && !argument.atEnd()) {
            take(argument.asVariant());
        }
        argument.endArray();
    }

    qsizetype m_values = 0;
    qsizetype m_characters = 0;
};

} // namespace

bool isSmallMessage(const QDBusMessage &message)
{
    Measuring measuring;
    const QVariantList arguments = message.arguments();
    for (const QVariant &argument : arguments) {
        if (!measuring.isSmall()) {
            return false;
        }
        measuring.take(argument);
    }
    return measuring.isSmall();
}

} // namespace tunedeck

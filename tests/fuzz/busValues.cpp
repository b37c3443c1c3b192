// SPDX-License-Identifier: MIT
#include "music/mpris/bus/BusValue.h"

#include "Value.h"
#include "require.h"
#include "requireText.h"
#include "support/PrivateBus.h"

#include <QByteArrayView>
#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusSignature>
#include <QDBusVariant>
#include <QDBusVirtualObject>

#include <cmath>

using namespace tunedeck;
using fuzz::require;
using fuzz::requireClean;
using fuzz::Value;

namespace {

/// A message with more than 255 is not sent, and takes long to refuse.
constexpr qsizetype mostArguments = 20;

// Packs a value into a message.

QVariant packed(const Value &value);

/// The number of characters in the type of a packed value.
qsizetype lengthOfType(const Value &value)
{
    switch (value.kind) {
    case '(': {
        qsizetype length = 2;
        for (const Value &part : value.parts) {
            length += lengthOfType(part);
        }
        return length;
    }
    case '{':
        return 5;
    case '[':
    case '*':
    case 'l':
    case 'z':
        return 2;
    default:
        return 1;
    }
}

/// D-Bus knows no longer types than 255 characters, and no structure without parts.
bool isStructure(const Value &value)
{
    return value.kind == '(' && !value.parts.isEmpty() && lengthOfType(value) < 100;
}

/// Structures and lists of variants are packed by hand: QtDBus knows no type for them.
void append(QDBusArgument &argument, const Value &value)
{
    if (isStructure(value)) {
        argument.beginStructure();
        for (const Value &part : value.parts) {
            append(argument, part);
        }
        argument.endStructure();
    } else if (value.kind == '[' || value.kind == '*' || value.kind == '(') {
        argument.beginArray(QMetaType::fromType<QDBusVariant>());
        for (const Value &part : value.parts) {
            argument << QDBusVariant(packed(part));
        }
        argument.endArray();
    } else if (value.kind == '{') {
        argument.beginMap(QMetaType::fromType<QString>(), QMetaType::fromType<QDBusVariant>());
        for (qsizetype i = 0; i < value.keys.size(); ++i) {
            argument.beginMapEntry();
            argument << QString::fromUtf8(value.keys.at(i)) << QDBusVariant(packed(value.parts.at(i)));
            argument.endMapEntry();
        }
        argument.endMap();
    } else if (value.kind == 'v') {
        argument << QDBusVariant(packed(value.parts.value(0)));
    } else {
        argument.appendVariant(packed(value));
    }
}

bool isPackedByHand(const Value &value)
{
    return QByteArrayView("([*{v").contains(value.kind);
}

QVariant packed(const Value &value)
{
    if (isPackedByHand(value)) {
        QDBusArgument argument;
        append(argument, value);
        return QVariant::fromValue(argument);
    }
    // QtDBus leaves a message half packed, and libdbus fails later, if one of these two is not valid.
    if (value.kind == 'o') {
        const QDBusObjectPath path(QString::fromUtf8(value.text));
        return QVariant::fromValue(path.path().isEmpty() ? QDBusObjectPath(QStringLiteral("/")) : path);
    }
    if (value.kind == 'g') {
        const QDBusSignature signature(QString::fromUtf8(value.text));
        return QVariant::fromValue(signature.signature().isEmpty() ? QDBusSignature(QStringLiteral("s")) : signature);
    }
    return value.plain();
}

// Checks what is made of it.

/// Returns the number of values in `value`, without itself.
qsizetype checkPlain(const QVariant &value, int depth)
{
    require(depth <= 9, "values are not deep");
    qsizetype values = 0;
    switch (value.typeId()) {
    case QMetaType::UnknownType:
    case QMetaType::Bool:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        break;
    case QMetaType::QString:
        require(value.toString().size() <= bus::longestRawText, "texts are cut");
        break;
    case QMetaType::QByteArray:
        require(value.toByteArray().size() <= bus::longestRawText, "bytes are cut");
        break;
    case QMetaType::QStringList:
        for (const QString &text : value.toStringList()) {
            require(text.size() <= bus::longestRawText, "texts in lists are cut");
        }
        values = value.toStringList().size();
        require(values <= bus::maximumElements, "lists of texts are cut");
        break;
    case QMetaType::QVariantList:
        for (const QVariant &part : value.toList()) {
            values += 1 + checkPlain(part, depth + 1);
        }
        require(value.toList().size() <= bus::maximumElements, "lists are cut");
        break;
    case QMetaType::QVariantMap: {
        const QVariantMap map = value.toMap();
        require(map.size() <= bus::maximumElements, "maps are cut");
        for (const auto &[key, part] : map.asKeyValueRange()) {
            require(key.size() <= bus::maximumTextLength, "keys are cut");
            values += 1 + checkPlain(part, depth + 1);
        }
        break;
    }
    default:
        require(false, "values are of a plain type");
    }
    return values;
}

void checkRead(const QVariant &plain)
{
    if (const auto text = bus::text(plain)) {
        requireClean(*text);
        require(!text->isEmpty() && text->trimmed() == *text, "a text is trimmed");
    }
    const QStringList texts = bus::texts(plain, 5);
    require(texts.size() <= 5, "no more texts are read than asked for");
    for (const QString &text : texts) {
        requireClean(text);
        require(!text.isEmpty(), "a text in a list has characters");
    }
    const auto number = bus::number(plain);
    require(!number || std::isfinite(*number), "a number is finite");
    require(!number || !bus::boolean(plain), "a number is no Boolean");
}

/// Answers calls of its own process. QtDBus packs and unpacks those with containers as if they came over the bus.
class Callee : public QDBusVirtualObject {
public:
    [[nodiscard]] QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        qsizetype values = 0;
        const QVariantList arguments = bus::plainArguments(message);
        require(arguments.size() <= 8, "arguments are limited");
        for (const QVariant &argument : arguments) {
            values += checkPlain(argument, 0);
            checkRead(argument);
        }
        require(values <= bus::maximumValues, "a message's values are limited");
        const QVariantList unpacked = message.arguments();
        for (const QVariant &argument : unpacked) {
            checkPlain(bus::plainMap(argument), 0);
        }
        // The call waits for it.
        [[maybe_unused]] const QDBusMessage reply = message.createReply();
        return true;
    }
};

class Peer {
public:
    Peer()
        : m_connection(m_bus.connect(QStringLiteral("fuzz")))
    {
        require(m_connection.isConnected(), "there is a bus");
        m_connection.registerVirtualObject(QStringLiteral("/"), &m_callee);
    }

    void receive(const QVariantList &arguments)
    {
        QDBusMessage call = QDBusMessage::createMethodCall(
            m_connection.baseService(), QStringLiteral("/"), QStringLiteral("a.b"), QStringLiteral("Take"));
        call.setArguments(arguments);
        m_connection.call(call);
    }

private:
    PrivateBus m_bus;
    QDBusConnection m_connection;
    Callee m_callee;
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int *count, char ***arguments)
{
    // It ends with the process.
    new QCoreApplication(*count, *arguments);
    // QtDBus complains about what cannot be packed.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) { });
    return 0;
}

/// The values are the arguments of a message.
int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static Peer peer;
    QVariantList arguments;
    for (const Value &value : Value::readAll(QByteArrayView(data, qsizetype(size))).mid(0, mostArguments)) {
        arguments.append(packed(value));
        checkRead(value.plain());
    }
    peer.receive(arguments);
    return 0;
}

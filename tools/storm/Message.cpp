// SPDX-License-Identifier: MIT
#include "Message.h"

#include <QtEndian>

namespace tunedeck::storm {

void Values::align(int alignment)
{
    const qsizetype beyond = m_bytes.size() % alignment;
    m_bytes.append(beyond == 0 ? 0 : alignment - beyond, '\0');
}

void Values::number(quint32 value)
{
    align(4);
    const quint32 little = qToLittleEndian(value);
    m_bytes.append(reinterpret_cast<const char *>(&little), sizeof(little));
}

void Values::number64(qint64 value)
{
    align(8);
    const qint64 little = qToLittleEndian(value);
    m_bytes.append(reinterpret_cast<const char *>(&little), sizeof(little));
}

void Values::text(const QByteArray &value)
{
    number(quint32(value.size()));
    m_bytes.append(value).append('\0');
}

void Values::signature(const QByteArray &value)
{
    byte(quint8(value.size()));
    m_bytes.append(value).append('\0');
}

void Values::array(int alignment, const std::function<void()> &write)
{
    number(0);
    const qsizetype length = m_bytes.size() - qsizetype(sizeof(quint32));
    align(alignment);
    const qsizetype begin = m_bytes.size();
    write();
    qToLittleEndian(quint32(m_bytes.size() - begin), m_bytes.data() + length);
}

void Values::entry(const QByteArray &key, const QByteArray &type, const std::function<void()> &write)
{
    align(8);
    text(key);
    signature(type);
    write();
}

void Values::textEntry(const QByteArray &key, const QByteArray &value)
{
    entry(key, "s", [&] { text(value); });
}

void Values::boolEntry(const QByteArray &key, bool value)
{
    entry(key, "b", [&] { number(value ? 1 : 0); });
}

QByteArray Message::bytes(const Values &body) const
{
    constexpr quint8 noAnswerExpected = 1;
    constexpr quint8 startsNoProgram = 2;
    Values message;
    message.reserve(body.size() + 512);
    message.byte('l');
    message.byte(quint8(type));
    message.byte(startsNoProgram | (wantsAnswer ? 0 : noAnswerExpected));
    message.byte(1); // the version of the protocol
    message.number(quint32(body.size()));
    message.number(serial);
    const auto field = [&message](quint8 code, const QByteArray &fieldType, const QByteArray &value) {
        if (!value.isEmpty()) {
            message.align(8);
            message.byte(code);
            message.signature(fieldType);
            fieldType == "g" ? message.signature(value) : message.text(value);
        }
    };
    message.array(8, [&] {
        field(1, "o", path);
        field(2, "s", interface);
        field(3, "s", member);
        if (answers != 0) {
            message.align(8);
            message.byte(5);
            message.signature("u");
            message.number(answers);
        }
        field(6, "s", destination);
        field(8, "g", signature);
    });
    message.align(8);
    return message.bytes() + body.bytes();
}

} // namespace tunedeck::storm

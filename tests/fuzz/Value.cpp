// SPDX-License-Identifier: MIT
#include "Value.h"

#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <algorithm>
#include <utility>

namespace tunedeck::fuzz {

namespace {
constexpr int deepest = 14;
constexpr int mostValues = 12'000;
constexpr int longestText = 70'000;
constexpr int textOfOneValue = 1'000; // characters; a longer text counts as several values

class Reader {
public:
    explicit Reader(QByteArrayView bytes)
        : m_rest(bytes)
    {
    }

    [[nodiscard]] bool isAtEnd() const { return m_rest.isEmpty() || m_left <= 0; }

    [[nodiscard]] Value value(int depth)
    {
        --m_left;
        Value value;
        value.kind = takeOne();
        switch (value.kind) {
        case '[':
            value.parts = valuesUpTo(']', depth);
            break;
        case '(':
            value.parts = valuesUpTo(')', depth);
            break;
        case '{':
            readMap(value, depth);
            break;
        case 'v':
            value.parts = {inner(depth)};
            break;
        case '*':
            value.parts = copies(depth);
            break;
        case 'l':
            value.keys = lines();
            break;
        case '"':
            value.text = repeated();
            break;
        default:
            value.text = line();
        }
        return value;
    }

private:
    /// A line end if nothing is left.
    char takeOne()
    {
        if (m_rest.isEmpty()) {
            return '\n';
        }
        const char first = m_rest.front();
        m_rest = m_rest.sliced(1);
        return first;
    }

    QByteArray takeUpTo(char end)
    {
        const qsizetype length = std::find(m_rest.begin(), m_rest.end(), end) - m_rest.begin();
        const QByteArray taken = m_rest.first(length).toByteArray();
        m_rest = m_rest.sliced(std::min(length + 1, m_rest.size()));
        return taken;
    }

    QByteArray line() { return takeUpTo('\n'); }
    int count(int most) { return std::clamp(takeUpTo(' ').toInt(), 0, most); }

    /// Values that are too deep are empty.
    Value inner(int depth) { return depth < deepest ? value(depth + 1) : Value(); }

    bool takeEnd(char end)
    {
        const bool isThere = !m_rest.isEmpty() && m_rest.front() == end;
        m_rest = m_rest.sliced(isThere ? 1 : 0);
        return isThere;
    }

    QList<Value> valuesUpTo(char end, int depth)
    {
        QList<Value> values;
        while (depth < deepest && !isAtEnd() && !takeEnd(end)) {
            values.append(inner(depth));
        }
        return values;
    }

    void readMap(Value &map, int depth)
    {
        while (depth < deepest && !isAtEnd() && !takeEnd('}')) {
            map.keys.append(line());
            map.parts.append(inner(depth));
        }
    }

    QList<Value> copies(int depth)
    {
        const int number = count(mostValues);
        const int before = m_left;
        const Value copied = inner(depth);
        const int size = std::max(before - m_left, 1);
        const int affordable = std::clamp(m_left / size, 0, number);
        m_left -= affordable * size;
        return QList<Value>(affordable, copied);
    }

    QList<QByteArray> lines()
    {
        QList<QByteArray> lines;
        for (QByteArray next = line(); !next.isEmpty(); next = line()) {
            lines.append(next);
        }
        return lines;
    }

    QByteArray repeated()
    {
        const int length = count(longestText);
        const QByteArray text = line();
        m_left -= length / textOfOneValue;
        return text.isEmpty() ? text : text.repeated(length / text.size() + 1).first(length);
    }

    QByteArrayView m_rest;
    int m_left = mostValues;
};
} // namespace

QList<Value> Value::readAll(QByteArrayView bytes)
{
    QList<Value> values;
    for (Reader reader(bytes); !reader.isAtEnd();) {
        values.append(reader.value(0));
    }
    return values;
}

QVariant Value::number() const
{
    switch (kind) {
    case 'b':
        return text == "1";
    case 'y':
        return QVariant::fromValue(uchar(text.toUInt()));
    case 'n':
        return QVariant::fromValue(text.toShort());
    case 'q':
        return QVariant::fromValue(text.toUShort());
    case 'i':
        return text.toInt();
    case 'u':
        return text.toUInt();
    case 'x':
        return text.toLongLong();
    case 't':
        return text.toULongLong();
    case 'd':
        return text.toDouble();
    default:
        return {};
    }
}

QVariant Value::plain() const
{
    if (const QVariant value = number(); value.isValid()) {
        return value;
    }
    switch (kind) {
    case '[':
    case '(':
    case '*': {
        QVariantList list;
        for (const Value &part : parts) {
            list.append(part.plain());
        }
        return list;
    }
    case '{': {
        QVariantMap map;
        for (qsizetype i = 0; i < keys.size(); ++i) {
            map.insert(QString::fromUtf8(keys.at(i)), parts.at(i).plain());
        }
        return map;
    }
    case 'l': {
        QStringList texts;
        for (const QByteArray &line : keys) {
            texts.append(QString::fromUtf8(line));
        }
        return texts;
    }
    case 'v':
        return parts.value(0).plain();
    case 'z':
        return text;
    default:
        return QString::fromUtf8(text);
    }
}

} // namespace tunedeck::fuzz

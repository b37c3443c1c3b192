// SPDX-License-Identifier: MIT
#include "music/typedValue.h"

#include <limits>

namespace tunedeck {

namespace {

bool isSigned(int type)
{
    switch (type) {
    case QMetaType::SChar:
    case QMetaType::Short:
    case QMetaType::Int:
    case QMetaType::Long:
    case QMetaType::LongLong:
        return true;
    default:
        return false;
    }
}

bool isUnsigned(int type)
{
    switch (type) {
    case QMetaType::UChar:
    case QMetaType::UShort:
    case QMetaType::UInt:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
        return true;
    default:
        return false;
    }
}

bool isFloatingPoint(int type)
{
    return type == QMetaType::Float || type == QMetaType::Double;
}

} // namespace

std::optional<QString> stringFrom(const QVariant &value)
{
    if (value.typeId() != QMetaType::QString) {
        return std::nullopt;
    }
    return value.toString();
}

std::optional<qint64> integerFrom(const QVariant &value)
{
    if (isSigned(value.typeId())) {
        return value.toLongLong();
    }
    // QVariant would turn a great unsigned value into a negative one.
    constexpr quint64 greatest = std::numeric_limits<qint64>::max();
    if (isUnsigned(value.typeId()) && value.toULongLong() <= greatest) {
        return value.toLongLong();
    }
    return std::nullopt;
}

std::optional<double> numberFrom(const QVariant &value)
{
    const int type = value.typeId();
    if (!isSigned(type) && !isUnsigned(type) && !isFloatingPoint(type)) {
        return std::nullopt;
    }
    return value.toDouble();
}

} // namespace tunedeck

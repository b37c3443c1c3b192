// SPDX-License-Identifier: MIT
#include "WrongValue.h"

#include "BusTypes.h"

#include <QDBusVariant>
#include <QHash>
#include <QVariantMap>

#include <functional>
#include <limits>

namespace tunedeck::demo {

using namespace Qt::StringLiterals;

namespace {

using Make = std::function<QVariant(const QString &key, const QString &text)>;

/// The value of a kind that takes no text.
Make always(const QVariant &value)
{
    return [value](const QString &, const QString &text) { return text.isEmpty() ? value : QVariant(); };
}

template <typename T> Make readable(const T &byItself)
{
    return [byItself](const QString &, const QString &text) {
        if (text.isEmpty()) {
            return QVariant::fromValue(byItself);
        }
        QVariant value(text);
        return value.convert(QMetaType::fromType<T>()) ? value : QVariant();
    };
}

/// A wrong number of the type that is right for the key.
Make number(qint64 value)
{
    return [value](const QString &key, const QString &text) {
        const bool isFraction = key == u"Volume"_s || key.endsWith(u"Rate"_s);
        if (!text.isEmpty()) {
            return QVariant();
        }
        return isFraction ? QVariant(static_cast<double>(value)) : QVariant(value);
    };
}

QString controlCharacters()
{
    QString text = u"first line\nsecond\r\nthird\ttab \u202Eoverridden\u202C \u0085\u009F\u2028"_s;
    for (char16_t character = 1; character < u' '; ++character) {
        text += QChar(character);
    }
    return text + QChar(u'\x7f');
}

QVariant nested()
{
    const auto inner = QVariant::fromValue(QDBusVariant(u"deep"_s));
    return QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(inner))));
}

QVariant array(const QString &, const QString &text)
{
    return text.isEmpty() ? QStringList{u"first"_s, u"second"_s} : QStringList{text};
}

QVariant path(const QString &, const QString &text)
{
    const QString path = text.isEmpty() ? u"/org/tunedeck/demo/somewhere"_s : text;
    // QtDBus sends no message with an invalid path.
    const QDBusObjectPath checked(path);
    return checked.path().isEmpty() ? QVariant() : QVariant::fromValue(checked);
}

const QHash<QString, Make> &kinds()
{
    constexpr qsizetype tenMegabytes = 10'000'000;
    static const QHash<QString, Make> kinds{
        {u"string"_s, readable<QString>(u"wrong"_s)},
        {u"number-string"_s, readable<QString>(u"42"_s)},
        {u"int"_s, readable<int>(42)},
        {u"uint"_s, readable<uint>(42)},
        {u"int64"_s, readable<qlonglong>(42)},
        {u"uint64"_s, readable<qulonglong>(42)},
        {u"double"_s, readable<double>(42.5)},
        {u"nan"_s, always(std::numeric_limits<double>::quiet_NaN())},
        {u"inf"_s, always(std::numeric_limits<double>::infinity())},
        {u"negative"_s, number(-42)},
        {u"zero"_s, number(0)},
        {u"int64max"_s, always(std::numeric_limits<qint64>::max())},
        {u"int64min"_s, always(std::numeric_limits<qint64>::min())},
        {u"uint64max"_s, always(std::numeric_limits<quint64>::max())},
        {u"bool"_s, readable<bool>(true)},
        {u"empty"_s, always(u""_s)},
        {u"huge"_s,
            [](const QString &, const QString &text) {
                return text.isEmpty() ? QVariant(QString(tenMegabytes, u'x')) : QVariant();
            }},
        {u"control"_s, always(controlCharacters())},
        {u"array"_s, array},
        {u"int-array"_s, always(QVariant::fromValue(QList<int>{1, 2, 3}))},
        {u"dict"_s, always(QVariantMap{{u"key"_s, u"value"_s}, {u"number"_s, 42}})},
        {u"path"_s, path},
        {u"bytes"_s, always(QByteArray("\x01\xff\xfe\0z", 5))},
        {u"nested"_s, always(nested())},
        {u"struct"_s, always(QVariant::fromValue(PlaylistEntry{QDBusObjectPath(u"/"_s), u"name"_s, u"icon"_s}))},
    };
    return kinds;
}

} // namespace

QStringList wrongValueKinds()
{
    QStringList names = kinds().keys();
    names.sort();
    return names;
}

QVariant wrongValue(const QString &kind, const QString &key, const QString &text)
{
    const Make make = kinds().value(kind);
    return make ? make(key, text) : QVariant();
}

} // namespace tunedeck::demo

// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>
#include <QVariant>

namespace tunedeck::fuzz {

/// A value such as players send, written so that people and the fuzzer can both change it. It begins with its kind:
///
///     sTEXT                a text, up to the end of the line, as everything below that is no container
///     "N TEXT              that text again and again, up to N characters
///     oPATH gSIGNATURE     an object path, a signature
///     zBYTES               bytes
///     b y n q i u x t d    a number, of the type that D-Bus calls so
///     l                    a list of texts: the lines up to an empty one
///     [VALUES] (VALUES)    a list, a structure
///     {KEY                 a map; in it are a line for each key, a value after it, and "}" in the place of a key
///     VALUES}
///     vVALUE               a variant
///     *N VALUE             a list with that value N times
///
/// No text is malformed: what is missing is empty.
struct Value {
    char kind = 's';
    QByteArray text; ///< that of the kinds without parts
    QList<QByteArray> keys; ///< of a map: as many as parts; of a list of texts: its lines
    QList<Value> parts;

    /// Reads values until the bytes are over: at most 12,000 with all copies, at most 14 deep, texts of at most 70,000
    /// characters. That is beyond each limit of bus::plainValue().
    [[nodiscard]] static QList<Value> readAll(QByteArrayView bytes);

    /// The value as bus::plainValue() makes it of one that came over the bus. It may exceed its limits.
    [[nodiscard]] QVariant plain() const;
    /// A number of the D-Bus type `kind`.
    [[nodiscard]] QVariant number() const;
};

} // namespace tunedeck::fuzz

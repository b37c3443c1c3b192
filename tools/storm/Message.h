// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>

namespace tunedeck::storm {

/// Writes values as D-Bus sends them, little endian. The caller sees to the signature.
class Values {
public:
    void byte(quint8 value) { m_bytes.append(char(value)); }
    void number(quint32 value);
    void number64(qint64 value);
    void text(const QByteArray &value);
    void signature(const QByteArray &value);
    /// Writes an array with what `write` writes; `alignment` is that of an element, in bytes.
    void array(int alignment, const std::function<void()> &write);
    void align(int alignment);

    /// An entry of an a{sv}; `write` writes the value, which has the type `type`.
    void entry(const QByteArray &key, const QByteArray &type, const std::function<void()> &write);
    void textEntry(const QByteArray &key, const QByteArray &value);
    void boolEntry(const QByteArray &key, bool value);

    [[nodiscard]] const QByteArray &bytes() const { return m_bytes; }
    [[nodiscard]] qsizetype size() const { return m_bytes.size(); }
    void reserve(qsizetype size) { m_bytes.reserve(size); }

private:
    QByteArray m_bytes;
};

/// A message on its way to the bus.
struct Message {
    enum class Type : quint8 { Call = 1, Answer = 2, Signal = 4 };

    Type type = Type::Signal;
    bool wantsAnswer = false;
    quint32 serial = 1; ///< may be used again and again by messages that nobody answers
    quint32 answers = 0; ///< the serial of the call that this message answers
    QByteArray destination = {}; ///< empty: everybody who listens
    QByteArray path = {};
    QByteArray interface = {};
    QByteArray member = {};
    QByteArray signature = {};

    [[nodiscard]] QByteArray bytes(const Values &body = {}) const;
};

} // namespace tunedeck::storm

// SPDX-License-Identifier: MIT
#include "platform/settings/settingsValue.h"

#include <QByteArray>
#include <QLatin1Char>
#include <QLatin1String>
#include <QString>
#include <QStringDecoder>
#include <QStringList>

#include <optional>

namespace tunedeck {

namespace {
std::optional<int> digitFrom(char character, int base)
{
    int digit = base;
    if (character >= '0' && character <= '9') {
        digit = character - '0';
    } else if (character >= 'a' && character <= 'f') {
        digit = character - 'a' + 10;
    } else if (character >= 'A' && character <= 'F') {
        digit = character - 'A' + 10;
    }
    return digit < base ? std::optional(digit) : std::nullopt;
}

/// Any other decoder takes a mark of the byte order for no character, and keeps the first half of a broken one.
QString decoded(QByteArrayView utf8)
{
    QStringDecoder decoder(
        QStringDecoder::Utf8, QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    return decoder(utf8);
}

/// The texts of a value, which commas part. Quotes and escapes may begin and end anywhere in them.
class Texts {
public:
    explicit Texts(QByteArrayView written)
        : m_rest(written)
    {
    }

    [[nodiscard]] QStringList all()
    {
        dropSpaces();
        while (!m_rest.isEmpty()) {
            if (m_rest.startsWith('\\')) {
                take();
                addEscaped();
                m_lengthToKeep = m_text.size();
            } else if (m_rest.startsWith('"')) {
                take();
                turnQuotes();
            } else if (m_rest.startsWith(',') && !m_isInQuotes) {
                take();
                endText();
                dropSpaces();
            } else {
                addPlain();
            }
        }
        endText();
        return m_texts;
    }

private:
    char take()
    {
        const char first = m_rest.front();
        m_rest = m_rest.sliced(1);
        return first;
    }

    void dropSpaces()
    {
        while (m_rest.startsWith(' ') || m_rest.startsWith('\t')) {
            take();
        }
    }

    void turnQuotes()
    {
        m_isInQuotes = !m_isInQuotes;
        m_isQuoted = true;
        if (!m_isInQuotes) {
            dropSpaces();
        }
    }

    void endText()
    {
        while (!m_isQuoted && m_text.size() > m_lengthToKeep && (m_text.back() == u' ' || m_text.back() == u'\t')) {
            m_text.chop(1);
        }
        m_texts.append(m_text);
        m_text.clear();
        m_lengthToKeep = 0;
        m_isQuoted = false;
    }

    void addPlain()
    {
        qsizetype length = 1;
        while (length < m_rest.size() && !QByteArrayView("\\\",").contains(m_rest[length])) {
            ++length;
        }
        m_text += decoded(m_rest.first(length));
        m_rest = m_rest.sliced(length);
    }

    void addEscaped()
    {
        if (m_rest.isEmpty()) {
            return;
        }
        constexpr QByteArrayView letters("abfnrtv\"?'\\");
        constexpr QByteArrayView characters("\a\b\f\n\r\t\v\"?'\\");
        if (digitFrom(m_rest.front(), 8)) {
            addNumber(8);
        } else if (const char letter = take(); letter == 'x') {
            addNumber(16);
        } else if (const qsizetype at = letters.indexOf(letter); at >= 0) {
            m_text += QLatin1Char(characters[at]);
        } else {
            dropRestOfLineEnd(letter);
        }
    }

    /// Adds nothing if there is no digit. A number of any length counts by its last 16 bits.
    void addNumber(int base)
    {
        std::optional<char16_t> number;
        while (!m_rest.isEmpty()) {
            const std::optional<int> digit = digitFrom(m_rest.front(), base);
            if (!digit) {
                break;
            }
            number = static_cast<char16_t>(number.value_or(0) * base + *digit);
            take();
        }
        if (number) {
            m_text += QChar(*number);
        }
    }

    /// An escaped end of a line is no character, nor is any other character that needs no escape.
    void dropRestOfLineEnd(char first)
    {
        if ((first == '\r' && m_rest.startsWith('\n')) || (first == '\n' && m_rest.startsWith('\r'))) {
            take();
        }
    }

    QByteArrayView m_rest;
    QStringList m_texts;
    QString m_text;
    /// Spaces behind this length are not part of the text.
    qsizetype m_lengthToKeep = 0;
    bool m_isInQuotes = false;
    bool m_isQuoted = false;
};

std::optional<QString> argumentOf(QLatin1String type, const QString &text)
{
    const bool isOfType = text.startsWith(type) && text.endsWith(u')');
    return isOfType ? std::optional(text.sliced(type.size()).chopped(1)) : std::nullopt;
}

/// QSettings doubles an "@" at the start, and marks a text with a NUL in it.
QString plain(const QString &text)
{
    if (text.startsWith(QLatin1String("@@"))) {
        return text.sliced(1);
    }
    return argumentOf(QLatin1String("@String("), text).value_or(text);
}

QVariant valueOf(const QString &text)
{
    if (text == QLatin1String("@Invalid()")) {
        return {};
    }
    if (const auto bytes = argumentOf(QLatin1String("@ByteArray("), text)) {
        return bytes->toLatin1();
    }
    return plain(text);
}
} // namespace

QVariant settingsValue(QByteArrayView written)
{
    QStringList texts = Texts(written).all();
    if (texts.size() == 1) {
        return valueOf(texts.constFirst());
    }
    for (QString &text : texts) {
        text = plain(text);
    }
    return texts;
}

} // namespace tunedeck

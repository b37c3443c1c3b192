// SPDX-License-Identifier: MIT
#include "platform/settings/parsedSettings.h"

#include "platform/settings/settingsValue.h"

#include <QLatin1String>
#include <QString>
#include <QStringView>

#include <algorithm>

namespace tunedeck {

namespace {
/// In characters. Each line of a section repeats its name, which would multiply the size of the file.
constexpr qsizetype longestKey = 1000;

struct Line {
    QByteArrayView text;
    /// The place of the "=" behind the key; less than 0 if there is none.
    qsizetype equals = -1;
};

bool isLineEnd(char character)
{
    return character == '\n' || character == '\r';
}

bool isSpace(char character)
{
    return character == ' ' || character == '\t';
}

/// Lines that say something: neither empty ones nor comments. A line goes on behind its end within quotes and behind a
/// backslash, and ends where a comment begins.
class Lines {
public:
    explicit Lines(QByteArrayView content)
        : m_rest(content)
    {
        constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");
        if (m_rest.startsWith(byteOrderMark)) {
            m_rest = m_rest.sliced(byteOrderMark.size());
        }
    }

    /// Empty behind the last line.
    [[nodiscard]] Line next()
    {
        dropEmptyLines();
        while (m_rest.startsWith(';')) {
            dropComment();
            dropEmptyLines();
        }
        const Line line = firstLine();
        m_rest = m_rest.sliced(line.text.size());
        return line;
    }

private:
    void dropEmptyLines()
    {
        while (!m_rest.isEmpty() && (isSpace(m_rest.front()) || isLineEnd(m_rest.front()))) {
            m_rest = m_rest.sliced(1);
        }
    }

    void dropComment()
    {
        while (!m_rest.isEmpty() && !isLineEnd(m_rest.front())) {
            m_rest = m_rest.sliced(1);
        }
    }

    [[nodiscard]] Line firstLine() const
    {
        Line line;
        bool isInQuotes = false;
        qsizetype at = 0;
        while (at < m_rest.size()) {
            const char character = m_rest[at];
            if (!isInQuotes && (isLineEnd(character) || character == ';')) {
                break;
            }
            if (character == '"') {
                isInQuotes = !isInQuotes;
            } else if (character == '=' && !isInQuotes && line.equals < 0) {
                line.equals = at;
            }
            at += character == '\\' ? lengthOfEscape(at) : 1;
        }
        line.text = m_rest.first(at);
        return line;
    }

    [[nodiscard]] qsizetype lengthOfEscape(qsizetype at) const
    {
        const QByteArrayView rest = m_rest.sliced(at);
        const bool isLongLineEnd = rest.startsWith("\\\r\n") || rest.startsWith("\\\n\r");
        return std::min<qsizetype>(rest.size(), isLongLineEnd ? 3 : 2);
    }

    QByteArrayView m_rest;
};

/// The character that a key's "%" and the digits behind it stand for.
struct EscapedCharacter {
    QChar character;
    qsizetype length = 0;
};

std::optional<EscapedCharacter> escapedAtStartOf(QStringView text)
{
    const bool isLong = text.startsWith(u"%U");
    const qsizetype digitsAt = isLong ? 2 : 1;
    const qsizetype digits = isLong ? 4 : 2;
    if (!text.startsWith(u'%') || text.size() < digitsAt + digits) {
        return std::nullopt;
    }
    bool isNumber = false;
    const ushort number = text.sliced(digitsAt, digits).toUShort(&isNumber, 16);
    return isNumber ? std::optional(EscapedCharacter{QChar(number), digitsAt + digits}) : std::nullopt;
}

QString keyFrom(QByteArrayView written)
{
    const QString text = QString::fromUtf8(written);
    QString key;
    QStringView rest = text;
    while (!rest.isEmpty()) {
        const auto escaped = escapedAtStartOf(rest);
        if (escaped) {
            key += escaped->character;
        } else {
            key += rest.front() == u'\\' ? QChar(u'/') : rest.front();
        }
        rest = rest.sliced(escaped ? escaped->length : 1);
    }
    return key;
}

/// The start of the keys in a section.
QString prefixFrom(QByteArrayView section)
{
    if (section.compare("general", Qt::CaseInsensitive) == 0) {
        return {};
    }
    const bool isCalledGeneral = section.compare("%general", Qt::CaseInsensitive) == 0;
    return keyFrom(isCalledGeneral ? section.sliced(1) : section) + u'/';
}

/// QSettings would write another one if it were empty or had empty parts.
bool isKey(const QString &text)
{
    return !text.isEmpty() && text.size() <= longestKey && !text.startsWith(u'/') && !text.endsWith(u'/')
        && !text.contains(QLatin1String("//"));
}
} // namespace

std::optional<QVariantHash> parsedSettings(QByteArrayView content)
{
    QVariantHash values;
    QString prefix;
    Lines lines(content);
    for (Line line = lines.next(); !line.text.isEmpty(); line = lines.next()) {
        if (line.text.startsWith('[')) {
            const qsizetype end = line.text.indexOf(']');
            if (end < 0) {
                return std::nullopt;
            }
            prefix = prefixFrom(line.text.first(end).sliced(1).trimmed());
        } else if (line.equals < 0) {
            return std::nullopt;
        } else {
            const QString key = prefix.left(longestKey + 1) + keyFrom(line.text.first(line.equals).trimmed());
            const QVariant value = settingsValue(line.text.sliced(line.equals + 1));
            if (!value.isValid()) {
                values.remove(key);
            } else if (isKey(key)) {
                values.insert(key, value);
            }
        }
    }
    return values;
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "Words.h"

#include <utility>

namespace tunedeck::demo {

using namespace Qt::StringLiterals;

Words::Words(const QString &line)
    : m_rest(line.trimmed())
{
}

void Words::end() const
{
    if (!areOver()) {
        throw NotUnderstood(u"\"%1\" is too much"_s.arg(m_rest));
    }
}

QString Words::word()
{
    if (areOver()) {
        throw NotUnderstood(u"a word is missing at the end"_s);
    }
    const QString word = m_rest.section(u' ', 0, 0);
    m_rest = m_rest.mid(word.size()).trimmed();
    return word;
}

QString Words::text()
{
    return std::exchange(m_rest, QString());
}

QString Words::oneOf(const QStringList &choices)
{
    const QString word = this->word();
    if (!choices.contains(word)) {
        throw NotUnderstood(u"\"%1\" is none of: %2"_s.arg(word, choices.join(u", "_s)));
    }
    return word;
}

bool Words::onOff()
{
    return oneOf({u"on"_s, u"off"_s}) == u"on"_s;
}

int Words::integer(int minimum, int maximum)
{
    const QString word = this->word();
    bool isInteger = false;
    const int value = word.toInt(&isInteger);
    if (!isInteger || value < minimum || value > maximum) {
        throw NotUnderstood(u"\"%1\" is no whole number from %2 to %3"_s.arg(word).arg(minimum).arg(maximum));
    }
    return value;
}

double Words::number(double minimum, double maximum)
{
    const QString word = this->word();
    bool isNumber = false;
    const double value = word.toDouble(&isNumber);
    // Written so that NaN, which is a number to toDouble(), fails too.
    if (!isNumber || !(value >= minimum && value <= maximum)) {
        throw NotUnderstood(u"\"%1\" is no number from %2 to %3"_s.arg(word).arg(minimum).arg(maximum));
    }
    return value;
}

std::chrono::milliseconds Words::milliseconds()
{
    constexpr int hour = 3'600'000;
    return std::chrono::milliseconds(integer(0, hour));
}

std::chrono::microseconds Words::seconds()
{
    constexpr double maximum = 1e9;
    return std::chrono::microseconds(static_cast<qint64>(number(0, maximum) * 1e6));
}

} // namespace tunedeck::demo

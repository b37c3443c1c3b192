// SPDX-License-Identifier: MIT
#include "updates/feed/Version.h"

#include <algorithm>

namespace tunedeck {

namespace {
constexpr qsizetype longestText = 100;
constexpr qsizetype noNumber = -1;

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

bool isLetter(QChar character)
{
    return character.isLetter();
}

qsizetype lengthOfRun(QStringView text, bool (*belongs)(QChar))
{
    return std::find_if_not(text.begin(), text.end(), belongs) - text.begin();
}
} // namespace

std::optional<Version> Version::fromString(QStringView text)
{
    if (text.size() > longestText) {
        return std::nullopt;
    }
    const qsizetype plus = text.indexOf(u'+');
    QStringView rest = plus < 0 ? text : text.first(plus);
    rest = rest.sliced(std::find_if(rest.begin(), rest.end(), isDigit) - rest.begin());
    if (rest.isEmpty()) {
        return std::nullopt;
    }
    Version version;
    while (!rest.isEmpty()) {
        const qsizetype length = std::max(lengthOfRun(rest, isDigit), lengthOfRun(rest, isLetter));
        if (length > 0) {
            const Part part = partFrom(rest.first(length));
            const bool isOfRelease = part.digits != noNumber && !version.isPrerelease();
            (isOfRelease ? version.m_numbers : version.m_prerelease).push_back(part);
        }
        rest = rest.sliced(std::max<qsizetype>(length, 1));
    }
    while (!version.m_numbers.empty() && version.m_numbers.back().digits == 0) {
        version.m_numbers.pop_back();
    }
    return version;
}

std::weak_ordering Version::operator<=>(const Version &other) const
{
    if (const auto order = m_numbers <=> other.m_numbers; std::is_neq(order)) {
        return order;
    }
    if (isPrerelease() != other.isPrerelease()) {
        return isPrerelease() ? std::weak_ordering::less : std::weak_ordering::greater;
    }
    return m_prerelease <=> other.m_prerelease;
}

std::weak_ordering Version::Part::operator<=>(const Part &other) const
{
    if (const auto order = digits <=> other.digits; std::is_neq(order)) {
        return order;
    }
    return text.compare(other.text) <=> 0;
}

Version::Part Version::partFrom(QStringView text)
{
    if (!isDigit(text.front())) {
        return {noNumber, text.toString().toLower()};
    }
    while (text.startsWith(u'0')) {
        text = text.sliced(1);
    }
    return {text.size(), text.toString()};
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>

#include <compare>
#include <optional>
#include <vector>

namespace tunedeck {

/// A version such as 1.2.3, 42 or 1.3-rc1, which can be compared with others.
///
/// The numbers are compared one after the other. They may have any number of digits, and missing ones are 0, so 1.0 and
/// 1.0.0 are equal. A word after the numbers makes the version a prerelease, which comes before the release with the
/// same numbers: 1.2b1 < 1.2-rc1 < 1.2.
class Version {
public:
    /// No value if `text` has no digit or more than 100 characters. Ignores a word before the first number, such as the
    /// "v" of v1.2, and everything after a "+".
    [[nodiscard]] static std::optional<Version> fromString(QStringView text);

    [[nodiscard]] bool isPrerelease() const { return !m_prerelease.empty(); }

    [[nodiscard]] std::weak_ordering operator<=>(const Version &other) const;
    [[nodiscard]] bool operator==(const Version &other) const = default;

private:
    /// A number or a word.
    struct Part {
        /// The number of digits without leading zeros. -1 for a word, which comes before any number.
        qsizetype digits;
        QString text;

        [[nodiscard]] std::weak_ordering operator<=>(const Part &other) const;
        [[nodiscard]] bool operator==(const Part &other) const = default;
    };

    [[nodiscard]] static Part partFrom(QStringView text);

    std::vector<Part> m_numbers; ///< without zeros at the end
    std::vector<Part> m_prerelease;
};

} // namespace tunedeck

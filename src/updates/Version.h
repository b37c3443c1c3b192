// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>

#include <compare>
#include <optional>
#include <vector>

namespace tunedeck {

/// A version such as 1.2.3, 42 or 1.3-rc1, by its place among others.
///
/// Its numbers, which may have any number of digits, are compared one after the other; those that are missing are 0, so
/// 1.0 and 1.0.0 are equal. What begins with a letter after the numbers makes it a prerelease, which comes before the
/// release of the same numbers: 1.2b1 < 1.2-rc1 < 1.2.
class Version {
public:
    /// None for a text without a digit or of more than 100 characters. A word before the first number, such as the "v"
    /// of v1.2, is no part of the version, nor is what follows a "+".
    [[nodiscard]] static std::optional<Version> fromString(QStringView text);

    [[nodiscard]] bool isPrerelease() const;

    [[nodiscard]] std::weak_ordering operator<=>(const Version &other) const;
    [[nodiscard]] bool operator==(const Version &other) const = default;

private:
    /// A number or a word.
    struct Part {
        /// Of a number without its leading zeros; -1 for a word, which comes before any number.
        qsizetype digits;
        QString text;

        [[nodiscard]] std::weak_ordering operator<=>(const Part &other) const;
        [[nodiscard]] bool operator==(const Part &other) const = default;
    };

    [[nodiscard]] static Part partFrom(QStringView text);

    /// Without zeros at the end.
    std::vector<Part> m_numbers;
    std::vector<Part> m_prerelease;
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <stdexcept>

namespace tunedeck {

/// Why the tool does not do what it is asked to.
class Refusal : public std::runtime_error {
public:
    explicit Refusal(const QString &reason)
        : std::runtime_error(reason.toStdString())
    {
    }
};

} // namespace tunedeck

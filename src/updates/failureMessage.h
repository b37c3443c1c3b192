// SPDX-License-Identifier: MIT
#pragma once

#include "updates/UpdateFailure.h"

#include <QString>

namespace tunedeck {

/// What a user is told of a failure.
struct FailureMessage {
    QString headline;
    /// What can be done.
    QString advice;
};

[[nodiscard]] FailureMessage failureMessage(UpdateFailure failure);

} // namespace tunedeck

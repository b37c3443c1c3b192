// SPDX-License-Identifier: MIT
#pragma once

#include "updates/UpdateFailure.h"

#include <QString>

namespace tunedeck {

/// The message about a failure, for the user.
struct FailureMessage {
    QString headline;
    QString advice; ///< what the user can do
};

[[nodiscard]] FailureMessage failureMessage(UpdateFailure failure);

} // namespace tunedeck

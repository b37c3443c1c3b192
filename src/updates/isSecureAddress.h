// SPDX-License-Identifier: MIT
#pragma once

#include <QUrl>

namespace tunedeck {

/// An https address with a host and without a user's name or password.
[[nodiscard]] inline bool isSecureAddress(const QUrl &url)
{
    return url.isValid() && url.scheme() == u"https" && !url.host().isEmpty() && url.userInfo().isEmpty();
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QUrl>

namespace tunedeck {

/// Whether `url` is an https address with a host, and without a user name or a password.
[[nodiscard]] inline bool isSecureAddress(const QUrl &url)
{
    return url.isValid() && url.scheme() == u"https" && !url.host().isEmpty() && url.userInfo().isEmpty();
}

} // namespace tunedeck

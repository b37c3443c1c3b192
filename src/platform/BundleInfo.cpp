// SPDX-License-Identifier: MIT
#include "platform/BundleInfo.h"

namespace tunedeck {

std::optional<QString> bundleInfo(QStringView key)
{
    if (key == u"CFBundleName") {
        return QStringLiteral("Tunedeck");
    }
    if (key == u"CFBundleShortVersionString") {
        return QStringLiteral(TUNEDECK_VERSION);
    }
    if (key == u"CFBundleVersion") {
        return QStringLiteral(TUNEDECK_BUILD_NUMBER);
    }
    if (key == u"CFBundleHelpBookName") {
        return QStringLiteral("Tunedeck Help");
    }
    return std::nullopt;
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "platform/BundleInfo.h"

namespace tunedeck {

namespace {
std::optional<QString> unlessEmpty(const QString &text)
{
    return text.isEmpty() ? std::nullopt : std::optional(text);
}
} // namespace

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
    if (key == u"TunedeckHomepage") {
        return unlessEmpty(QString::fromUtf8(TUNEDECK_HOMEPAGE));
    }
    if (key == u"TunedeckContact") {
        return unlessEmpty(QString::fromUtf8(TUNEDECK_CONTACT));
    }
    return std::nullopt;
}

} // namespace tunedeck

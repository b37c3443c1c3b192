// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace tunedeck {

/// The reverse-DNS name of this application on the desktop: desktop entry, D-Bus name, window class.
inline constexpr QStringView applicationId = u"org.tunedeck.Tunedeck";

/// A fact about the application as built, by its information-dictionary key: "CFBundleName",
/// "CFBundleShortVersionString" (such as 1.2.3), "CFBundleVersion" (the build number) or "CFBundleHelpBookName".
/// No value for any other key.
[[nodiscard]] std::optional<QString> bundleInfo(QStringView key);

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace tunedeck {

/// The reverse-DNS name of this application on the desktop: desktop entry, D-Bus name, window class.
inline constexpr QStringView applicationId = u"org.tunedeck.Tunedeck";

/// A fact about the built application: "CFBundleName" (its name), "CFBundleShortVersionString" (its version, such as
/// 1.2.3), "CFBundleVersion" (the build number, by which versions are compared), "CFBundleHelpBookName" (the name of
/// its help), and, if the build names them, "TunedeckHomepage" (an https address) and "TunedeckContact" (a mail
/// address). No value for any other key.
[[nodiscard]] std::optional<QString> bundleInfo(QStringView key);

} // namespace tunedeck

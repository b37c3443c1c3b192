// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>

namespace tunedeck {

/// What of `html`, which comes from the network, may be shown: text, headings, lists, emphasis, quotations, and links
/// whose address is https. Nothing of it runs, is loaded or has a style; every element is closed, they are at most 16
/// deep and 2,000 in number.
[[nodiscard]] QString safeReleaseNotes(QStringView html);

} // namespace tunedeck

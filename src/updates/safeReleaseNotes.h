// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>

namespace tunedeck {

/// The parts of `html`, which comes from the network, that are safe to show: text, headings, lists, emphasis,
/// quotations, and links to https addresses. The result runs nothing, loads nothing, has no styles and does
/// not turn the text around it. It has at most 2,000 elements, at most 16 deep, and all are closed. A link of more than
/// 2,048 characters is text.
[[nodiscard]] QString safeReleaseNotes(QStringView html);

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>

namespace tunedeck {

/// The parts of `html`, which comes from the network, that are safe to show: text, headings, lists, emphasis,
/// quotations, and links to https addresses. The result runs nothing, loads nothing and has no styles. It has at most
/// 2,000 elements, at most 16 deep, and all are closed.
[[nodiscard]] QString safeReleaseNotes(QStringView html);

} // namespace tunedeck

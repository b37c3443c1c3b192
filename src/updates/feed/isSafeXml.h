// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

namespace tunedeck {

/// Whether `xml` can be parsed in a time that grows with its length alone: no document type or other declaration
/// outside of comments and CDATA sections, elements at most 64 deep, and tags of at most 2,048 characters. Also true
/// for some texts that are malformed.
[[nodiscard]] bool isSafeXml(QStringView xml);

} // namespace tunedeck

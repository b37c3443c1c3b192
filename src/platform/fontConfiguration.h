// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

namespace tunedeck {

struct DestroyFontConfiguration {
    void operator()(void *configuration) const;
};
/// Fontconfig's settings, and the list of the installed fonts: an FcConfig.
using FontConfiguration = std::unique_ptr<void, DestroyFontConfiguration>;

/// Reads what fontconfig reads when it is first used, without the templates that it has for programs that let the user
/// choose among them, and without Type 1 fonts. Null if fontconfig cannot be set up in this way or no font is left:
/// then fontconfig sets itself up, as it also does again when fonts are installed later. Needs no application object,
/// and may run on any thread.
[[nodiscard]] FontConfiguration readFontConfiguration();

/// Makes fontconfig use it. Does nothing for null. No other thread may use fonts at that moment.
void useFontConfiguration(const FontConfiguration &configuration);

} // namespace tunedeck

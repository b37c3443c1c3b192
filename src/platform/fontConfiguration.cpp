// SPDX-License-Identifier: MIT
#include "platform/fontConfiguration.h"

#include <fontconfig/fontconfig.h>

#include <utility>

namespace tunedeck {

namespace {
/// Type 1 is the format before OpenType, which Pango no longer reads. Debian installs such fonts for printing, a second
/// time beside the OpenType ones. If fontconfig chooses the Type 1 file, opening it takes a millisecond. An
/// <acceptfont> in the user's settings wins over this.
constexpr char withoutType1[] = R"(<?xml version="1.0"?>
<fontconfig>
  <selectfont>
    <rejectfont><pattern><patelt name="fontformat"><string>Type 1</string></patelt></pattern></rejectfont>
  </selectfont>
</fontconfig>)";

bool leaveOutType1(FcConfig *configuration)
{
    return FcConfigParseAndLoadFromMemory(configuration, reinterpret_cast<const FcChar8 *>(withoutType1), FcTrue);
}

bool hasFonts(FcConfig *configuration)
{
    const FcFontSet *const fonts = FcConfigGetFonts(configuration, FcSetSystem);
    return fonts && fonts->nfont > 0;
}

/// Without one, fontconfig adds a folder of its own.
bool hasCacheFolder(FcConfig *configuration)
{
    FcStrList *folders = FcConfigGetCacheDirs(configuration);
    if (!folders) {
        return false;
    }
    const bool hasOne = FcStrListNext(folders) != nullptr;
    FcStrListDone(folders);
    return hasOne;
}
} // namespace

void DestroyFontConfiguration::operator()(void *configuration) const
{
    FcConfigDestroy(static_cast<FcConfig *>(configuration));
}

FontConfiguration readFontConfiguration()
{
    FcConfig *const configuration = FcConfigCreate();
    FontConfiguration owner(configuration);
    const bool isComplete = configuration && FcConfigParseAndLoad(configuration, nullptr, FcTrue)
        && hasCacheFolder(configuration) && leaveOutType1(configuration) && FcConfigBuildFonts(configuration)
        && hasFonts(configuration);
    return isComplete ? std::move(owner) : nullptr;
}

void useFontConfiguration(const FontConfiguration &configuration)
{
    if (configuration) {
        // Fontconfig keeps a reference of its own.
        FcConfigSetCurrent(static_cast<FcConfig *>(configuration.get()));
    }
}

} // namespace tunedeck

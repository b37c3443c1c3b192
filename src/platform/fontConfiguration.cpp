// SPDX-License-Identifier: MIT
#include "platform/fontConfiguration.h"

#include <fontconfig/fontconfig.h>

#include <utility>

namespace tunedeck {

namespace {
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
        && hasCacheFolder(configuration) && FcConfigBuildFonts(configuration);
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

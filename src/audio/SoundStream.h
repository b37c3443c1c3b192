// SPDX-License-Identifier: MIT
#pragma once

#include "audio/StreamOrigin.h"

#include <pulse/def.h>
#include <pulse/volume.h>

#include <cstdint>

namespace tunedeck {

/// A stream of a program to an output, as the sound server reported it.
struct SoundStream {
    StreamOrigin origin;
    std::uint32_t output = PA_INVALID_INDEX; ///< index; PA_INVALID_INDEX if the server has not found one yet
    pa_cvolume volume = {};
    /// The last volume that was not silent, which still has the balance of the channels.
    pa_cvolume balance = {};
    bool canSetVolume = false;
    bool isMuted = false;
    bool isCorked = false; ///< whether the program has paused it
};

} // namespace tunedeck

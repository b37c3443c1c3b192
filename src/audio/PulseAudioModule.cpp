// SPDX-License-Identifier: MIT
#include "audio/PulseAudioModule.h"

#include "audio/PulsePlayerSound.h"

namespace tunedeck {

std::unique_ptr<PlayerSound> PulseAudioModule::makePlayerSound() const
{
    return PulsePlayerSound::make();
}

} // namespace tunedeck

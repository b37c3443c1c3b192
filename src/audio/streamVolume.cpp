// SPDX-License-Identifier: MIT
#include "audio/streamVolume.h"

#include <algorithm>

namespace tunedeck {

int percentOf(const pa_cvolume &volume)
{
    const pa_volume_t loudest = std::min(pa_cvolume_max(&volume), PA_VOLUME_NORM);
    return int((loudest * 100 + PA_VOLUME_NORM / 2) / PA_VOLUME_NORM);
}

pa_cvolume turnedTo(const pa_cvolume &balance, int percent)
{
    const auto loudest = pa_volume_t((unsigned(std::clamp(percent, 0, 100)) * PA_VOLUME_NORM + 50) / 100);
    pa_cvolume volume = balance;
    pa_cvolume_scale(&volume, loudest);
    return volume;
}

} // namespace tunedeck

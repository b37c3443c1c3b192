// SPDX-License-Identifier: MIT
#pragma once

#include "music/PlayerSound.h"

#include <QtPlugin>

#include <memory>

namespace tunedeck {

/// A module that reaches the sound server. The program loads it when a player first plays, so that the library does not
/// slow its start.
class AudioModule {
public:
    virtual ~AudioModule() = default;

    /// Null if the system has no means for it.
    [[nodiscard]] virtual std::unique_ptr<PlayerSound> makePlayerSound() const = 0;
};

/// The beginning of the module's interface identifier. The program's version is its end, so that the program loads no
/// module of another version.
#define TUNEDECK_AUDIO_MODULE "org.tunedeck.AudioModule/"

} // namespace tunedeck

Q_DECLARE_INTERFACE(tunedeck::AudioModule, TUNEDECK_AUDIO_MODULE)

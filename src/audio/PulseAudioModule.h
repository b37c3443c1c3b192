// SPDX-License-Identifier: MIT
#pragma once

#include "audio/AudioModule.h"

#include <QObject>

namespace tunedeck {

/// The module that uses libpulse.
class PulseAudioModule : public QObject, public AudioModule {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TUNEDECK_AUDIO_MODULE TUNEDECK_VERSION)
    Q_INTERFACES(tunedeck::AudioModule)

public:
    [[nodiscard]] std::unique_ptr<PlayerSound> makePlayerSound() const override;
};

} // namespace tunedeck

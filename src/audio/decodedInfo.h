// SPDX-License-Identifier: MIT
#pragma once

#include "audio/SoundStream.h"
#include "music/PlayerSound.h"

#include <pulse/introspect.h>

#include <optional>

namespace tunedeck {

/// @name Reports of the sound server as values
/// They may hold any text that a program or device has given the server; texts are cut.
/// @{
[[nodiscard]] SoundStream decodedStream(const pa_sink_input_info &info);
/// The origin of all streams of a client, as far as the client knows; without the stream.
[[nodiscard]] StreamOrigin decodedClient(const pa_client_info &info);
/// `stream` with what only its client says. Of the sandbox, the client's word counts.
[[nodiscard]] StreamOrigin completedOrigin(const StreamOrigin &stream, const StreamOrigin &client);
/// None if its name is too long to be used.
[[nodiscard]] std::optional<SoundOutput> decodedOutput(const pa_sink_info &info);
/// Whether it is the short sound of a button or a message, which is no music.
[[nodiscard]] bool isEventSound(const pa_sink_input_info &info);
/// @}

} // namespace tunedeck

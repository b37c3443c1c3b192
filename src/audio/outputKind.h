// SPDX-License-Identifier: MIT
#pragma once

#include "music/PlayerSound.h"

#include <QHash>
#include <QString>

namespace tunedeck {

/// The sound server's report of an output.
struct OutputFacts {
    QString name = {}; ///< the server's own
    QString driver = {}; ///< the module that made it
    bool isNetwork = false; ///< whether the server says that it is on the network
    QString activePort = {}; ///< name of the port in use; empty if there is none
    bool isActivePortHdmi = false; ///< whether the server says so
    QHash<QString, QString> properties = {}; ///< such as device.bus
};

/// PulseAudio and PipeWire describe the same device differently; the kind is the same.
[[nodiscard]] SoundOutput::Kind outputKind(const OutputFacts &output);

} // namespace tunedeck

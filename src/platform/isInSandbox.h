// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QtGlobal>

namespace tunedeck {

/// Whether this program runs in a Flatpak's sandbox. It then starts no other programs, and with the permissions that
/// Tunedeck's manifest asks for it reaches neither the sound server nor the desktop beyond its portals. Reads the disk
/// once: the answer cannot change.
[[nodiscard]] inline bool isInSandbox()
{
    static const bool exists = QFile::exists(QStringLiteral("/.flatpak-info"));
    return exists;
}

/// Whether a sandbox keeps the sound server from this program. Flatpak names a socket of its own in PULSE_SERVER where
/// the program may reach the server. Elsewhere the variable keeps the session's value, which leads nowhere in a
/// sandbox.
[[nodiscard]] inline bool isSoundServerForbidden(bool inSandbox = isInSandbox())
{
    return inSandbox && !qgetenv("PULSE_SERVER").startsWith("unix:/run/flatpak/");
}

} // namespace tunedeck

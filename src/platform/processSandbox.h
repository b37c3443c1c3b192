// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

namespace tunedeck {

/// The sandbox that a process runs in.
struct ProcessSandbox {
    enum class Kind { None, Flatpak, Snap };

    Kind kind = Kind::None; ///< other sandboxes count as none
    QString application; ///< the Flatpak's identifier or the Snap's name; empty if there is no sandbox

    bool operator==(const ProcessSandbox &) const = default;
};

/// No value if it cannot be found out: the process has ended, belongs to another user, or hides it. `processes` is the
/// folder with a folder for each process. Reads files that the process may have made itself, so call it on a worker
/// thread.
[[nodiscard]] std::optional<ProcessSandbox> sandboxOfProcess(
    qint64 processId, const QString &processes = QStringLiteral("/proc"));

} // namespace tunedeck

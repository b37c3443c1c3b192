// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tunedeck {

/// How a change of the autostart entry ended.
enum class AutostartChange {
    Done,
    KeptUsersEntry, ///< the user has changed the entry, or made one, so it stays as it is
    NotWritable, ///< the folder or the entry
};

/// The program's entry in the folder of what starts with the session. The functions read and write files, so call them
/// on a thread.

/// The folder of the user who runs the program.
[[nodiscard]] QString autostartFolder();
/// Whether there is an entry that neither this program nor a portal has made, or that the user has changed. A portal's
/// entry counts as changed if it has a line that portals do not write. Its command may be any.
[[nodiscard]] bool hasUsersAutostartEntry(const QString &folder);
/// Makes the entry in `folder`, which may be missing, or replaces one that a portal has made. It runs `command`, a
/// command line of the desktop entry specification.
[[nodiscard]] AutostartChange addAutostartEntry(const QString &folder, const QString &command);
/// Removes the entry that addAutostartEntry() of any version of the program or a portal has made.
[[nodiscard]] AutostartChange removeAutostartEntry(const QString &folder);

} // namespace tunedeck

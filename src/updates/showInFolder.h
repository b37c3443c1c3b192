// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QString>

namespace tunedeck {

/// Has the file manager on `bus` show the folder of the file `path` with the file selected, or, where none answers
/// within five seconds, opens the folder. Returns at once.
void showInFolder(const QDBusConnection &bus, const QString &path);

} // namespace tunedeck

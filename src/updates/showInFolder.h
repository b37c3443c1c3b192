// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QString>

namespace tunedeck {

/// Asks the file manager on `bus` to show the file `path` selected in its folder. Opens the folder if no file manager
/// answers within five seconds. Returns at once.
void showInFolder(const QDBusConnection &bus, const QString &path);

} // namespace tunedeck

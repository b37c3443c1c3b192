// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QWidget>

namespace tunedeck {

/// Has screen readers speak `text`, which `view` shows, without waiting for the user to go there. Before Qt 6.8 they
/// speak the view's accessible name in its place, and only if its role is QAccessible::Notification.
void announce(QWidget &view, const QString &text);

} // namespace tunedeck

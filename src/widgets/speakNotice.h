// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QWidget>

namespace tunedeck {

/// Has screen readers speak `text`, which `window` need not show. The window keeps an invisible notification for that
/// from the first time on. It has the text for ten seconds.
void speakNotice(QWidget &window, const QString &text);

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include "skin/looks/SkinEnvironment.h"

#include <QObject>

class QWidget;

namespace tunedeck {

/// Logs to "tunedeck.skin" how a view looks, the first time it is painted and after each change: the appearance, the
/// accent colour and the scale.
class LooksLog : public QObject {
    Q_OBJECT

public:
    /// Belongs to `view`, which is painted whenever its looks change.
    LooksLog(QWidget &view, const SkinEnvironment &environment);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Looks {
        bool isDark = false;
        bool isGraphite = false;
        double scale = 0;

        bool operator==(const Looks &) const = default;
    };

    QWidget &m_view;
    SkinEnvironment m_environment;
    Looks m_logged;
};

} // namespace tunedeck

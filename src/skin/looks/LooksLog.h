// SPDX-License-Identifier: MIT
#pragma once

#include "skin/looks/SkinEnvironment.h"

class QWidget;

namespace tunedeck {

/// Logs to "tunedeck.skin" how a view looks: the appearance, the accent colour and the scale.
class LooksLog {
public:
    /// Call it whenever `view` is painted. Logs the first time and after each change, and does nothing while the log is
    /// off.
    void logIfNew(const QWidget &view, const SkinEnvironment &environment);

private:
    struct Looks {
        bool isDark = false;
        bool isGraphite = false;
        double scale = 0; ///< device pixels per point; 0 before anything was logged

        bool operator==(const Looks &) const = default;
    };

    Looks m_logged;
};

} // namespace tunedeck

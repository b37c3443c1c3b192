// SPDX-License-Identifier: MIT
#include "skin/looks/LooksLog.h"

#include "skin/drawing/skinLog.h"
#include "skin/looks/skinLooks.h"

#include <QWidget>

namespace tunedeck {

void LooksLog::logIfNew(const QWidget &view, const SkinEnvironment &environment)
{
    if (!skinLog().isDebugEnabled()) {
        return;
    }
    const Looks looks{
        .isDark = isDark(environment), .isGraphite = isGraphite(environment), .scale = view.devicePixelRatioF()};
    if (looks != m_logged) {
        qCDebug(skinLog).noquote() << (looks.isDark ? "dark appearance," : "light appearance,")
                                   << (looks.isGraphite ? "graphite accent," : "blue accent,") << "scale"
                                   << looks.scale;
        m_logged = looks;
    }
}

} // namespace tunedeck

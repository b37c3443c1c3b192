// SPDX-License-Identifier: MIT
#include "skin/looks/LooksLog.h"

#include "skin/drawing/skinLog.h"
#include "skin/looks/skinLooks.h"

#include <QEvent>
#include <QWidget>

namespace tunedeck {

LooksLog::LooksLog(QWidget &view, const SkinEnvironment &environment)
    : QObject(&view)
    , m_view(view)
    , m_environment(environment)
{
    view.installEventFilter(this);
}

bool LooksLog::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint && skinLog().isDebugEnabled()) {
        const Looks looks{.isDark = isDark(m_environment),
            .isGraphite = isGraphite(m_environment),
            .scale = m_view.devicePixelRatioF()};
        if (looks != m_logged) {
            qCDebug(skinLog).noquote() << (looks.isDark ? "dark appearance," : "light appearance,")
                                       << (looks.isGraphite ? "graphite accent," : "blue accent,") << "scale"
                                       << looks.scale;
            m_logged = looks;
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tunedeck

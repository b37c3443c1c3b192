// SPDX-License-Identifier: MIT
#include "widgets/announce.h"

#include <QAccessible>
#include <QtGlobal>

namespace tunedeck {

void announce(QWidget &view, [[maybe_unused]] const QString &text)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent event(&view, text);
#else
    QAccessibleEvent event(&view, QAccessible::ObjectShow);
#endif
    QAccessible::updateAccessibility(&event);
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "widgets/speakNotice.h"

#include "widgets/announce.h"
#include "widgets/names.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QLatin1String>
#include <QTimer>

#include <chrono>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

/// A screen reader asks for the text a moment after it is notified, later on a busy machine.
constexpr auto timeToRead = 10s;
constexpr QLatin1String noticeName("notice");

QAccessibleInterface *accessibleNotice(const QString &, QObject *object)
{
    auto *view = object->objectName() == noticeName ? qobject_cast<QWidget *>(object) : nullptr;
    return view ? new QAccessibleWidget(view, QAccessible::Notification) : nullptr;
}

/// Has no size, so nothing of it is seen, and it is in nobody's way.
QWidget &noticeOf(QWidget &window)
{
    auto *notice = window.findChild<QWidget *>(noticeName, Qt::FindDirectChildrenOnly);
    if (!notice) {
        // Qt keeps each factory once, however often it is installed.
        QAccessible::installFactory(accessibleNotice);
        notice = new QWidget(&window);
        notice->setObjectName(noticeName);
        notice->resize(0, 0);
        notice->show();
        auto *end = new QTimer(notice);
        end->setSingleShot(true);
        end->setInterval(timeToRead);
        QObject::connect(end, &QTimer::timeout, notice, [notice] { updateAccessibleName(*notice, QString()); });
    }
    return *notice;
}
} // namespace

void speakNotice(QWidget &window, const QString &text)
{
    QWidget &notice = noticeOf(window);
    updateAccessibleName(notice, text);
    announce(notice, text);
    // It may not be true for long, and a screen reader can also be led to it.
    notice.findChild<QTimer *>()->start();
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "widgets/PicturesOfHiddenWindows.h"

#include <QApplication>
#include <QBackingStore>
#include <QEvent>
#include <QSize>
#include <QWidget>

#include <chrono>

#include <malloc.h>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

/// The X server refuses a pixmap of no size.
constexpr QSize least(1, 1);
} // namespace

PicturesOfHiddenWindows::PicturesOfHiddenWindows(QObject *parent)
    : QObject(parent)
{
    m_afterwards.setSingleShot(true);
    m_afterwards.setInterval(1s);
    // Otherwise glibc keeps what is free below memory in use.
    connect(&m_afterwards, &QTimer::timeout, this, [] { ::malloc_trim(0); });
    qApp->installEventFilter(this);
}

bool PicturesOfHiddenWindows::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Hide && !event->spontaneous() && watched->isWidgetType()) {
        const auto &widget = *static_cast<QWidget *>(watched);
        QBackingStore *const picture = widget.isWindow() ? widget.backingStore() : nullptr;
        if (picture) {
            picture->resize(least);
            m_afterwards.start();
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tunedeck

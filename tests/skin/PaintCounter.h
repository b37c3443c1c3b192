// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QPaintEvent>
#include <QTest>
#include <QWidget>

namespace tunedeck {

/// Shows a view and counts how often it is painted from then on.
class PaintCounter : public QObject {
public:
    explicit PaintCounter(QWidget &view)
        : m_view(view)
    {
        view.window()->show();
        m_isShown = QTest::qWaitForWindowExposed(view.window());
        settle();
        view.installEventFilter(this);
    }

    /// The number of paintings since the last call; -1 if the view was never shown.
    [[nodiscard]] int takeCount()
    {
        settle();
        return m_isShown ? std::exchange(m_count, 0) : -1;
    }
    [[nodiscard]] bool wasPaintedWhole() const { return m_lastRegion == QRegion(m_view.rect()); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            ++m_count;
            m_lastRegion = static_cast<QPaintEvent *>(event)->region();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    /// Until what was asked to be painted is painted.
    static void settle() { QCoreApplication::processEvents(); }

    QWidget &m_view;
    QRegion m_lastRegion;
    int m_count = 0;
    bool m_isShown = false;
};

} // namespace tunedeck

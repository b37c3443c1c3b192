// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>
#include <QTest>
#include <QWidget>
#include <QWindow>

namespace tunedeck {

/// A window whose menu opens with the right mouse button, with one control in it. The mouse acts upon the native
/// window, because Qt finds the widget that gets an event from the pressed button and the open menu.
class MenuWindow : public QWidget {
public:
    static constexpr QPoint onControl{50, 20};

    /// `control` fills a part of the window and belongs to it from now on.
    explicit MenuWindow(QWidget &control)
    {
        resize(200, 60);
        control.setParent(this);
        control.setGeometry(10, 10, 180, 20);
        m_menu.addAction(QStringLiteral("Play"));
        setContextMenuPolicy(Qt::CustomContextMenu);
        connect(this, &QWidget::customContextMenuRequested, &m_menu,
            [this](QPoint place) { m_menu.popup(mapToGlobal(place)); });
        show();
    }

    [[nodiscard]] bool isMenuOpen() const { return m_menu.isVisible(); }
    void press(Qt::MouseButton button) { QTest::mousePress(windowHandle(), button, {}, onControl); }
    void release(Qt::MouseButton button) { QTest::mouseRelease(windowHandle(), button, {}, onControl); }
    void closeMenu() { m_menu.close(); }

private:
    QMenu m_menu{this};
};

} // namespace tunedeck

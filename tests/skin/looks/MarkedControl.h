// SPDX-License-Identifier: MIT
#pragma once

#include "support/SkinDesk.h"

#include <QColor>
#include <QImage>
#include <QTest>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace tunedeck {

/// A window of one colour, 100 points wide and 60 high, with two controls that paint nothing.
class MarkedControl : public QWidget {
public:
    MarkedControl()
    {
        resize(100, 60);
        control.setGeometry(20, 15, 35, 25);
        other.setGeometry(70, 15, 20, 25);
        control.setFocusPolicy(Qt::TabFocus);
        other.setFocusPolicy(Qt::TabFocus);
        setAutoFillBackground(true);
    }

    /// False if the window does not get the keyboard.
    [[nodiscard]] bool open(const QColor &ground)
    {
        setPalette(QPalette(ground));
        show();
        activateWindow();
        if (!QTest::qWaitForWindowActive(this)) {
            return false;
        }
        other.setFocus(Qt::OtherFocusReason);
        return true;
    }

    [[nodiscard]] QImage picture() { return grab().toImage(); }

    SkinDesk desk;
    QWidget control{this};
    QWidget other{this};
};

inline double luminance(const QColor &color)
{
    const auto linear = [](double value) { return std::pow(value, 2.2); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// The contrast of the two lightest and darkest pixels of `picture`, from 1 to 21.
inline double contrast(const QImage &picture)
{
    double least = 1;
    double most = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            least = std::min(least, luminance(picture.pixelColor(x, y)));
            most = std::max(most, luminance(picture.pixelColor(x, y)));
        }
    }
    return (most + 0.05) / (least + 0.05);
}

/// The grounds that controls stand on: light metal, dark metal, the drawer.
inline void addGrounds()
{
    QTest::addColumn<QColor>("ground");
    QTest::addColumn<bool>("graphite");
    for (const bool graphite : {false, true}) {
        const char *accent = graphite ? "graphite" : "blue";
        QTest::addRow("light metal, %s", accent) << QColor(0xc4, 0xc4, 0xc4) << graphite;
        QTest::addRow("inactive metal, %s", accent) << QColor(0xdc, 0xdc, 0xdc) << graphite;
        QTest::addRow("dark metal, %s", accent) << QColor(0x98, 0x98, 0x98) << graphite;
        QTest::addRow("drawer, %s", accent) << QColor(0x76, 0x80, 0x90) << graphite;
    }
}

} // namespace tunedeck

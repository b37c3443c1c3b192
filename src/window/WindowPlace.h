// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>

#include <optional>

class QScreen;

namespace tunedeck {

/// A screen, in points of the desktop.
struct ScreenArea {
    QString name;
    QRect geometry;
    QRect available; ///< without panels

    [[nodiscard]] static ScreenArea of(const QScreen &screen);
    [[nodiscard]] static QList<ScreenArea> all();
};

/// Where a window was, and on which screen.
struct WindowPlace {
    QPoint topLeft; ///< in points of the desktop
    QString screenName;
    QRect screen; ///< in points of the desktop

    /// Reads what text() has written. No value for any other text.
    [[nodiscard]] static std::optional<WindowPlace> fromText(const QString &text);
    [[nodiscard]] QString text() const;

    /// Where a window of this size comes back. It keeps its place on its screen, wherever that is now. It goes inside
    /// the available part of the screen if too little of it could be grabbed there, or if the screen has another size.
    /// If its screen is gone, it goes to the nearest one. `screens` must not be empty.
    [[nodiscard]] QPoint topLeftOn(const QList<ScreenArea> &screens, QSize size) const;
};

} // namespace tunedeck

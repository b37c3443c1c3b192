// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QSizeF>
#include <QString>

#include <memory>

class QPainter;
class QSvgRenderer;

namespace tunedeck {

/// An SVG picture from the program's resources.
class ResourceImage {
public:
    /// `name` is the file's name without folder and suffix. A missing picture is a fatal error.
    explicit ResourceImage(const QString &name);
    ~ResourceImage();

    /// The size in points that the picture's file gives.
    [[nodiscard]] QSizeF size() const;
    /// Stretches the picture to fill `rect`.
    void draw(QPainter &painter, const QRectF &rect) const;

private:
    std::unique_ptr<QSvgRenderer> m_renderer;
};

} // namespace tunedeck

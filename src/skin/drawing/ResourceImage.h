// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QSizeF>
#include <QString>

#include <memory>

class QPainter;
class QSvgRenderer;

namespace tunedeck {

/// A picture of the program's own resources.
class ResourceImage {
public:
    /// One that is missing is fatal.
    explicit ResourceImage(const QString &name);
    ~ResourceImage();

    /// In points, as the picture itself tells.
    [[nodiscard]] QSizeF size() const;
    /// Fills `rect`, whatever its proportions.
    void draw(QPainter &painter, const QRectF &rect) const;

private:
    std::unique_ptr<QSvgRenderer> m_renderer;
};

} // namespace tunedeck

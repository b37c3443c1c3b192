// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QSize>
#include <QString>

#include <functional>

class QPainter;
class QRectF;

namespace tunedeck {

/// One picture of the gallery.
struct SkinGalleryEntry {
    QString className;
    QString variant;
    /// In points.
    QSize size;
    /// Draws the control and nothing else into `bounds`, which begins at (0, 0). The painter counts y downwards and has
    /// antialiasing on; its device's pixel ratio is the scale to draw for.
    std::function<void(QPainter &painter, const QRectF &bounds, bool dark)> paint;
};

using SkinGalleryEntries = QList<SkinGalleryEntry>;

/// The grounds behind the controls.
[[nodiscard]] SkinGalleryEntries groundEntries();
/// Buttons and sliders.
[[nodiscard]] SkinGalleryEntries controlEntries();
/// The drawer's ground and its controls.
[[nodiscard]] SkinGalleryEntries drawerEntries();

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QPixmap>
#include <QPoint>
#include <QRect>

#include <vector>

class QWidget;

namespace tunedeck {

/// A picture at its place in a view. All lengths are in device pixels.
struct PlacedPicture {
    QPixmap picture;
    /// The part of the picture that is not empty.
    QRect inked;
    /// The picture's upper left corner, from the view's.
    QPoint position;

    /// The part of the view that it draws on.
    [[nodiscard]] QRect marked() const { return inked.translated(position); }
};

/// Shows moving pictures in front of what a view has painted, so that the view need not paint each step. Where place()
/// or move() returns false, that is impossible: the view then removes the pictures and paints them itself.
class PictureMover {
public:
    PictureMover() = default;
    virtual ~PictureMover() = default;
    PictureMover(const PictureMover &) = delete;
    PictureMover &operator=(const PictureMover &) = delete;

    /// Shows `pictures` in front of `view`, which is `field` of its window, in device pixels. The view calls it each
    /// time that it is painted for its window, because the pictures lie on what is painted then. `mask` is as large
    /// as the field; its alpha says how much of a picture is seen.
    [[nodiscard]] virtual bool place(
        QWidget &view, const QRect &field, const QImage &mask, const std::vector<PlacedPicture> &pictures) = 0;
    /// Shows `pictures` instead of those before, on the same ground. Does nothing before place().
    [[nodiscard]] virtual bool move(const std::vector<PlacedPicture> &pictures) = 0;
    /// Shows nothing until the next place().
    virtual void remove() = 0;
};

} // namespace tunedeck

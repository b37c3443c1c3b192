// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/PictureMover.h"
#include "x11/X11Picture.h"

#include <QPointer>
#include <QRect>
#include <QTimer>
#include <QWidget>

#include <xcb/xcb.h>

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace tunedeck {

/// Lets the X server move the pictures: it keeps them, the ground and the mask, and gets a few short requests for each
/// step, which need no answer. It draws into a window of its own in front of the view. The pointer does not meet that
/// window, and the server restores it where it was covered.
///
/// Works on X11 where the server has the RENDER and SHAPE extensions. The first place() waits for the X server.
class X11PictureMover : public PictureMover {
public:
    X11PictureMover();
    ~X11PictureMover() override;

    [[nodiscard]] bool place(
        QWidget &view, const QRect &field, const QImage &mask, const std::vector<PlacedPicture> &pictures) override;
    [[nodiscard]] bool move(const std::vector<PlacedPicture> &pictures) override;
    void remove() override;

private:
    [[nodiscard]] bool makeWindow(xcb_window_t parent);
    void setSize(const QSize &size);
    [[nodiscard]] bool takeGround();
    [[nodiscard]] bool takeMask(const QImage &mask);
    [[nodiscard]] bool takePictures(const std::vector<PlacedPicture> &pictures);
    void drawAgain();
    void draw(const QRect &part);
    void show(const QRect &part);
    void setGeometry(const QRect &field);

    QPointer<QWidget> m_view;
    QTimer m_afterPainting;
    xcb_window_t m_parent = XCB_NONE; ///< the view's window
    xcb_window_t m_window = XCB_NONE;
    std::uint8_t m_depth = 0;
    xcb_render_pictformat_t m_format = XCB_NONE; ///< of both windows
    QRect m_field; ///< of the view's window
    bool m_isMapped = false;
    X11Picture m_onScreen;
    X11Picture m_buffer; ///< what the server restores
    X11Picture m_ground;
    X11Picture m_mask;
    std::int64_t m_maskKey = 0; ///< QImage::cacheKey()
    std::vector<PlacedPicture> m_placed;
    std::unordered_map<std::int64_t, X11Picture> m_pictures; ///< by QPixmap::cacheKey()
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <xcb/render.h>

#include <utility>

class QImage;

namespace tunedeck {

/// A picture that the X server keeps. Empty by default. It needs Qt's connection to the server for as long as it lives.
class X11Picture {
public:
    X11Picture() = default;
    /// A picture of what `drawable` shows, in which the server may also draw.
    X11Picture(xcb_drawable_t drawable, xcb_render_pictformat_t format);
    /// `image` on the server. `format` is the server's for the image's format, which has 8 or 32 bits a pixel; the
    /// image is in the byte order of this machine. Empty if the server takes no picture as large.
    X11Picture(const QImage &image, xcb_render_pictformat_t format);
    X11Picture(X11Picture &&other) noexcept
        : m_id(std::exchange(other.m_id, XCB_NONE))
    {
    }
    X11Picture &operator=(X11Picture &&other) noexcept
    {
        std::swap(m_id, other.m_id);
        return *this;
    }
    ~X11Picture();
    Q_DISABLE_COPY(X11Picture)

    [[nodiscard]] bool isEmpty() const { return m_id == XCB_NONE; }
    [[nodiscard]] xcb_render_picture_t id() const { return m_id; }

private:
    xcb_render_picture_t m_id = XCB_NONE;
};

} // namespace tunedeck

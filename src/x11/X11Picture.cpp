// SPDX-License-Identifier: MIT
#include "x11/X11Picture.h"

#include "x11/x11.h"

#include <QImage>

#include <algorithm>
#include <cstdint>

namespace tunedeck {

namespace {
/// The protocol's coordinates have 16 bits with a sign.
constexpr int mostPixels = 32'767;

/// Bytes that a request may carry beside its own fields.
qsizetype mostBytes()
{
    constexpr qsizetype bytesOfLength = 4;
    constexpr qsizetype fields = 64;
    return bytesOfLength * qsizetype(xcb_get_maximum_request_length(x11Connection())) - fields;
}

void send(const QImage &image, xcb_pixmap_t pixmap)
{
    xcb_connection_t *const server = x11Connection();
    const xcb_gcontext_t context = xcb_generate_id(server);
    xcb_create_gc(server, context, pixmap, 0, nullptr);
    xcb_put_image(server, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, static_cast<std::uint16_t>(image.width()),
        static_cast<std::uint16_t>(image.height()), 0, 0, 0, static_cast<std::uint8_t>(image.depth()),
        static_cast<std::uint32_t>(image.sizeInBytes()), image.constBits());
    xcb_free_gc(server, context);
}
} // namespace

X11Picture::X11Picture(xcb_drawable_t drawable, xcb_render_pictformat_t format)
    : m_id(xcb_generate_id(x11Connection()))
{
    xcb_render_create_picture(x11Connection(), m_id, drawable, format, 0, nullptr);
}

X11Picture::X11Picture(const QImage &image, xcb_render_pictformat_t format)
{
    if (image.isNull() || std::max(image.width(), image.height()) > mostPixels || image.sizeInBytes() > mostBytes()) {
        return;
    }
    xcb_connection_t *const server = x11Connection();
    const xcb_pixmap_t pixmap = xcb_generate_id(server);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
    xcb_create_pixmap(server, static_cast<std::uint8_t>(image.depth()), pixmap, root,
        static_cast<std::uint16_t>(image.width()), static_cast<std::uint16_t>(image.height()));
    send(image, pixmap);
    *this = X11Picture(pixmap, format);
    // The server keeps it for as long as there is a picture of it.
    xcb_free_pixmap(server, pixmap);
}

X11Picture::~X11Picture()
{
    if (!isEmpty()) {
        xcb_render_free_picture(x11Connection(), m_id);
    }
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "x11/X11PictureMover.h"

#include "x11/x11.h"

#include <QBackingStore>
#include <QWindow>

#include <xcb/shape.h>
#include <xcb/xcb_renderutil.h>

#include <algorithm>
#include <array>
#include <utility>

namespace tunedeck {

namespace {
bool hasExtension(xcb_extension_t &extension)
{
    const xcb_query_extension_reply_t *const data = xcb_get_extension_data(x11Connection(), &extension);
    return data && data->present;
}

/// The server's formats. Null where an extension is missing, and where the server reads numbers in another byte order
/// than this machine writes them.
const xcb_render_query_pict_formats_reply_t *formats()
{
    xcb_connection_t *const server = x11Connection();
    constexpr auto order = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? XCB_IMAGE_ORDER_LSB_FIRST : XCB_IMAGE_ORDER_MSB_FIRST;
    const bool isAble = server && xcb_get_setup(server)->image_byte_order == order && hasExtension(xcb_render_id)
        && hasExtension(xcb_shape_id);
    return isAble ? xcb_render_util_query_formats(server) : nullptr;
}

xcb_render_pictformat_t standardFormat(xcb_pict_standard_t standard)
{
    const auto *const known = formats();
    const auto *const format = known ? xcb_render_util_find_standard_format(known, standard) : nullptr;
    return format ? format->id : xcb_render_pictformat_t{XCB_NONE};
}

/// The window's picture. It holds what is painted, also while the window is hidden.
const QImage *pictureOf(const QWidget &window)
{
    const QBackingStore *const store = window.backingStore();
    QPaintDevice *const device = store && !store->size().isEmpty() ? window.backingStore()->paintDevice() : nullptr;
    return device && device->devType() == QInternal::Image ? static_cast<const QImage *>(device) : nullptr;
}

/// The pictures' parts in the field.
QRect markedBy(const std::vector<PlacedPicture> &pictures)
{
    QRect marked;
    for (const PlacedPicture &picture : pictures) {
        marked |= picture.marked();
    }
    return marked;
}

void compose(xcb_render_pict_op_t operation, const X11Picture &source, const QPoint &inSource,
    xcb_render_picture_t mask, const X11Picture &target, const QRect &part)
{
    const auto number = [](int coordinate) { return static_cast<std::int16_t>(coordinate); };
    xcb_render_composite(x11Connection(), operation, source.id(), mask, target.id(), number(inSource.x()),
        number(inSource.y()), number(part.x()), number(part.y()), number(part.x()), number(part.y()),
        static_cast<std::uint16_t>(part.width()), static_cast<std::uint16_t>(part.height()));
}
} // namespace

X11PictureMover::X11PictureMover()
{
    m_afterPainting.setSingleShot(true);
    m_afterPainting.callOnTimeout([this] { drawAgain(); });
}

X11PictureMover::~X11PictureMover()
{
    remove();
}

bool X11PictureMover::place(
    QWidget &view, const QRect &field, const QImage &mask, const std::vector<PlacedPicture> &pictures)
{
    m_view = &view;
    const auto parent = static_cast<xcb_window_t>(view.window()->internalWinId());
    if (field.isEmpty() || !parent || (parent != m_parent && !makeWindow(parent))) {
        return false;
    }
    if (field.size() != m_field.size()) {
        setSize(field.size());
    }
    const bool isMoved = std::exchange(m_field, field) != field;
    if (!takeGround() || !takeMask(mask) || !takePictures(pictures)) {
        return false;
    }
    const QRect whole(QPoint(), field.size());
    draw(whole);
    if (isMoved || !m_isMapped) {
        setGeometry(field);
    }
    show(whole);
    m_afterPainting.start(0);
    return true;
}

bool X11PictureMover::move(const std::vector<PlacedPicture> &pictures)
{
    if (!m_isMapped) {
        return true;
    }
    const QRect before = markedBy(m_placed);
    if (!takePictures(pictures)) {
        return false;
    }
    const QRect part = (before | markedBy(m_placed)) & QRect(QPoint(), m_field.size());
    if (!part.isEmpty()) {
        draw(part);
        show(part);
    }
    return true;
}

void X11PictureMover::remove()
{
    m_afterPainting.stop();
    if (m_window != XCB_NONE) {
        // The window is gone already if the view's is.
        xcb_connection_t *const server = x11Connection();
        xcb_discard_reply(server, xcb_destroy_window_checked(server, m_window).sequence);
        xcb_flush(server);
    }
    m_window = m_parent = XCB_NONE;
    m_field = {};
    m_isMapped = false;
    m_onScreen = {};
    m_buffer = {};
    m_placed.clear();
    m_pictures.clear();
}

/// A window like `parent` in front of it.
bool X11PictureMover::makeWindow(xcb_window_t parent)
{
    remove();
    xcb_connection_t *const server = x11Connection();
    const auto *const known = formats();
    if (!known) {
        return false;
    }
    const auto attributesOf = xcb_get_window_attributes(server, parent);
    const auto geometryOf = xcb_get_geometry(server, parent);
    const X11Reply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(server, attributesOf, nullptr));
    const X11Reply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(server, geometryOf, nullptr));
    const auto *const format = attributes ? xcb_render_util_find_visual_format(known, attributes->visual) : nullptr;
    if (!format || !geometry) {
        return false;
    }
    m_format = format->format;
    m_depth = geometry->depth;
    m_parent = parent;
    m_window = xcb_generate_id(server);
    const std::array<std::uint32_t, 2> values{0, attributes->colormap};
    xcb_create_window(server, m_depth, m_window, parent, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
        attributes->visual, XCB_CW_BORDER_PIXEL | XCB_CW_COLORMAP, values.data());
    xcb_shape_rectangles(
        server, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED, m_window, 0, 0, 0, nullptr);
    m_onScreen = X11Picture(m_window, m_format);
    return true;
}

void X11PictureMover::setSize(const QSize &size)
{
    xcb_connection_t *const server = x11Connection();
    const xcb_pixmap_t pixmap = xcb_generate_id(server);
    xcb_create_pixmap(server, m_depth, pixmap, m_window, static_cast<std::uint16_t>(size.width()),
        static_cast<std::uint16_t>(size.height()));
    m_buffer = X11Picture(pixmap, m_format);
    xcb_change_window_attributes(server, m_window, XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_free_pixmap(server, pixmap);
}

bool X11PictureMover::takeGround()
{
    const QImage *const painted = pictureOf(*m_view->window());
    if (!painted) {
        return false;
    }
    QImage ground = painted->copy(m_field);
    ground.convertTo(QImage::Format_ARGB32_Premultiplied);
    m_ground = X11Picture(ground, standardFormat(XCB_PICT_STANDARD_ARGB_32));
    return !m_ground.isEmpty();
}

bool X11PictureMover::takeMask(const QImage &mask)
{
    if (m_mask.isEmpty() || mask.cacheKey() != m_maskKey) {
        m_maskKey = mask.cacheKey();
        m_mask = X11Picture(mask.convertToFormat(QImage::Format_Alpha8), standardFormat(XCB_PICT_STANDARD_A_8));
    }
    return !m_mask.isEmpty();
}

/// Sends the pictures that the server does not have, and drops those that are not shown.
bool X11PictureMover::takePictures(const std::vector<PlacedPicture> &pictures)
{
    std::unordered_map<std::int64_t, X11Picture> taken;
    for (const PlacedPicture &placed : pictures) {
        const std::int64_t key = placed.picture.cacheKey();
        if (auto known = m_pictures.extract(key)) {
            taken.insert(std::move(known));
        } else if (!placed.inked.isEmpty() && !taken.contains(key)) {
            taken[key] = X11Picture(
                placed.picture.toImage().copy(placed.inked).convertToFormat(QImage::Format_ARGB32_Premultiplied),
                standardFormat(XCB_PICT_STANDARD_ARGB_32));
        }
    }
    m_pictures = std::move(taken);
    m_placed = pictures;
    return std::ranges::none_of(m_pictures, [](const auto &picture) { return picture.second.isEmpty(); });
}

/// The marks of the keyboard's focus are painted after the view, and may reach into it.
void X11PictureMover::drawAgain()
{
    if (m_view && m_isMapped && takeGround()) {
        const QRect whole(QPoint(), m_field.size());
        draw(whole);
        show(whole);
    }
}

void X11PictureMover::draw(const QRect &part)
{
    compose(XCB_RENDER_PICT_OP_SRC, m_ground, part.topLeft(), XCB_NONE, m_buffer, part);
    for (const PlacedPicture &placed : m_placed) {
        const QRect marked = placed.marked() & part;
        if (!marked.isEmpty()) {
            compose(XCB_RENDER_PICT_OP_OVER, m_pictures.at(placed.picture.cacheKey()),
                marked.topLeft() - placed.marked().topLeft(), m_mask.id(), m_buffer, marked);
        }
    }
}

/// In one step, so that nobody sees the ground without the pictures.
void X11PictureMover::show(const QRect &part)
{
    compose(XCB_RENDER_PICT_OP_SRC, m_buffer, part.topLeft(), XCB_NONE, m_onScreen, part);
    xcb_flush(x11Connection());
}

void X11PictureMover::setGeometry(const QRect &field)
{
    const std::array<std::uint32_t, 4> values{static_cast<std::uint32_t>(field.x()),
        static_cast<std::uint32_t>(field.y()), static_cast<std::uint32_t>(field.width()),
        static_cast<std::uint32_t>(field.height())};
    xcb_configure_window(x11Connection(), m_window,
        XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values.data());
    xcb_map_window(x11Connection(), m_window);
    m_isMapped = true;
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "x11/expectedScale.h"

#include "x11/x11.h"

#include <QByteArrayList>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace tunedeck {

namespace {
constexpr double dotsPerInchAtScale1 = 96;
constexpr std::uint32_t mostResources = 16'384; // units of four bytes

/// No value if `text` is no positive number.
std::optional<double> positiveNumber(const QByteArray &text)
{
    bool isNumber = false;
    const double number = text.trimmed().toDouble(&isNumber);
    return isNumber && number > 0 ? std::optional(number) : std::nullopt;
}

std::optional<double> positiveVariable(const char *name)
{
    return positiveNumber(qgetenv(name));
}

/// The largest factor in a list such as "1.5;2" or "DP-1=1.5;HDMI-1=2".
std::optional<double> largestScreenFactor()
{
    std::optional<double> largest;
    const QByteArrayList factors = qgetenv("QT_SCREEN_SCALE_FACTORS").split(';');
    for (const QByteArray &factor : factors) {
        largest = std::max(largest, positiveNumber(factor.sliced(factor.lastIndexOf('=') + 1)));
    }
    return largest;
}

std::optional<double> dotsPerInchResource(const QByteArray &resources)
{
    const QByteArray name = "Xft.dpi:";
    const QByteArrayList lines = resources.split('\n');
    const auto line = std::ranges::find_if(lines, [&name](const QByteArray &each) { return each.startsWith(name); });
    return line == lines.end() ? std::nullopt : positiveNumber(line->sliced(name.size()));
}

double dotsPerInch(const QByteArray &resources)
{
    if (const std::optional<double> fonts = positiveVariable("QT_FONT_DPI")) {
        return *fonts;
    }
    return dotsPerInchResource(resources).value_or(dotsPerInchAtScale1);
}

/// The display's resources, which its first screen holds.
QByteArray resourcesOf(xcb_connection_t &server)
{
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(&server)).data->root;
    const auto cookie =
        xcb_get_property(&server, false, root, XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 0, mostResources);
    const X11Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(&server, cookie, nullptr));
    if (!reply) {
        return {};
    }
    return {static_cast<const char *>(xcb_get_property_value(reply.get())), xcb_get_property_value_length(reply.get())};
}
} // namespace

double expectedScale(const QByteArray &resources)
{
    const double scale = largestScreenFactor().value_or(dotsPerInch(resources) / dotsPerInchAtScale1);
    return scale * positiveVariable("QT_SCALE_FACTOR").value_or(1);
}

EarlyX11Connection connectToX11Early()
{
    EarlyX11Connection server(xcb_connect(nullptr, nullptr));
    return xcb_connection_has_error(server.get()) ? nullptr : std::move(server);
}

double expectedScale(xcb_connection_t &server)
{
    return expectedScale(resourcesOf(server));
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "x11/activateOnX11.h"

#include "platform/ActivationToken.h"
#include "x11/x11.h"

#include <QByteArray>
#include <QWindow>

#include <algorithm>

namespace tunedeck {

namespace {
constexpr std::uint8_t wholeNumbers = 32;
constexpr std::uint8_t characters = 8;
/// Source indication of _NET_ACTIVE_WINDOW. Window managers compare the time of a program's request with the time when
/// the user last did something in the window that has the keyboard focus.
constexpr std::uint32_t program = 1;

/// The root window of the screen that the program is on.
xcb_window_t rootWindow()
{
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(x11Connection()));
    for (int left = defaultScreenNumber(); left > 0 && screens.rem > 1; --left) {
        xcb_screen_next(&screens);
    }
    return screens.data->root;
}

void setNumber(xcb_window_t window, const char *property, std::uint32_t number)
{
    xcb_change_property(
        x11Connection(), XCB_PROP_MODE_REPLACE, window, x11Atom(property), XCB_ATOM_CARDINAL, wholeNumbers, 1, &number);
}

void setText(xcb_window_t window, const char *property, const QByteArray &text)
{
    xcb_change_property(x11Connection(), XCB_PROP_MODE_REPLACE, window, x11Atom(property), x11Atom("UTF8_STRING"),
        characters, static_cast<std::uint32_t>(text.size()), text.constData());
}

/// Qt may keep the user's times on a separate window. Window managers then ignore those on `window`.
xcb_window_t windowOfUserTime(xcb_window_t window)
{
    return x11Number(window, x11Atom("_NET_WM_USER_TIME_WINDOW")).value_or(window);
}

/// When the user last did something in `window`. No value if that is not known.
std::optional<xcb_timestamp_t> userTimeOf(xcb_window_t window)
{
    const std::optional<std::uint32_t> time = x11Number(windowOfUserTime(window), x11Atom("_NET_WM_USER_TIME"));
    return time == XCB_CURRENT_TIME ? std::nullopt : time;
}

/// When the user asked for the start with `token`. Any program on the bus can make a token up.
std::optional<xcb_timestamp_t> userTimeOf(const ActivationToken &token)
{
    const std::optional<std::uint32_t> now = token.x11StartupId.isEmpty() ? std::nullopt : x11Time();
    return now ? token.userTime(*now) : std::nullopt;
}

ActivationToken tokenOf(xcb_timestamp_t time)
{
    // No start is announced, so the text before the time means nothing.
    return {.x11StartupId = QStringLiteral("tunedeck_TIME%1").arg(time), .waylandToken = {}};
}

/// Marks `window` as the one that the start with `token` opens. Window managers take the time out of the startup id
/// too, so a made up one is left out.
void setStartup(xcb_window_t window, const ActivationToken &token, std::optional<xcb_timestamp_t> time)
{
    if (time) {
        setText(window, "_NET_STARTUP_ID", token.x11StartupId.toUtf8());
        setNumber(windowOfUserTime(window), "_NET_WM_USER_TIME", *time);
    }
}

xcb_client_message_event_t message(xcb_window_t window, xcb_atom_t type, std::uint8_t format)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = format;
    event.window = window;
    event.type = type;
    return event;
}

void sendToRoot(const xcb_client_message_event_t &event, std::uint32_t mask)
{
    xcb_send_event(x11Connection(), false, rootWindow(), mask, reinterpret_cast<const char *>(&event));
}

void requestActivation(xcb_window_t window, xcb_timestamp_t time)
{
    xcb_client_message_event_t event = message(window, x11Atom("_NET_ACTIVE_WINDOW"), wholeNumbers);
    event.data.data32[0] = program;
    event.data.data32[1] = time;
    sendToRoot(event, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT);
}

QByteArray quoted(QByteArray text)
{
    return '"' + text.replace('\\', "\\\\").replace('"', "\\\"") + '"';
}

/// Sends `text` in pieces. Receivers join the pieces that come from the same `sender`; a zero byte ends the text.
void sendStartupMessage(xcb_window_t sender, const QByteArray &text)
{
    xcb_client_message_event_t event = message(sender, x11Atom("_NET_STARTUP_INFO_BEGIN"), characters);
    const xcb_atom_t next = x11Atom("_NET_STARTUP_INFO");
    constexpr qsizetype longestPiece = sizeof event.data.data8;
    for (qsizetype sent = 0; sent <= text.size(); sent += longestPiece) {
        std::ranges::fill(event.data.data8, 0);
        const QByteArray piece = text.mid(sent, longestPiece);
        std::ranges::copy(piece, event.data.data8);
        sendToRoot(event, XCB_EVENT_MASK_PROPERTY_CHANGE);
        event.type = next;
    }
}
} // namespace

void setStartupIdOnX11(const QWindow &window, const ActivationToken &token)
{
    if (x11Connection()) {
        setStartup(static_cast<xcb_window_t>(window.winId()), token, userTimeOf(token));
    }
}

void activateOnX11(QWindow &window, const ActivationToken &token)
{
    if (!x11Connection()) {
        return;
    }
    const auto own = static_cast<xcb_window_t>(window.winId());
    const std::optional<xcb_timestamp_t> time = userTimeOf(token);
    setStartup(own, token, time);
    if (time) {
        window.raise();
        requestActivation(own, *time);
    } else {
        // Xfwm4 gives the keyboard focus to every window that is raised, and metacity to every one that asks without a
        // time.
        window.alert(0);
    }
    xcb_flush(x11Connection());
}

ActivationToken tokenOfUserTimeOnX11(const QWindow &window)
{
    const auto time = x11Connection() ? userTimeOf(static_cast<xcb_window_t>(window.winId())) : std::nullopt;
    return time ? tokenOf(*time) : ActivationToken();
}

ActivationToken tokenOfNowOnX11()
{
    const std::optional<xcb_timestamp_t> now = x11Connection() ? x11Time() : std::nullopt;
    return now ? tokenOf(*now) : ActivationToken();
}

void endStartupNotificationOnX11(const ActivationToken &token)
{
    if (!x11Connection() || token.x11StartupId.isEmpty()) {
        return;
    }
    const xcb_window_t sender = xcb_generate_id(x11Connection());
    xcb_create_window(x11Connection(), XCB_COPY_FROM_PARENT, sender, rootWindow(), -1, -1, 1, 1, 0,
        XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    sendStartupMessage(sender, "remove: ID=" + quoted(token.x11StartupId.toUtf8()));
    xcb_destroy_window(x11Connection(), sender);
    xcb_flush(x11Connection());
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
// start-watch <program> [argument...]: starts the program on a display without a window manager, watches from outside
// until its first window is there, and ends it. Prints four numbers: ms from start to the window mapped, ms from start
// to its centre drawn, and, one second after the window was mapped, the KiB of memory that no other process shares and
// how many of them were written to.
#include <xcb/xcb.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

struct Free {
    void operator()(void *reply) const { std::free(reply); }
};
template <typename T> using Reply = std::unique_ptr<T, Free>;

double milliseconds(Clock::duration duration)
{
    return std::chrono::duration<double, std::milli>(duration).count();
}

/// In KiB. Clean is what can be read from its file again, above all the code of libraries.
struct PrivateMemory {
    long clean = 0;
    long dirty = 0;
};

/// The program under measurement. Ends with this object.
class Program {
public:
    explicit Program(char *argv[])
    {
        if (posix_spawn(&m_pid, argv[0], nullptr, nullptr, argv, environ) != 0) {
            throw std::runtime_error(std::string("cannot start ") + argv[0]);
        }
    }
    ~Program()
    {
        if (m_pid > 0) {
            kill(m_pid, SIGTERM);
            waitpid(m_pid, nullptr, 0);
        }
    }
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    void mustRun()
    {
        if (waitpid(m_pid, nullptr, WNOHANG) != 0) {
            m_pid = -1;
            throw std::runtime_error("the program ended before its window was there");
        }
    }

    [[nodiscard]] PrivateMemory privateMemory() const
    {
        std::ifstream rollup("/proc/" + std::to_string(m_pid) + "/smaps_rollup");
        PrivateMemory memory;
        for (std::string word; rollup >> word;) {
            if (word == "Private_Clean:") {
                rollup >> memory.clean;
            } else if (word == "Private_Dirty:") {
                rollup >> memory.dirty;
            }
        }
        return memory;
    }

private:
    pid_t m_pid = -1;
};

/// A display whose root has a colour that no window is drawn in.
class Display {
public:
    Display()
    {
        if (xcb_connection_has_error(m_connection.get()) != 0) {
            throw std::runtime_error("there is no display");
        }
        m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data->root;
        const std::uint32_t values[]{undrawn, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY};
        xcb_change_window_attributes(m_connection.get(), m_root, XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
        xcb_clear_area(m_connection.get(), 0, m_root, 0, 0, 0, 0);
        // An answer means that the server has done what came before.
        (void)pixel(0, 0);
    }

    /// The next window that was mapped, or XCB_NONE.
    [[nodiscard]] xcb_window_t mappedWindow() const
    {
        while (const auto event = Reply<xcb_generic_event_t>(xcb_poll_for_event(m_connection.get()))) {
            if ((event->response_type & 0x7f) == XCB_MAP_NOTIFY) {
                return reinterpret_cast<const xcb_map_notify_event_t *>(event.get())->window;
            }
        }
        return XCB_NONE;
    }

    [[nodiscard]] bool isDrawn(xcb_window_t window) const
    {
        const Reply<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(m_connection.get(), xcb_get_geometry(m_connection.get(), window), nullptr));
        return geometry && pixel(geometry->x + geometry->width / 2, geometry->y + geometry->height / 2) != undrawn;
    }

private:
    static constexpr std::uint32_t undrawn = 0xff00ff;

    [[nodiscard]] std::uint32_t pixel(int x, int y) const
    {
        const auto cookie = xcb_get_image(m_connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_root,
            static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 1, 1, 0xffffff);
        const Reply<xcb_get_image_reply_t> image(xcb_get_image_reply(m_connection.get(), cookie, nullptr));
        if (!image || xcb_get_image_data_length(image.get()) < 4) {
            return undrawn;
        }
        const std::uint8_t *const bytes = xcb_get_image_data(image.get());
        return bytes[0] | static_cast<std::uint32_t>(bytes[1] << 8) | static_cast<std::uint32_t>(bytes[2] << 16);
    }

    struct Disconnect {
        void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
    };
    std::unique_ptr<xcb_connection_t, Disconnect> m_connection{xcb_connect(nullptr, nullptr)};
    xcb_window_t m_root = XCB_NONE;
};

/// Waits until `condition` holds, as long as the program runs.
template <typename Condition> Clock::time_point timeOf(Program &program, const Condition &condition)
{
    const auto deadline = Clock::now() + 30s;
    while (!condition()) {
        program.mustRun();
        if (Clock::now() > deadline) {
            throw std::runtime_error("the window did not come within 30 s");
        }
        std::this_thread::sleep_for(200us);
    }
    return Clock::now();
}

void measure(char *argv[])
{
    const Display display;
    const auto start = Clock::now();
    Program program(argv);
    xcb_window_t window = XCB_NONE;
    const auto mapped = timeOf(program, [&] {
        window = display.mappedWindow();
        return window != XCB_NONE;
    });
    const auto drawn = timeOf(program, [&] { return display.isDrawn(window); });
    std::this_thread::sleep_until(mapped + 1s);
    const PrivateMemory memory = program.privateMemory();
    std::cout << milliseconds(mapped - start) << ' ' << milliseconds(drawn - start) << ' '
              << memory.clean + memory.dirty << ' ' << memory.dirty << '\n';
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc < 2) {
        std::cerr << "Usage: start-watch <program> [argument...]\n";
        return 2;
    }
    try {
        measure(argv + 1);
    } catch (const std::exception &error) {
        std::cerr << "start-watch: " << error.what() << '\n';
        return 1;
    }
    return 0;
}

// SPDX-License-Identifier: MIT
#pragma once

#include <pulse/mainloop-api.h>

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

struct pa_threaded_mainloop;

namespace tunedeck {

/// The thread on which libpulse works. Other threads never take libpulse's lock, which the thread holds while it is
/// busy: they leave tasks.
class PulseLoop {
public:
    using Task = std::function<void()>;

    /// Null if the system has no descriptor left for it.
    [[nodiscard]] static std::unique_ptr<PulseLoop> make();
    /// stop() must have been called if start() was.
    ~PulseLoop();
    PulseLoop(const PulseLoop &) = delete;
    PulseLoop &operator=(const PulseLoop &) = delete;

    [[nodiscard]] pa_mainloop_api &api() const;
    /// False if the system gives no thread.
    bool start();
    /// Waits for the task that runs, and for no other.
    void stop();
    /// May be called from any thread. The tasks run on the loop's thread in their order.
    void post(Task task);

private:
    PulseLoop(pa_threaded_mainloop *loop, int wakeUp);
    void runTasks();

    pa_threaded_mainloop *m_loop;
    int m_wakeUp; ///< an eventfd
    pa_io_event *m_wakeUpEvent;
    std::mutex m_mutex;
    std::vector<Task> m_tasks;
};

} // namespace tunedeck

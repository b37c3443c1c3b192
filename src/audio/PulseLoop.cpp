// SPDX-License-Identifier: MIT
#include "audio/PulseLoop.h"

#include <pulse/thread-mainloop.h>

#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

namespace tunedeck {

std::unique_ptr<PulseLoop> PulseLoop::make()
{
    const int wakeUp = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    pa_threaded_mainloop *loop = wakeUp < 0 ? nullptr : pa_threaded_mainloop_new();
    if (!loop) {
        ::close(wakeUp);
        return nullptr;
    }
    return std::unique_ptr<PulseLoop>(new PulseLoop(loop, wakeUp));
}

PulseLoop::PulseLoop(pa_threaded_mainloop *loop, int wakeUp)
    : m_loop(loop)
    , m_wakeUp(wakeUp)
{
    const auto wakeUpLoop = [](pa_mainloop_api *, pa_io_event *, int, pa_io_event_flags_t, void *self) {
        static_cast<PulseLoop *>(self)->runTasks();
    };
    m_wakeUpEvent = api().io_new(&api(), m_wakeUp, PA_IO_EVENT_INPUT, wakeUpLoop, this);
    pa_threaded_mainloop_set_name(m_loop, "tunedeck-audio");
}

PulseLoop::~PulseLoop()
{
    api().io_free(m_wakeUpEvent);
    pa_threaded_mainloop_free(m_loop);
    ::close(m_wakeUp);
}

pa_mainloop_api &PulseLoop::api() const
{
    return *pa_threaded_mainloop_get_api(m_loop);
}

bool PulseLoop::start()
{
    return pa_threaded_mainloop_start(m_loop) == 0;
}

void PulseLoop::stop()
{
    pa_threaded_mainloop_stop(m_loop);
}

void PulseLoop::post(Task task)
{
    {
        const std::lock_guard lock(m_mutex);
        m_tasks.push_back(std::move(task));
    }
    // It fails only if nobody has read the last 2^64 of them.
    ::eventfd_write(m_wakeUp, 1);
}

void PulseLoop::runTasks()
{
    eventfd_t count = 0;
    ::eventfd_read(m_wakeUp, &count);
    std::vector<Task> tasks;
    {
        const std::lock_guard lock(m_mutex);
        tasks.swap(m_tasks);
    }
    for (const Task &task : tasks) {
        task();
    }
}

} // namespace tunedeck

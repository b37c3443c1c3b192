// SPDX-License-Identifier: MIT
#include "app/TerminationSignals.h"

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <sys/eventfd.h>
#include <unistd.h>

namespace tunedeck {

namespace {
constexpr int terminationSignals[] = {SIGTERM, SIGHUP, SIGINT};

/// The counter that the handler raises: it may run between any two instructions and may not do more.
volatile std::sig_atomic_t counter = -1;

void raiseCounter(int)
{
    const int error = errno;
    ::eventfd_write(counter, 1);
    errno = error;
}

bool isIgnored(int signal)
{
    struct sigaction action{};
    return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

void setHandler(int signal, void (*handler)(int))
{
    struct sigaction action{};
    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    ::sigaction(signal, &action, nullptr);
}

void setHandlers(void (*handler)(int))
{
    for (const int signal : terminationSignals) {
        if (!isIgnored(signal)) {
            setHandler(signal, handler);
        }
    }
}
} // namespace

TerminationSignals::TerminationSignals(QObject *parent)
    : QObject(parent)
{
    counter = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    m_notifier = new QSocketNotifier(counter, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, [this] {
        m_notifier->setEnabled(false);
        Q_EMIT received();
    });
    setHandlers(raiseCounter);
}

TerminationSignals::~TerminationSignals()
{
    setHandlers(SIG_DFL);
    delete m_notifier;
    ::close(counter);
}

} // namespace tunedeck

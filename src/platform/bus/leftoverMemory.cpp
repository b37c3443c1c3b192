// SPDX-License-Identifier: MIT
#include "platform/bus/leftoverMemory.h"

#include "platform/bus/MemoryGrowth.h"

#include <QAbstractEventDispatcher>
#include <QByteArray>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QList>
#include <QObject>
#include <QTimer>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>

#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

/// The memory of the program that no file backs, in bytes; 0 if the system does not say.
qint64 ownMemory()
{
    static const int status = ::open("/proc/self/statm", O_RDONLY | O_CLOEXEC);
    std::array<char, 128> text{};
    const ssize_t length = ::pread(status, text.data(), text.size(), 0);
    // All, what is in memory, what of that files back, and more, in pages.
    const QList<QByteArray> pages = QByteArray(text.data(), std::max<ssize_t>(length, 0)).split(' ');
    return pages.size() < 3 ? 0 : (pages[1].toLongLong() - pages[2].toLongLong()) * ::sysconf(_SC_PAGESIZE);
}

/// Looks at the memory of the program whenever its thread has done what there was to do.
class LeftoverMemory : public QObject {
public:
    explicit LeftoverMemory(QAbstractEventDispatcher *ofThread)
        : QObject(ofThread)
    {
        m_soon.setSingleShot(true);
        m_soon.setInterval(1s);
        connect(&m_soon, &QTimer::timeout, this, &LeftoverMemory::giveBack);
        connect(ofThread, &QAbstractEventDispatcher::aboutToBlock, this, &LeftoverMemory::look);
    }

private:
    void look()
    {
        if (m_growth.isNoticeable(ownMemory()) && !m_soon.isActive()) {
            m_soon.start();
        }
    }

    void giveBack()
    {
        ::malloc_trim(0);
        m_growth = MemoryGrowth(ownMemory());
    }

    MemoryGrowth m_growth{ownMemory()};
    QTimer m_soon{this};
};
} // namespace

void giveBackLeftoverMemory(const QDBusConnection &connection)
{
    QDBusConnectionInterface *bus = connection.interface();
    if (!bus) {
        return;
    }
    // `bus` may end before its thread comes to this: then the next connection has its memory watched.
    QMetaObject::invokeMethod(
        bus,
        [] {
            static std::atomic_bool isWatched = false;
            if (!isWatched.exchange(true)) {
                new LeftoverMemory(QAbstractEventDispatcher::instance());
            }
        },
        Qt::QueuedConnection);
}

} // namespace tunedeck

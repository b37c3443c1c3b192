// SPDX-License-Identifier: MIT
#include "Watch.h"

#include "Message.h"
#include "Peer.h"
#include "StormPlayer.h"

#include <QByteArrayList>
#include <QFile>
#include <QString>

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <unistd.h>

namespace tunedeck::storm {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto interval = 20ms;
constexpr auto patience = 30s;

QByteArray content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Kilobytes in memory that no file backs; 0 if the program is gone.
qint64 memoryOf(int processId)
{
    const QByteArrayList lines = content(QStringLiteral("/proc/%1/status").arg(processId)).split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith("RssAnon:")) {
            return line.simplified().split(' ').value(1).toLongLong();
        }
    }
    return 0;
}

/// Seconds of a core that the program has used.
double secondsOf(int processId)
{
    // The name in parentheses may have spaces in it.
    const QByteArray fields = content(QStringLiteral("/proc/%1/stat").arg(processId));
    const QList<QByteArray> afterName = fields.mid(fields.lastIndexOf(')') + 2).split(' ');
    return double(afterName.value(11).toLongLong() + afterName.value(12).toLongLong()) / double(::sysconf(_SC_CLK_TCK));
}

/// The dock's menu is asked of the main thread. Ping would be answered by another one.
Message question()
{
    return {.type = Message::Type::Call,
        .destination = name::program,
        .path = name::programPath + "/DockMenu",
        .interface = "com.canonical.dbusmenu",
        .member = "AboutToShow",
        .signature = "i"};
}

} // namespace

Watch::Watch(const QByteArray &address, int processId)
    : m_processId(processId)
    , m_memoryBefore(memoryOf(processId))
    , m_secondsBefore(secondsOf(processId))
    , m_asking([this, address] {
        try {
            ask(address);
        } catch (const std::runtime_error &error) {
            std::fprintf(stderr, "the watch ends: %s\n", error.what());
        }
    })
{
}

Watch::~Watch()
{
    m_isOver = true;
    m_asking.join();
}

void Watch::ask(const QByteArray &address)
{
    Peer peer(address);
    Values body;
    body.number(0);
    while (!m_isOver) {
        const auto begin = Clock::now();
        const bool isAnswered = peer.call(question(), body, patience);
        const auto taken = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin);
        m_longestAnswer = std::max(m_longestAnswer.load(), qint64(taken.count()));
        m_unanswered += isAnswered ? 0 : 1;
        m_highestMemory = std::max(m_highestMemory.load(), memoryOf(m_processId));
        peer.exchange(interval);
    }
}

void Watch::report(std::chrono::seconds rest)
{
    const double seconds = std::chrono::duration<double>(Clock::now() - m_begin).count();
    const double used = secondsOf(m_processId) - m_secondsBefore;
    m_isOver = true;
    m_asking.join();
    std::printf("longest answer: %lld ms\n", static_cast<long long>(m_longestAnswer.load()));
    std::printf("unanswered: %d\n", m_unanswered.load());
    std::printf("processor: %.0f %%\n", 100 * used / seconds);
    std::fflush(stdout);
    std::this_thread::sleep_for(rest);
    std::printf("memory before: %lld kB\n", static_cast<long long>(m_memoryBefore));
    std::printf("memory highest: %lld kB\n", static_cast<long long>(m_highestMemory.load()));
    std::printf("memory %lld s later: %lld kB\n", static_cast<long long>(rest.count()),
        static_cast<long long>(memoryOf(m_processId)));
    m_asking = std::thread([] { });
}

} // namespace tunedeck::storm

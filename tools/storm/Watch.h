// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <atomic>
#include <chrono>
#include <thread>

namespace tunedeck::storm {

/// Watches a program while it is stormed: asks it over and over for something that only its main thread can answer,
/// and reads its memory.
class Watch {
public:
    /// `address` is the bus's, `processId` the program's. Throws std::runtime_error if the bus cannot be reached.
    Watch(const QByteArray &address, int processId);
    ~Watch();
    Watch(const Watch &) = delete;
    Watch &operator=(const Watch &) = delete;

    /// Prints the figures, with those of `rest` later, for which it waits.
    void report(std::chrono::seconds rest);

private:
    void ask(const QByteArray &address);

    const int m_processId;
    const qint64 m_memoryBefore;
    const double m_secondsBefore;
    std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
    std::atomic<qint64> m_highestMemory = 0;
    std::atomic<qint64> m_longestAnswer = 0; ///< in milliseconds
    std::atomic<int> m_unanswered = 0;
    std::atomic<bool> m_isOver = false;
    std::thread m_asking;
};

} // namespace tunedeck::storm

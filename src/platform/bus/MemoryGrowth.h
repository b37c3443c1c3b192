// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <algorithm>

namespace tunedeck {

/// Whether a program uses so much more memory than before that looking for what is left over is worth the work.
class MemoryGrowth {
public:
    /// In bytes.
    static constexpr qint64 noticeable = 4'194'304;

    explicit MemoryGrowth(qint64 now)
        : m_least(now)
    {
    }

    /// Whether `now`, in bytes, is noticeably more than the least value so far. Small steps add up.
    [[nodiscard]] bool isNoticeable(qint64 now)
    {
        m_least = std::min(m_least, now);
        return now - m_least >= noticeable;
    }

private:
    qint64 m_least;
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <semaphore>

namespace tunedeck {

/// Stands between the tests of this folder and open(), write() and close().
struct FileSystem {
    /// Otherwise it is one that knows no files without a name.
    std::atomic_bool knowsNamelessFiles = true;
    /// Files without a name that the main thread has opened.
    std::atomic_int openedByMainThread = 0;
    /// Those that other threads have opened.
    std::atomic_int openedByOthers = 0;
    /// Files without a name that the main thread has closed.
    std::atomic_int closedByMainThread = 0;
    /// Those that other threads have closed.
    std::atomic_int closedByOthers = 0;
    /// Whether a write to a file without a name waits for `wakeUp`, half a minute at most.
    std::atomic_bool hangs = false;
    std::atomic_int hangingWrites = 0;
    /// Whether the end of such a file waits likewise.
    std::atomic_bool closesSlowly = false;
    std::atomic_int hangingCloses = 0;
    std::binary_semaphore wakeUp{0};
};

[[nodiscard]] FileSystem &fileSystem();

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "FileSystem.h"

#include <QCoreApplication>
#include <QThread>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstddef>

#include <fcntl.h>
#include <sys/types.h>

// The linker puts the second of each pair in the place of the system's function and gives the first its name.
int openOfTheSystem(const char *path, int flags, mode_t mode) asm("__real_open");
int openOfTheTest(const char *path, int flags, mode_t mode) asm("__wrap_open");
ssize_t writeOfTheSystem(int descriptor, const void *bytes, size_t size) asm("__real_write");
ssize_t writeOfTheTest(int descriptor, const void *bytes, size_t size) asm("__wrap_write");
int closeOfTheSystem(int descriptor) asm("__real_close");
int closeOfTheTest(int descriptor) asm("__wrap_close");

namespace {
using namespace std::chrono_literals;

constexpr size_t mostDescriptors = 1'024;
/// No test waits for its end: it keeps a test that fails from hanging for ever.
constexpr auto longestHang = 30s;

/// Whether each descriptor is that of a file without a name.
std::array<std::atomic_bool, mostDescriptors> &nameless()
{
    static std::array<std::atomic_bool, mostDescriptors> isNameless;
    return isNameless;
}

bool isNameless(int descriptor)
{
    return descriptor >= 0 && size_t(descriptor) < mostDescriptors && nameless().at(size_t(descriptor));
}

void count(std::atomic_int &byMainThread, std::atomic_int &byOthers)
{
    const auto *program = QCoreApplication::instance();
    const bool isMainThread = program && program->thread() == QThread::currentThread();
    ++(isMainThread ? byMainThread : byOthers);
}
} // namespace

int openOfTheTest(const char *path, int flags, mode_t mode)
{
    if ((flags & O_TMPFILE) == O_TMPFILE) {
        tunedeck::FileSystem &system = tunedeck::fileSystem();
        count(system.openedByMainThread, system.openedByOthers);
        if (!system.knowsNamelessFiles) {
            errno = EOPNOTSUPP;
            return -1;
        }
    }
    const int descriptor = openOfTheSystem(path, flags, mode);
    if (descriptor >= 0 && size_t(descriptor) < mostDescriptors) {
        nameless().at(size_t(descriptor)) = (flags & O_TMPFILE) == O_TMPFILE;
    }
    return descriptor;
}

ssize_t writeOfTheTest(int descriptor, const void *bytes, size_t size)
{
    tunedeck::FileSystem &system = tunedeck::fileSystem();
    if (isNameless(descriptor) && system.hangs) {
        ++system.hangingWrites;
        static_cast<void>(system.wakeUp.try_acquire_for(longestHang));
    }
    return writeOfTheSystem(descriptor, bytes, size);
}

int closeOfTheTest(int descriptor)
{
    tunedeck::FileSystem &system = tunedeck::fileSystem();
    if (isNameless(descriptor)) {
        nameless().at(size_t(descriptor)) = false;
        if (system.closesSlowly) {
            ++system.hangingCloses;
            static_cast<void>(system.wakeUp.try_acquire_for(longestHang));
        }
        count(system.closedByMainThread, system.closedByOthers);
    }
    return closeOfTheSystem(descriptor);
}

namespace tunedeck {

FileSystem &fileSystem()
{
    static FileSystem system;
    return system;
}

} // namespace tunedeck

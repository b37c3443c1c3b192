// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

namespace tunedeck {

/// Lets Qt send its pictures to the X server over the connection instead of through shared memory, if that is lighter:
/// Qt waits for the server before it paints into memory that the server may still read, so a frame costs an answer and
/// wakes a second thread. A larger picture costs more to send than to wait for.
///
/// Must exist while the application object is made, and no longer: Qt is told by a variable of the environment, which
/// programs that this one starts would inherit. A variable that the user has set stays as it is.
class WithoutSharedMemory {
public:
    /// `scale` is that of the window. Without one, Qt decides.
    explicit WithoutSharedMemory(std::optional<double> scale);
    ~WithoutSharedMemory();
    WithoutSharedMemory(const WithoutSharedMemory &) = delete;
    WithoutSharedMemory &operator=(const WithoutSharedMemory &) = delete;

private:
    const bool m_isSet;
};

} // namespace tunedeck

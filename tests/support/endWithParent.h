// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>

#include <csignal>
#include <sys/prctl.h>

namespace tunedeck {

/// Has `process`, which is not started yet, end when the test does, even if the test is killed: nothing of ours may
/// stay behind and hold on to the test's output.
inline void endWithParent(QProcess &process)
{
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
// The options of the thread sanitizer. They are part of every program that it checks, so that they hold wherever a test
// starts one, whatever the environment.

#include <qglobal.h>

// The sanitizer prescribes the name.
extern "C" Q_DECL_EXPORT const char *__tsan_default_options();

const char *__tsan_default_options()
{
    // Only code that is compiled with the sanitizer can race for it: what the libraries of the system do with memory is
    // ignored, but not what they do with threads and mutexes.
    return "ignore_noninstrumented_modules=1:die_after_fork=0:suppressions=" SUPPRESSIONS ":log_path=" REPORTS;
}

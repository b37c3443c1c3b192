// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// libFuzzer calls this with each input. Always returns 0: every input is worth keeping.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace tunedeck::fuzz {

/// Ends the process, which libFuzzer reports as a finding, unless `holds`. `promise` is what should have held.
inline void require(bool holds, const char *promise)
{
    if (!holds) {
        std::fprintf(stderr, "Broken promise: %s\n", promise);
        std::abort();
    }
}

} // namespace tunedeck::fuzz

// SPDX-License-Identifier: MIT
// Given to clang-tidy and clazy before each source. The clazy of Debian 12 is Clang 14, and GCC's library has
// std::source_location only for compilers with a builtin that came with Clang 15.
#pragma once

#include <version>

#if defined(__clang__) && __clang_major__ < 15
namespace std {
struct source_location {
    static constexpr source_location current() noexcept { return {}; }
    constexpr unsigned line() const noexcept { return 0; }
    constexpr unsigned column() const noexcept { return 0; }
    constexpr const char *file_name() const noexcept { return ""; }
    constexpr const char *function_name() const noexcept { return ""; }
};
} // namespace std
#endif

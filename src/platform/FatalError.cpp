// SPDX-License-Identifier: MIT
#include "platform/FatalError.h"

#include <cstdlib>
#include <iostream>

namespace tunedeck {

void fatalError(std::string_view what, const std::source_location &where)
{
    std::cerr << where.file_name() << ':' << where.line() << ": " << where.function_name() << ": " << what << '\n';
    std::abort();
}

} // namespace tunedeck

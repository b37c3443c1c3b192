# SPDX-License-Identifier: MIT
# How every target of this project is compiled, and the two kinds of targets that repeat: a folder's library and a test.

add_library(tunedeck_options INTERFACE)
target_compile_definitions(tunedeck_options INTERFACE
    QT_NO_KEYWORDS
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_NO_FOREACH
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)
target_compile_options(tunedeck_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual
    -Wconversion -Wno-sign-conversion)
# Link-time optimisation of GCC 12 takes the bytes that QHash asks for to be without bound.
target_link_options(tunedeck_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-alloc-size-larger-than>)
if(TUNEDECK_SANITIZE_ADDRESS)
    target_compile_options(tunedeck_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(tunedeck_options INTERFACE -fsanitize=address,undefined)
endif()
if(TUNEDECK_SANITIZE_THREAD)
    # GCC 12 takes an std::optional for uninitialized where the thread sanitizer is at work.
    target_compile_options(tunedeck_options INTERFACE
        -fsanitize=thread -fno-omit-frame-pointer -Wno-maybe-uninitialized)
    target_link_options(tunedeck_options INTERFACE -fsanitize=thread)
endif()
if(TUNEDECK_COVERAGE)
    target_compile_options(tunedeck_options INTERFACE --coverage)
    target_link_options(tunedeck_options INTERFACE --coverage)
endif()

# tunedeck_library(<folder's name> SOURCES ... LINKS ... PRIVATE_LINKS ...)
# LINKS name what the library's headers show. Headers are included by their path below src/; tools/checks/rules.py
# holds which folder may include which.
function(tunedeck_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
    add_library(tunedeck_${name} STATIC ${ARG_SOURCES})
    target_include_directories(tunedeck_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(tunedeck_${name} PUBLIC ${ARG_LINKS} PRIVATE tunedeck_options ${ARG_PRIVATE_LINKS})
endfunction()

# tunedeck_test(<class> LINKS ...) builds <class>Test.cpp and runs it offscreen, without a screen or the user's settings.
function(tunedeck_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${name}Test ${name}Test.cpp ${ARG_SOURCES})
    target_link_libraries(${name}Test PRIVATE tunedeck_options tunedeck_test_support Qt6::Test ${ARG_LINKS})
    # Nobody waits for the tests' own code, but everybody for its compilation.
    target_compile_options(${name}Test PRIVATE -O0)
    add_test(NAME ${name} COMMAND ${name}Test)
    set_tests_properties(${name} PROPERTIES
        TIMEOUT 120
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;QT_LOGGING_RULES=;ASAN_OPTIONS=detect_leaks=1;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/leaks.supp;UBSAN_OPTIONS=print_stacktrace=1;TSAN_OPTIONS=die_after_fork=0 suppressions=${PROJECT_SOURCE_DIR}/tests/support/races.supp")
endfunction()

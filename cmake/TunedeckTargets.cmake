# SPDX-License-Identifier: MIT
# Sets the compiler options of every target and defines the two kinds of targets that repeat: a folder's library and its
# tests.

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
# GIO needs it, and precompiled headers fit only targets that are compiled with the same options.
target_compile_options(tunedeck_options INTERFACE -pthread)
# Qt 6.4 gives it to every target that links it, and Qt 6.8 to none. The module with the updates needs it, and precompiled
# headers must be compiled like what includes them.
target_compile_options(tunedeck_options INTERFACE -fPIC)
# GCC 12 with link-time optimisation warns falsely that QHash allocates an unbounded number of bytes.
target_link_options(tunedeck_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-alloc-size-larger-than>)
# Hardening. All but the last line also holds in builds for tests: a mistake that the standard library can see ends them.
# Resolving every function at the start takes no time that can be measured.
target_compile_definitions(tunedeck_options INTERFACE _GLIBCXX_ASSERTIONS)
target_compile_options(tunedeck_options INTERFACE -fstack-protector-strong -fstack-clash-protection)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|i.86)$")
    target_compile_options(tunedeck_options INTERFACE -fcf-protection)
endif()
target_link_options(tunedeck_options INTERFACE LINKER:-z,relro,-z,now,-z,noexecstack)
target_compile_options(tunedeck_options INTERFACE $<$<CONFIG:Release>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>)
# Equal sources give equal programs, whatever folder they are built in. Builds for tests keep the paths: debuggers read the
# sources there.
target_compile_options(tunedeck_options INTERFACE
    $<$<CONFIG:Release>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=;-ffile-prefix-map=${PROJECT_BINARY_DIR}/=build/>)
# The first format leaves out the times of the files.
set(TUNEDECK_RESOURCE_OPTIONS --format-version 1)
if(NOT CMAKE_BUILD_TYPE STREQUAL "Release")
    # Each change links many programs again. These two linkers take a fraction of the default linker's time.
    find_program(TUNEDECK_FAST_LINKER NAMES mold ld.lld)
    if(TUNEDECK_FAST_LINKER)
        get_filename_component(linker ${TUNEDECK_FAST_LINKER} NAME)
        string(REPLACE "ld." "" linker ${linker})
        target_link_options(tunedeck_options INTERFACE -fuse-ld=${linker})
    endif()
endif()
if(TUNEDECK_SANITIZE_ADDRESS)
    target_compile_options(tunedeck_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(tunedeck_options INTERFACE -fsanitize=address,undefined)
endif()
if(TUNEDECK_SANITIZE_THREAD)
    # GCC 12 with the thread sanitizer warns falsely that an std::optional is uninitialized.
    target_compile_options(tunedeck_options INTERFACE
        -fsanitize=thread -fno-omit-frame-pointer -Wno-maybe-uninitialized)
    # The modules call the function that a program has.
    target_link_options(tunedeck_options INTERFACE
        -fsanitize=thread LINKER:--wrap=pthread_once LINKER:--export-dynamic-symbol=__wrap_pthread_once)
    # Every program tells the sanitizer what Qt hands over between threads.
    target_sources(tunedeck_options INTERFACE
        $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:$<TARGET_OBJECTS:tunedeck_thread_sanitizer>>)
    target_link_libraries(tunedeck_options INTERFACE $<LINK_ONLY:Qt6::Core>)
endif()
if(TUNEDECK_COVERAGE)
    # The counters are right in programs with several threads, too.
    target_compile_options(tunedeck_options INTERFACE --coverage -fprofile-update=atomic)
    # A test that measures time must know that they slow the program down.
    target_compile_definitions(tunedeck_options INTERFACE TUNEDECK_COVERAGE)
    target_link_options(tunedeck_options INTERFACE --coverage)
endif()

# Qt's headers take most of the compilation time, so they are compiled once for each set of options: "program", and
# "tests", which is not optimised. A release build does without them, so a source with a missing include fails there.
function(tunedeck_precompile target way)
    if(NOT CMAKE_BUILD_TYPE STREQUAL "Release")
        set(precompiled tunedeck_precompiled_for_${way})
        target_precompile_headers(${target} REUSE_FROM ${precompiled})
        # The compiler accepts them only if the macros are the same, and these name the linked modules of Qt.
        target_compile_definitions(${target} PRIVATE $<TARGET_PROPERTY:${precompiled},COMPILE_DEFINITIONS>)
        target_include_directories(${target} SYSTEM PRIVATE $<TARGET_PROPERTY:${precompiled},INCLUDE_DIRECTORIES>)
    endif()
endfunction()

if(NOT CMAKE_BUILD_TYPE STREQUAL "Release")
    foreach(way program tests)
        set(source ${CMAKE_CURRENT_BINARY_DIR}/precompiled-for-${way}.cpp)
        file(CONFIGURE OUTPUT ${source} CONTENT "// Headers alone.\n")
        add_library(tunedeck_precompiled_for_${way} OBJECT ${source})
        target_link_libraries(tunedeck_precompiled_for_${way} PRIVATE
            tunedeck_options Qt6::Widgets Qt6::DBus)
        # Macros alone: a folder that uses these two must link them itself, as in a release.
        target_compile_definitions(tunedeck_precompiled_for_${way} PRIVATE QT_NETWORK_LIB QT_SVG_LIB)
        target_precompile_headers(tunedeck_precompiled_for_${way} PRIVATE
            <QAction> <QApplication> <QDBusConnection> <QDBusMessage> <QDBusPendingCallWatcher> <QDir> <QHash> <QLabel>
            <QMenu> <QPainter> <QPainterPath> <QPointer> <QProcess> <QRegularExpression> <QTimer> <QUrl> <QVariantMap>
            <QWidget> <QWindow> <algorithm> <array> <chrono> <cmath> <functional> <memory> <optional> <vector>)
    endforeach()
    target_link_libraries(tunedeck_precompiled_for_tests PRIVATE Qt6::Network Qt6::Test)
    target_precompile_headers(tunedeck_precompiled_for_tests PRIVATE <QSignalSpy> <QTemporaryDir> <QTest>)
    target_compile_options(tunedeck_precompiled_for_tests PRIVATE -O0)
endif()

# tunedeck_library(<folder's name> SOURCES ... LINKS ... PRIVATE_LINKS ...)
# LINKS are the libraries that the library's headers use. Headers are included by their path below src/;
# tools/checks/rules.py holds which folder may include which.
function(tunedeck_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
    add_library(tunedeck_${name} STATIC ${ARG_SOURCES})
    target_include_directories(tunedeck_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(tunedeck_${name} PUBLIC ${ARG_LINKS} PRIVATE tunedeck_options ${ARG_PRIVATE_LINKS})
    tunedeck_precompile(tunedeck_${name} program)
endfunction()

# tunedeck_tests(CLASSES <class>... [SOURCES <file>...] LINKS <library>...)
# Builds the tests of a folder as one program, from <class>Test.cpp each, and sets TUNEDECK_TESTS to its target. Each
# class is an entry of ctest, named <class>, and runs offscreen, without a screen or the user's settings.
function(tunedeck_tests)
    cmake_parse_arguments(ARG "" "" "CLASSES;SOURCES;LINKS" ${ARGN})
    file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR}/tests ${CMAKE_CURRENT_SOURCE_DIR})
    string(REPLACE "/" "-" folder ${folder})
    set(program ${folder}-tests)
    list(TRANSFORM ARG_CLASSES APPEND Test.cpp OUTPUT_VARIABLE sources)
    add_executable(${program} ${sources} ${ARG_SOURCES})
    target_link_libraries(${program} PRIVATE tunedeck_options tunedeck_test_support ${ARG_LINKS})
    # The tests' own code is fast enough without optimisation, and compiles faster.
    target_compile_options(${program} PRIVATE -O0)
    tunedeck_precompile(${program} tests)
    foreach(class ${ARG_CLASSES})
        add_test(NAME ${class} COMMAND ${program} ${class}Test)
        set_tests_properties(${class} PROPERTIES
            TIMEOUT 300
            REQUIRED_FILES $<TARGET_FILE:${program}>
            ENVIRONMENT "${TUNEDECK_TEST_ENVIRONMENT}")
    endforeach()
    set(TUNEDECK_TESTS ${program} PARENT_SCOPE)
endfunction()

# tunedeck_uses_demo_player(<target of tests>)
# Gives the tests the path of the demo player as DEMO_PLAYER and builds it for them.
function(tunedeck_uses_demo_player program)
    add_dependencies(${program} tunedeck-demo-player)
    target_compile_definitions(${program} PRIVATE DEMO_PLAYER="$<TARGET_FILE:tunedeck-demo-player>")
endfunction()

# tunedeck_uses_storm(<target of tests>)
# Gives the tests the path of the storm tool as STORM and builds it for them.
function(tunedeck_uses_storm program)
    add_dependencies(${program} tunedeck-storm)
    target_compile_definitions(${program} PRIVATE STORM="$<TARGET_FILE:tunedeck-storm>")
endfunction()

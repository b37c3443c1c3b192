# SPDX-License-Identifier: MIT
# cpack reads this before it packs the installed files, so that equal sources give equal packages: all files get the time
# of the last commit, or that of SOURCE_DATE_EPOCH.

if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
    # Git fills in the file when it makes an archive, which has no repository, or is in one of somebody else.
    file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/commit-time time LIMIT_COUNT 1)
    if(NOT time MATCHES "^[0-9]+$")
        execute_process(COMMAND git -c safe.directory=* log -1 --format=%ct
            WORKING_DIRECTORY ${CMAKE_CURRENT_LIST_DIR}
            OUTPUT_VARIABLE time
            OUTPUT_STRIP_TRAILING_WHITESPACE
            ERROR_QUIET)
    endif()
    if(time MATCHES "^[0-9]+$")
        set(ENV{SOURCE_DATE_EPOCH} ${time})
    else()
        message(WARNING "The time of the last commit is unknown, so another package of these sources will differ.")
    endif()
endif()

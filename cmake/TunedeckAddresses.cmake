# SPDX-License-Identifier: MIT
# The addresses of those who give this build away. Without them nothing that is built or installed names an address.

set(TUNEDECK_HOMEPAGE "" CACHE STRING "The home page that this build names, such as https://tunedeck.example; none if empty")
set(TUNEDECK_CONTACT "" CACHE STRING "The mail address that this build names, such as music@tunedeck.example; none if empty")

# Neither has a character that a format in which it is written would have to quote.
if(TUNEDECK_HOMEPAGE AND NOT TUNEDECK_HOMEPAGE MATCHES "^https://[A-Za-z0-9][A-Za-z0-9.-]*(/[A-Za-z0-9._-]+)*$")
    message(FATAL_ERROR "TUNEDECK_HOMEPAGE is not a plain https address without a slash at its end: \"${TUNEDECK_HOMEPAGE}\"")
endif()
if(TUNEDECK_CONTACT AND NOT TUNEDECK_CONTACT MATCHES "^[A-Za-z0-9][A-Za-z0-9._+-]*@[A-Za-z0-9][A-Za-z0-9.-]*$")
    message(FATAL_ERROR "TUNEDECK_CONTACT is not a plain mail address: \"${TUNEDECK_CONTACT}\"")
endif()

# tunedeck_fill_in(<template> <file>)
# Replaces @VARIABLES@. Lines between a line with "{homepage}" and one with "{/homepage}" are left out if there is no home
# page, and likewise with "{contact}"; the lines with the marks always are.
function(tunedeck_fill_in template result)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${template})
    file(READ ${template} text)
    foreach(address homepage contact)
        string(TOUPPER TUNEDECK_${address} setting)
        string(FIND "${text}" "{${address}}" start)
        while(NOT start EQUAL -1)
            tunedeck_cut_line("${text}" "{${address}}" before rest)
            tunedeck_cut_line("${rest}" "{/${address}}" within after)
            if(NOT ${setting})
                set(within "")
            endif()
            set(text "${before}${within}${after}")
            string(FIND "${text}" "{${address}}" start)
        endwhile()
    endforeach()
    file(CONFIGURE OUTPUT ${result} CONTENT "${text}" @ONLY)
endfunction()

# tunedeck_cut_line(<text> <mark> <variable for the lines before> <variable for the lines after>)
# Divides the text at its first line with the mark, which must exist.
function(tunedeck_cut_line text mark before after)
    string(FIND "${text}" "${mark}" position)
    if(position EQUAL -1)
        message(FATAL_ERROR "A template has no line with ${mark}")
    endif()
    string(SUBSTRING "${text}" 0 ${position} head)
    string(FIND "${head}" "\n" end REVERSE)
    math(EXPR end "${end} + 1")
    string(SUBSTRING "${head}" 0 ${end} head)
    string(SUBSTRING "${text}" ${position} -1 tail)
    string(FIND "${tail}" "\n" end)
    math(EXPR end "${end} + 1")
    string(SUBSTRING "${tail}" ${end} -1 tail)
    set(${before} "${head}" PARENT_SCOPE)
    set(${after} "${tail}" PARENT_SCOPE)
endfunction()

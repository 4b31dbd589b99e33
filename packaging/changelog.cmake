# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0

# Writes CHANGELOG.md as the changelog of a Debian package, with one entry per version:
#
#   cmake -D CHANGELOG=CHANGELOG.md -D OUTPUT=file -D MAINTAINER="Name <address>" -P changelog.cmake
#
# Takes headings "## VERSION - YYYY-MM-DD", groups "### Added", and lines of at most 78 columns that
# start with "- " or, as their continuation, two blanks.
cmake_minimum_required(VERSION 3.25)

# date_line(variable date age): YYYY-MM-DD as in " -- Name <address>  Sun, 22 Nov 2026 12:00:00 +0000".
# Versions of one day differ by a minute for each step of their age.
function(date_line variable date age)
    string(REGEX MATCH "^([0-9]+)-0?([0-9]+)-0?([0-9]+)$" parts "${date}")
    set(year ${CMAKE_MATCH_1})
    set(month ${CMAKE_MATCH_2})
    set(day ${CMAKE_MATCH_3})
    # Days since 1970-01-01, in years that begin in March.
    math(EXPR shifted "(${month} + 9) % 12")
    math(EXPR march_year "${year} - ${shifted} / 10")
    math(EXPR days "365 * ${march_year} + ${march_year} / 4 - ${march_year} / 100
        + ${march_year} / 400 + (153 * ${shifted} + 2) / 5 + ${day} - 1 - 719468")
    math(EXPR seconds "${days} * 86400 + 43200 - 60 * ${age}")
    set(ENV{SOURCE_DATE_EPOCH} ${seconds})
    string(TIMESTAMP text "%a, %d %b %Y %H:%M:%S +0000" UTC)
    set(${variable} " -- ${MAINTAINER}  ${text}\n" PARENT_SCOPE)
endfunction()

file(READ "${CHANGELOG}" text)
# Brackets and semicolons mean something in lists.
string(REPLACE "[" "(" text "${text}")
string(REPLACE "]" ")" text "${text}")
string(REPLACE ";" "," text "${text}")
string(REPLACE "\n" ";" lines "${text}")

set(result "")
set(end "")
set(age 0)
foreach(line IN LISTS lines)
    string(LENGTH "${line}" length)
    if(length GREATER 78 AND NOT end STREQUAL "")
        message(FATAL_ERROR "${CHANGELOG}: more than 78 columns: ${line}")
    elseif(line MATCHES "^## ([0-9.]+) - ([0-9-]+)$")
        set(version "${CMAKE_MATCH_1}")
        set(date "${CMAKE_MATCH_2}")
        string(APPEND result "${end}tarn-workbench (${version}-1) unstable; urgency=medium\n")
        date_line(end "${date}" ${age})
        math(EXPR age "${age} + 1")
        set(end "\n${end}\n")
    elseif(end STREQUAL "")
        continue()
    elseif(line MATCHES "^### (.*)$")
        string(APPEND result "\n  [ ${CMAKE_MATCH_1} ]\n")
    elseif(line MATCHES "^- (.*)$")
        string(APPEND result "  * ${CMAKE_MATCH_1}\n")
    elseif(line MATCHES "^  (.*)$")
        string(APPEND result "    ${CMAKE_MATCH_1}\n")
    elseif(NOT line STREQUAL "")
        message(FATAL_ERROR "${CHANGELOG}: cannot take the line \"${line}\"")
    endif()
endforeach()
if(end STREQUAL "")
    message(FATAL_ERROR "${CHANGELOG}: no heading \"## VERSION - YYYY-MM-DD\"")
endif()
string(STRIP "${end}" last)
file(WRITE "${OUTPUT}" "${result}\n ${last}\n")

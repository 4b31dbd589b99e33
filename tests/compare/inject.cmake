# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0

# Puts the program tarn_dump and the benchmarks of this source tree in place of the benchmarks of
# another version of the project: configure that with TARN_BENCH and with
# -DCMAKE_PROJECT_TarnInserter_INCLUDE=<this file>.
get_filename_component(TARN_COMPARED_ROOT "${CMAKE_CURRENT_LIST_DIR}/../.." ABSOLUTE)

macro(add_subdirectory folder)
    if("${folder}" STREQUAL "bench")
        _add_subdirectory("${TARN_COMPARED_ROOT}/tests/compare" compare)
        _add_subdirectory("${TARN_COMPARED_ROOT}/bench" bench)
    else()
        _add_subdirectory("${folder}" ${ARGN})
    endif()
endmacro()

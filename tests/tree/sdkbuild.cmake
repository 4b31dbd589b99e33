# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0

# Installs the SDK of a built tree, builds the plug-in against that SDK alone, and installs it.
# Run with -D SOURCE_DIR=... BUILD_DIR=... WORK_DIR=... GENERATOR=... COMPILER=... LIB_DIR=...
# QT_INCLUDES=...

include("${CMAKE_CURRENT_LIST_DIR}/../support/runcommand.cmake")

file(REMOVE_RECURSE "${WORK_DIR}")
run("${CMAKE_COMMAND}" --install "${BUILD_DIR}" --component sdk --prefix "${WORK_DIR}/sdk")
# Moved, so that only a relocatable package works.
file(RENAME "${WORK_DIR}/sdk" "${WORK_DIR}/moved sdk")
# Without precompiled headers, so that every source file and the header that it includes first show
# that they include what they use.
run("${CMAKE_COMMAND}" -S "${SOURCE_DIR}" -B "${WORK_DIR}/build" -G "${GENERATOR}"
    "-DTARN_SDK_DIR=${WORK_DIR}/moved sdk" "-DCMAKE_CXX_COMPILER=${COMPILER}"
    "-DCMAKE_INSTALL_LIBDIR=${LIB_DIR}" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0
    -DTARN_WARNINGS_AS_ERRORS=ON -DCMAKE_EXPORT_COMPILE_COMMANDS=ON
    -DTARN_PRECOMPILE=OFF)
run("${CMAKE_COMMAND}" --build "${WORK_DIR}/build")
run("${CMAKE_COMMAND}" --install "${WORK_DIR}/build" --prefix "${WORK_DIR}/plugin")

file(READ "${WORK_DIR}/build/compile_commands.json" commands)
foreach(folder IN ITEMS "${SOURCE_DIR}/host" "${BUILD_DIR}/host")
    string(FIND "${commands}" "${folder}" position)
    if(NOT position EQUAL -1)
        message(FATAL_ERROR "The plug-in was compiled with ${folder}, not with the SDK alone.")
    endif()
endforeach()

# A host opens files in the plug-in through the header of the view manager.
file(WRITE "${WORK_DIR}/alone.cpp" "#include <plugin/tarnviewmanager.h>\n")
run("${COMPILER}" -std=c++17 -fPIC -Wall -Wextra -Werror -fsyntax-only ${QT_INCLUDES}
    "-I${WORK_DIR}/moved sdk/include/tarn-inserter" "${WORK_DIR}/alone.cpp")

file(GLOB_RECURSE libraries RELATIVE "${WORK_DIR}/plugin" "${WORK_DIR}/plugin/*.so*")
if(NOT libraries STREQUAL "${LIB_DIR}/tarn/plugins/libTarnInserter.so")
    message(FATAL_ERROR "Expected the plug-in library alone, got: ${libraries}")
endif()
file(REMOVE_RECURSE "${WORK_DIR}")

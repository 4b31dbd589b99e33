# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0

# Builds the SDK of another host, the plug-in against that SDK alone, and a program of that host.
# Then runs the program.
# Run with -D SOURCE_DIR=... WORK_DIR=... GENERATOR=... COMPILER=... SUPPORT_LIBRARY=...

include("${CMAKE_CURRENT_LIST_DIR}/../support/runcommand.cmake")

# build(name source [option...]): builds and installs. Unity builds, as few large files compile
# faster.
function(build name source)
    run("${CMAKE_COMMAND}" -S "${source}" -B "${WORK_DIR}/${name}-build" -G "${GENERATOR}"
        "-DCMAKE_CXX_COMPILER=${COMPILER}" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0
        -DCMAKE_UNITY_BUILD=ON "-DCMAKE_INSTALL_PREFIX=${WORK_DIR}/${name}" ${ARGN})
    run("${CMAKE_COMMAND}" --build "${WORK_DIR}/${name}-build")
endfunction()

file(REMOVE_RECURSE "${WORK_DIR}")
build(sdk "${CMAKE_CURRENT_LIST_DIR}/sdk")
run("${CMAKE_COMMAND}" --install "${WORK_DIR}/sdk-build")
build(plugin "${SOURCE_DIR}" "-DTARN_SDK_DIR=${WORK_DIR}/sdk" -DCMAKE_INSTALL_LIBDIR=lib
    -DTARN_WARNINGS_AS_ERRORS=ON)
run("${CMAKE_COMMAND}" --install "${WORK_DIR}/plugin-build")
build(session "${CMAKE_CURRENT_LIST_DIR}/session"
    "-DTarnHost_ROOT=${WORK_DIR}/sdk" "-DTarnInserter_ROOT=${WORK_DIR}/plugin"
    -DCMAKE_UNITY_BUILD=OFF
    "-DSUPPORT_LIBRARY=${SUPPORT_LIBRARY}" "-DSUPPORT_INCLUDES=${SOURCE_DIR}/tests")
run("${WORK_DIR}/session-build/session")
file(REMOVE_RECURSE "${WORK_DIR}")

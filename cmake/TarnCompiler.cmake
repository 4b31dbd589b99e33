# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0

# Settings shared by all targets of the tree, and the functions that create targets.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTOUIC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_AUTOUIC_SEARCH_PATHS "${PROJECT_SOURCE_DIR}/forms")

# The build tree and an installation have the same layout, so that the workbench finds libraries,
# plug-ins and translations relative to itself in both.
set(TARN_LIB_DIR "${CMAKE_INSTALL_LIBDIR}/tarn")
set(TARN_PLUGIN_DIR "${TARN_LIB_DIR}/plugins")
set(TARN_DATA_DIR "${CMAKE_INSTALL_DATADIR}/tarn")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/${TARN_LIB_DIR}")

# QT_NO_KEYWORDS, because the list of signals of a port is named "signals". The headers of a host
# may still use keywords, see sdk/keywordson.h.
add_compile_definitions(QT_NO_KEYWORDS QT_DEPRECATED_WARNINGS)
if(NOT TARN_SDK_DIR)
    # The headers of another host may have been written for an older Qt.
    add_compile_definitions(QT_DISABLE_DEPRECATED_BEFORE=0x050d00)
endif()
add_compile_options(-Wall -Wextra -Wpedantic -Wnon-virtual-dtor -Woverloaded-virtual -Wshadow)
if(TARN_WARNINGS_AS_ERRORS)
    add_compile_options(-Werror)
endif()
if(TARN_HARDENING)
    # As dpkg-buildflags has it. The prefix map keeps the folder of the build out of what is built.
    add_compile_options(-fstack-protector-strong -Wformat -Werror=format-security -Wdate-time
        "-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.")
    add_compile_definitions(_FORTIFY_SOURCE=2)
    add_link_options(LINKER:-z,relro)
endif()
if(TARN_SANITIZE)
    add_compile_options(-fsanitize=${TARN_SANITIZE} -fno-omit-frame-pointer
        -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${TARN_SANITIZE})
endif()
if(TARN_FUZZ)
    # The fuzzer is guided by the coverage of every library.
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(TARN_COVERAGE)
    add_compile_options(--coverage)
    add_link_options(--coverage)
endif()

# The headers of Qt and of the standard library that most files include, precompiled: reading them is
# half of the time to compile a file. A compiler cache saves more, but with precompiled headers its
# results are good for one build folder only. So not with one.
#
# Builds without them show that every file includes what it uses: the preset release, and tests of
# the plug-in with other SDKs.
function(tarn_add_precompiled_headers)
    if(NOT TARN_PRECOMPILE OR CMAKE_CXX_COMPILER_LAUNCHER)
        return()
    endif()
    set(headers <QDir> <QFile> <QFileInfo> <QHash> <QMap> <QSet> <QString> <QStringList> <QVector>
        <algorithm> <functional> <memory> <vector>)
    tarn_add_precompiled(tarn_precompiled Qt5::Widgets ${headers} <QWidget>)
    tarn_add_precompiled(tarn_precompiled_core Qt5::Core ${headers})
endfunction()

function(tarn_add_precompiled target module)
    add_library(${target} STATIC "${PROJECT_SOURCE_DIR}/cmake/precompiled.cpp")
    set_target_properties(${target} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
    target_link_libraries(${target} PRIVATE ${module})
    target_precompile_headers(${target} PRIVATE ${ARGN})
endfunction()

# tarn_precompile(target [CORE]): uses them in a target that links Qt5::Widgets, or only Qt5::Core.
function(tarn_precompile target)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "CORE" "" "")
    set(precompiled tarn_precompiled)
    if(ARG_CORE)
        set(precompiled tarn_precompiled_core)
    endif()
    if(TARGET ${precompiled})
        target_precompile_headers(${target} REUSE_FROM ${precompiled})
    endif()
endfunction()

# tarn_host_library(name HEADERS public.h... SOURCES file... [LINK target...] [PRIVATE_LINK target...])
#
# A shared library of the development host, one per namespace: the target tarnhost_<name> with the
# alias TarnHost::<name>. HEADERS are the public headers; they are included as <name/header.h> and
# installed.
function(tarn_host_library name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "HEADERS;SOURCES;LINK;PRIVATE_LINK")
    set(target tarnhost_${name})
    add_library(${target} SHARED ${ARG_SOURCES})
    add_library(TarnHost::${name} ALIAS ${target})
    target_sources(${target} PUBLIC FILE_SET HEADERS
        BASE_DIRS "${PROJECT_SOURCE_DIR}/host" FILES ${ARG_HEADERS})
    string(TOUPPER ${name} upper)
    target_compile_definitions(${target} PRIVATE ${upper}_LIBRARY)
    target_link_libraries(${target} PUBLIC Qt5::Core ${ARG_LINK} PRIVATE ${ARG_PRIVATE_LINK})
    set_target_properties(${target} PROPERTIES
        EXPORT_NAME ${name}
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        INSTALL_RPATH "$ORIGIN")
    install(TARGETS ${target} EXPORT TarnHostTargets
        LIBRARY DESTINATION "${TARN_LIB_DIR}" NAMELINK_COMPONENT development
        FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/tarn-host"
            COMPONENT development)
endfunction()

# tarn_plugin_part(name [CORE] SOURCES file... [LINK target...])
#
# A static library with one folder of the plug-in, or a part of it: the target tarn_<name>. The
# plug-in library and the tests link it, so no source is compiled twice. Includes are written
# <folder/header.h>. CORE: without Qt5::Gui and Qt5::Widgets.
function(tarn_plugin_part name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "CORE" "" "SOURCES;LINK")
    add_library(tarn_${name} STATIC ${ARG_SOURCES})
    target_include_directories(tarn_${name} PUBLIC "${PROJECT_SOURCE_DIR}")
    target_link_libraries(tarn_${name} PUBLIC ${ARG_LINK})
    if(ARG_CORE)
        tarn_precompile(tarn_${name} CORE)
    else()
        tarn_precompile(tarn_${name})
    endif()
endfunction()

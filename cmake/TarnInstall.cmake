# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0

# What is installed belongs to a component:
#
#   workbench     programs, plug-in, libraries and data: the package tarn-workbench. The default.
#   development   headers, CMake packages and link names: the package tarn-workbench-dev
#   sdk           of both what building a plug-in needs: the libraries of the host, with headers and
#                 CMake package. Installed on request only, because it repeats the others.

include(CMakePackageConfigHelpers)

set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME workbench)
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# tarn_install_cmake_package(name): the CMake package of that name, from <name>Config.cmake.in and
# the export set <name>Targets.
function(tarn_install_cmake_package name)
    set(folder "${CMAKE_INSTALL_LIBDIR}/cmake/${name}")
    configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/${name}Config.cmake.in"
        "${CMAKE_CURRENT_BINARY_DIR}/${name}Config.cmake" INSTALL_DESTINATION "${folder}")
    write_basic_package_version_file("${CMAKE_CURRENT_BINARY_DIR}/${name}ConfigVersion.cmake"
        COMPATIBILITY SameMajorVersion)
    install(EXPORT ${name}Targets NAMESPACE ${name}:: DESTINATION "${folder}"
        COMPONENT development)
    install(FILES
        "${CMAKE_CURRENT_BINARY_DIR}/${name}Config.cmake"
        "${CMAKE_CURRENT_BINARY_DIR}/${name}ConfigVersion.cmake"
        DESTINATION "${folder}" COMPONENT development)
endfunction()

# tarn_install_sdk(folder): the component sdk, which repeats all that this folder of the tree
# installs. An export set can be installed once only, so its rules run again.
function(tarn_install_sdk folder)
    install(CODE "
        foreach(component IN ITEMS workbench development)
            set(CMAKE_INSTALL_COMPONENT \${component})
            include(\"${PROJECT_BINARY_DIR}/${folder}/cmake_install.cmake\")
        endforeach()
        set(CMAKE_INSTALL_COMPONENT sdk)"
        COMPONENT sdk EXCLUDE_FROM_ALL)
endfunction()

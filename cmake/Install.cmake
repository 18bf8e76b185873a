# SPDX-FileCopyrightText: The Tessaly developers
# SPDX-License-Identifier: LGPL-2.1-or-later
#
# What `cmake --install` puts under the prefix: the library with its headers,
# the CMake package and pkg-config file that find it, halvane, tessaly-emu and
# the Qt Designer plugin (under the library's folder, in Qt's plugin layout).
include(CMakePackageConfigHelpers)
install(TARGETS Tessaly EXPORT TessalyTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    PUBLIC_HEADER DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tessaly)
install(EXPORT TessalyTargets NAMESPACE Tessaly:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Tessaly)
configure_package_config_file(cmake/TessalyConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/TessalyConfig.cmake
    INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Tessaly)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/TessalyConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/TessalyConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/TessalyConfigVersion.cmake
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Tessaly)

# The pkg-config file finds the prefix from its own place in it.
file(RELATIVE_PATH pcToPrefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" pcToPrefix "${pcToPrefix}")
configure_file(cmake/tessaly.pc.in ${CMAKE_CURRENT_BINARY_DIR}/tessaly.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tessaly.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(TARGETS halvane tessaly-emu RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS TessalyDesignerPlugin LIBRARY DESTINATION ${TESSALY_PLUGINDIR}/designer)

# The udev rule for the handsets' diagnostic ports (src/link/CMakeLists.txt
# says where).
install(FILES ${TESSALY_UDEV_RULE} DESTINATION ${TESSALY_UDEV_DIR})

# SPDX-FileCopyrightText: The Tessaly developers
# SPDX-License-Identifier: BSD-3-Clause
#
# The version stands once, in project(VERSION); everything that tells it must
# agree: halvane --version, the library's SONAME and the package named after
# it, tessaly.pc, the CMake package's version file, the AppStream release and
# debian/changelog's top entry.
#   -DVERSION -DSOURCE_DIR -DBUILD_DIR -DHALVANE -DLIBRARY -DMETAINFO
set(major "")
string(REGEX MATCH "^[0-9]+" major "${VERSION}")
set(wrong "")
macro(expect what told)
    if(NOT "${told}" STREQUAL "${VERSION}")
        string(APPEND wrong "\n  ${what} says \"${told}\"")
    endif()
endmacro()

execute_process(COMMAND env QT_QPA_PLATFORM=offscreen ${HALVANE} --version OUTPUT_VARIABLE told)
string(REGEX REPLACE "^Halvane ([^\n]*)\n?$" "\\1" told "${told}")
expect("halvane --version" "${told}")

execute_process(COMMAND readelf -d ${LIBRARY} OUTPUT_VARIABLE dynamic)
string(REGEX MATCH "Library soname: \\[([^]]*)\\]" soname "${dynamic}")
if(NOT CMAKE_MATCH_1 STREQUAL "libTessaly.so.${major}")
    string(APPEND wrong "\n  the library's SONAME is \"${CMAKE_MATCH_1}\", not libTessaly.so.${major}")
endif()
file(STRINGS ${SOURCE_DIR}/debian/control library REGEX "^Package: libtessaly[0-9]+$")
if(NOT library STREQUAL "Package: libtessaly${major}"
   OR NOT EXISTS ${SOURCE_DIR}/debian/libtessaly${major}.install)
    string(APPEND wrong "\n  debian/ packages the library as \"${library}\", not libtessaly${major}")
endif()

file(STRINGS ${BUILD_DIR}/tessaly.pc told REGEX "^Version: ")
string(REPLACE "Version: " "" told "${told}")
expect("tessaly.pc" "${told}")

include(${BUILD_DIR}/TessalyConfigVersion.cmake)
expect("TessalyConfigVersion.cmake" "${PACKAGE_VERSION}")

file(READ ${METAINFO} metainfo)
string(REGEX MATCH "<release version=\"([^\"]*)\"" told "${metainfo}")
expect("the AppStream metainfo's newest release" "${CMAKE_MATCH_1}")

file(STRINGS ${SOURCE_DIR}/debian/changelog top LIMIT_COUNT 1)
string(REGEX REPLACE "^tessaly \\(([^)-]*)(-[^)]*)?\\).*" "\\1" told "${top}")
expect("debian/changelog's top entry" "${told}")

if(wrong)
    message(FATAL_ERROR "project(VERSION) is ${VERSION}, but:${wrong}")
endif()

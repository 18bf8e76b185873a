# SPDX-FileCopyrightText: The Tessaly developers
# SPDX-License-Identifier: BSD-3-Clause
#
# Builds the Debian packages with scripts/package into a scratch folder,
# checks them and the source package (whose debian/copyright lintian reads)
# with lintian, unpacks them into a scratch root and uses what they hold: the
# programs, a host built against libtessaly-dev through CMake and pkg-config,
# the Designer plugin, and the API documentation of libtessaly-doc. No program
# or library in them carries a run path: they are installed into the system's
# folders. Skipped where dpkg is not there.
#   -DSOURCE_DIR (the checkout) -DWORK_DIR -DVERSION
include(${SOURCE_DIR}/tests/consumer/Hosts.cmake)

foreach(tool dpkg-buildpackage dpkg-deb lintian readelf)
    find_program(found_${tool} ${tool})
    if(NOT found_${tool})
        message("debian_packages skipped: ${tool} is not installed (scripts/deps installs it)")
        return()
    endif()
endforeach()

# The packages' library folder, whatever this build's prefix gave.
run(dpkg-architecture -qDEB_HOST_MULTIARCH)
string(STRIP "lib/${output}" libdir)

file(REMOVE_RECURSE ${WORK_DIR}/root ${WORK_DIR}/hosts)
# The packages' own tests are the ones this build has run already.
run(env DEB_BUILD_OPTIONS=nocheck ${SOURCE_DIR}/scripts/package ${WORK_DIR}/debs)
set(packages halvane libtessaly-dev libtessaly-qt6-designer libtessaly-doc)
file(STRINGS ${SOURCE_DIR}/debian/control library REGEX "^Package: libtessaly[0-9]+$")
string(REPLACE "Package: " "" library "${library}")
list(APPEND packages ${library})

set(debs)
foreach(package IN LISTS packages)
    file(GLOB deb ${WORK_DIR}/debs/${package}_${VERSION}*.deb)
    if(NOT deb)
        message(FATAL_ERROR "scripts/package made no ${package} of version ${VERSION}")
    endif()
    list(APPEND debs ${deb})
    run(dpkg-deb -x ${deb} ${WORK_DIR}/root)
endforeach()
file(GLOB dsc ${WORK_DIR}/debs/tessaly_${VERSION}.dsc)
if(NOT dsc)
    message(FATAL_ERROR "scripts/package made no source package of version ${VERSION}")
endif()
# Pedantic and informational tags are shown, not failed on.
run(lintian --fail-on error,warning --pedantic --display-info ${debs} ${dsc})
message("lintian says:\n${output}")

# The documentation package is the same for every architecture, as Debian's
# -doc packages of Qt libraries are.
file(GLOB doc ${WORK_DIR}/debs/libtessaly-doc_${VERSION}*_all.deb)
if(NOT doc)
    message(FATAL_ERROR "scripts/package made no libtessaly-doc for all architectures")
endif()
run(dpkg-deb --field ${doc} Section Multi-Arch)
if(NOT output MATCHES "Section: doc" OR NOT output MATCHES "Multi-Arch: foreign")
    message(FATAL_ERROR "libtessaly-doc's control says:\n${output}")
endif()

set(usr ${WORK_DIR}/root/usr)
# The programs carry no run path: the unpacked library folder stands for the
# system's, where the packages install the library.
set(system LD_LIBRARY_PATH=${usr}/${libdir})

# The HTML pages, with the main page and every public class, and the QCH file
# where Qt's help finds documentation (Qt's own documentation folder). A QCH
# file is an SQLite database that names its namespace.
foreach(page index.html classTessaly.html classTessalyByName.html classIBaseModel.html classIBaseModelEvents.html
        classTessalyError.html classTessalyPanelFactory.html)
    if(NOT EXISTS ${usr}/share/doc/tessaly/html/${page})
        message(FATAL_ERROR "libtessaly-doc holds no share/doc/tessaly/html/${page}")
    endif()
endforeach()
file(READ ${usr}/share/doc/tessaly/html/index.html mainPage)
if(NOT mainPage MATCHES "life cycle" OR NOT mainPage MATCHES "SetModelDLL")
    message(FATAL_ERROR "the packaged API documentation's main page is not the host's guide")
endif()
set(qch ${usr}/share/qt6/doc/tessaly.qch)
if(NOT EXISTS ${qch})
    message(FATAL_ERROR "libtessaly-doc holds no share/qt6/doc/tessaly.qch")
endif()
# debhelper puts a -doc package's examples into the folder of the package it
# documents.
file(GLOB example ${usr}/share/doc/*/examples/host.cpp)
if(NOT example)
    message(FATAL_ERROR "libtessaly-doc holds no example host")
endif()
file(READ ${qch} signature LIMIT 16)
file(STRINGS ${qch} namespace REGEX "org\\.tessaly\\.Tessaly\\." LIMIT_COUNT 1)
if(NOT signature MATCHES "^SQLite format 3" OR NOT namespace)
    message(FATAL_ERROR "${qch} is no QCH file of the namespace org.tessaly.Tessaly")
endif()

# No ELF file carries a RUNPATH or RPATH.
file(GLOB_RECURSE files LIST_DIRECTORIES false ${WORK_DIR}/root/*)
set(elfs 0)
foreach(file IN LISTS files)
    if(IS_SYMLINK ${file})
        continue()
    endif()
    file(READ ${file} magic LIMIT 4 HEX)
    if(NOT magic STREQUAL "7f454c46")
        continue()
    endif()
    math(EXPR elfs "${elfs} + 1")
    run(readelf --dynamic ${file})
    if(output MATCHES "\\((RUNPATH|RPATH)\\)[^\n]*")
        message(FATAL_ERROR "${file} carries a run path: ${CMAKE_MATCH_0}")
    endif()
endforeach()
if(elfs LESS 4)
    message(FATAL_ERROR "the packages hold ${elfs} ELF files; halvane, tessaly-emu, the library and the plugin make 4")
endif()
run(${bare} ${system} ${usr}/bin/halvane --version)
if(NOT output MATCHES "Halvane ${VERSION}")
    message(FATAL_ERROR "the packaged halvane --version says: ${output}")
endif()
run(${bare} ${system} HOME=${WORK_DIR} ${usr}/bin/halvane --state ${WORK_DIR}/state.json --screenshot ${WORK_DIR}/shot.png)
file(READ ${WORK_DIR}/shot.png signature LIMIT 8 HEX)
if(NOT signature STREQUAL "89504e470d0a1a0a")
    message(FATAL_ERROR "the packaged halvane --screenshot wrote no PNG: ${output}")
endif()
run(${bare} ${system} ${usr}/bin/tessaly-emu --help)
tessaly_check_hosts(${usr} ${libdir} ${WORK_DIR}/hosts ${usr}/${libdir})

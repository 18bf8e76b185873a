# SPDX-FileCopyrightText: The Tessaly developers
# SPDX-License-Identifier: BSD-3-Clause
#
# Builds the Debian packages with scripts/package into a scratch folder,
# checks them and the source package (whose debian/copyright lintian reads)
# with lintian, unpacks them into a scratch root and uses what they hold: the
# programs, a host built against libtessaly-dev through CMake and pkg-config,
# and the Designer plugin. Skipped where dpkg is not there.
#   -DSOURCE_DIR (the checkout) -DWORK_DIR -DVERSION
include(${SOURCE_DIR}/tests/consumer/Hosts.cmake)

foreach(tool dpkg-buildpackage dpkg-deb lintian)
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
set(packages halvane libtessaly-dev libtessaly-qt6-designer)
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
run(lintian --fail-on error,warning ${debs} ${dsc})

set(usr ${WORK_DIR}/root/usr)
run(${bare} ${usr}/bin/halvane --version)
if(NOT output MATCHES "Halvane ${VERSION}")
    message(FATAL_ERROR "the packaged halvane --version says: ${output}")
endif()
run(${bare} HOME=${WORK_DIR} ${usr}/bin/halvane --state ${WORK_DIR}/state.json --screenshot ${WORK_DIR}/shot.png)
file(READ ${WORK_DIR}/shot.png signature LIMIT 8 HEX)
if(NOT signature STREQUAL "89504e470d0a1a0a")
    message(FATAL_ERROR "the packaged halvane --screenshot wrote no PNG: ${output}")
endif()
run(${bare} ${usr}/bin/tessaly-emu --help)
tessaly_check_hosts(${usr} ${libdir} ${WORK_DIR}/hosts)

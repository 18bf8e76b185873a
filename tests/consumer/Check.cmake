# SPDX-FileCopyrightText: The Tessaly developers
# SPDX-License-Identifier: BSD-3-Clause
#
# Installs the built project into a scratch prefix and uses it as a developer
# does: the installed programs and the Designer plugin with no environment
# set, the API documentation where the build made it, and the hosts of
# Hosts.cmake.
include(${CMAKE_CURRENT_LIST_DIR}/Hosts.cmake)
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
run(${bare} ${prefix}/bin/halvane --version)
if(NOT output MATCHES "Halvane ${VERSION}")
    message(FATAL_ERROR "halvane --version says: ${output}")
endif()
run(${bare} ${prefix}/bin/tessaly-emu --help)
# The API documentation, where the build made it.
if(DOCS)
    foreach(file share/doc/tessaly/html/index.html share/doc/tessaly/html/classTessaly.html share/qt6/doc/tessaly.qch)
        if(NOT EXISTS ${prefix}/${file})
            message(FATAL_ERROR "the install put no ${file} into the prefix")
        endif()
    endforeach()
endif()
tessaly_check_hosts(${prefix} ${LIBDIR} ${WORK_DIR})

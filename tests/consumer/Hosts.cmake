# SPDX-FileCopyrightText: The Tessaly developers
# SPDX-License-Identifier: BSD-3-Clause
#
# Builds the host projects of this folder against an installed Tessaly and
# runs them as a developer would: one through find_package(Tessaly), one
# loading the library at run time, one finding the Designer plugin as Qt
# Designer does, and one through pkg-config.
#   tessaly_check_hosts(PREFIX LIBDIR WORK_DIR [SYSTEM_LIBRARIES])
# PREFIX holds the installation, LIBDIR is its library folder relative to it.
# SYSTEM_LIBRARIES, for an installation whose programs and plugins carry no
# run path (Debian's packages, unpacked), stands for the system's library
# folder that they are meant to be installed into.

set(bare env -i QT_QPA_PLATFORM=offscreen)
set(hostSources ${CMAKE_CURRENT_LIST_DIR})

# Runs a command and fails the test with its output when it fails; the
# output is left in `output`.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(result)
        message(FATAL_ERROR "${ARGN} failed (${result}):\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

function(tessaly_check_hosts prefix libdir work)
    # Tessaly_DIR names the package to test, whatever else the machine has.
    run(${CMAKE_COMMAND} -S ${hostSources} -B ${work}/build -G Ninja -DCMAKE_PREFIX_PATH=${prefix}
        -DTessaly_DIR=${prefix}/${libdir}/cmake/Tessaly)
    run(${CMAKE_COMMAND} --build ${work}/build)
    run(${bare} ${work}/build/consumer)
    run(${bare} ${work}/build/loader)
    set(system)
    if(ARGC GREATER 3)
        set(system LD_LIBRARY_PATH=${ARGV3})
    endif()
    run(${bare} ${system} QT_PLUGIN_PATH=${prefix}/${libdir}/qt6/plugins ${work}/build/pluginhost)

    run(env PKG_CONFIG_PATH=${prefix}/${libdir}/pkgconfig pkg-config --cflags --libs tessaly)
    separate_arguments(flags UNIX_COMMAND "${output}")
    run(c++ -std=c++20 -fPIC ${hostSources}/main.cpp ${flags} -Wl,-rpath,${prefix}/${libdir} -o ${work}/pkgconsumer)
    run(${bare} ${work}/pkgconsumer)
endfunction()

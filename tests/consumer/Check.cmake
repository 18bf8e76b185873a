# Installs the built project into a scratch prefix and uses it as a developer
# does: the installed programs and the Designer plugin with no environment
# set, a host project through find_package(Tessaly), one through pkg-config.
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)
set(bare env -i QT_QPA_PLATFORM=offscreen)

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(result)
        message(FATAL_ERROR "${ARGN} failed (${result}):\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
run(${bare} ${prefix}/bin/halvane --version)
if(NOT output MATCHES "Halvane ${VERSION}")
    message(FATAL_ERROR "halvane --version says: ${output}")
endif()
run(${bare} ${prefix}/bin/tessaly-emu --help)

run(${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/build -G Ninja -DCMAKE_PREFIX_PATH=${prefix})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run(${bare} ${WORK_DIR}/build/consumer)
run(${bare} ${WORK_DIR}/build/loader)
run(${bare} QT_PLUGIN_PATH=${prefix}/${LIBDIR}/qt6/plugins ${WORK_DIR}/build/pluginhost)

run(env PKG_CONFIG_PATH=${prefix}/${LIBDIR}/pkgconfig pkg-config --cflags --libs tessaly)
separate_arguments(flags UNIX_COMMAND "${output}")
run(c++ -std=c++20 -fPIC ${SOURCE_DIR}/main.cpp ${flags} -Wl,-rpath,${prefix}/${LIBDIR} -o ${WORK_DIR}/pkgconsumer)
run(${bare} ${WORK_DIR}/pkgconsumer)

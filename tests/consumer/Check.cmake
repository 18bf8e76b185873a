# Installs the built project into a scratch prefix, then configures, builds
# and runs a host project that uses find_package(Tessaly).
file(REMOVE_RECURSE ${WORK_DIR})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/prefix
    RESULT_VARIABLE result OUTPUT_QUIET)
if(result)
    message(FATAL_ERROR "install failed")
endif()
if(NOT EXISTS ${WORK_DIR}/prefix/include/tessaly/Tessaly.h)
    message(FATAL_ERROR "public header not installed under include/tessaly")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/build -G Ninja
        -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix
    RESULT_VARIABLE result)
if(result)
    message(FATAL_ERROR "configure against the package failed")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK_DIR}/build RESULT_VARIABLE result)
if(result)
    message(FATAL_ERROR "build against the package failed")
endif()
foreach(host consumer loader)
    execute_process(COMMAND ${WORK_DIR}/build/${host} RESULT_VARIABLE result)
    if(result)
        message(FATAL_ERROR "${host} failed: ${result}")
    endif()
endforeach()

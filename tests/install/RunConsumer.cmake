# Installs BUILD_DIR into PREFIX, or builds consumer.cpp against what lies there and runs it: STEP is prefix,
# cmake or pkgconfig. WORK_DIR is scratch, CXX the compiler, CXX_FLAGS what its programs must share with the library.
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE text ERROR_VARIABLE text)
  message(STATUS "${text}")
  if(NOT status EQUAL 0)
    list(JOIN ARGN " " command)
    message(FATAL_ERROR "failed (${status}): ${command}")
  endif()
endfunction()

if(STEP STREQUAL "prefix")
  file(REMOVE_RECURSE ${PREFIX} ${PREFIX}.moved)
  # Installed in one place and used in another: nothing may hold the first.
  run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${PREFIX}.moved)
  file(RENAME ${PREFIX}.moved ${PREFIX})
elseif(STEP STREQUAL "cmake")
  file(REMOVE_RECURSE ${WORK_DIR})
  run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/cmake-consumer -B ${WORK_DIR} -G ${GENERATOR}
    -DCMAKE_PREFIX_PATH=${PREFIX} -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_CXX_FLAGS=${CXX_FLAGS})
  run(${CMAKE_COMMAND} --build ${WORK_DIR})
  run(${WORK_DIR}/consumer)
elseif(STEP STREQUAL "pkgconfig")
  file(MAKE_DIRECTORY ${WORK_DIR})
  set(ENV{PKG_CONFIG_PATH} ${PREFIX}/${LIBDIR}/pkgconfig)
  execute_process(COMMAND ${PKG_CONFIG} --cflags --libs oravane
    OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(flags UNIX_COMMAND "${flags}")
  separate_arguments(shared UNIX_COMMAND "${CXX_FLAGS}")
  run(${CXX} -std=c++20 ${shared} ${CMAKE_CURRENT_LIST_DIR}/consumer.cpp -o ${WORK_DIR}/consumer ${flags})
  run(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${PREFIX}/${LIBDIR} ${WORK_DIR}/consumer)
else()
  message(FATAL_ERROR "unknown step \"${STEP}\"")
endif()

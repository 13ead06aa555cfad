# Installs the build tree into a scratch prefix, builds the engine example against the
# installed package and runs it on the example's card library.
# Variables: BUILD_DIR, SOURCE_DIR.
set(work "${BUILD_DIR}/package-test")
file(REMOVE_RECURSE "${work}/prefix" "${work}/out.dxf")

function(run_step what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${what} failed (${result}):\n${out}\n${err}")
  endif()
  set(step_output "${out}" PARENT_SCOPE)
endfunction()

run_step("install" ${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${work}/prefix")
run_step("configure" ${CMAKE_COMMAND} -S "${SOURCE_DIR}/examples/engine_client" -B "${work}/build" -G Ninja
         -DCMAKE_BUILD_TYPE=Debug "-DCMAKE_PREFIX_PATH=${work}/prefix")
run_step("build" ${CMAKE_COMMAND} --build "${work}/build")
run_step("run" "${work}/build/engine_client" "${SOURCE_DIR}/examples/engine_client/library" card "${work}/out.dxf"
         车削 铣削 钻孔 磨削 检验 入库 包装)
if(NOT step_output MATCHES "entities [1-9][0-9]*")
  message(FATAL_ERROR "the example drew nothing: ${step_output}")
endif()
if(NOT step_output MATCHES "cards 1\n" OR NOT step_output MATCHES "cell 车削\\(改\\)")
  message(FATAL_ERROR "the example did not list the card or change its cell: ${step_output}")
endif()
if(NOT EXISTS "${work}/out.dxf")
  message(FATAL_ERROR "the example saved no drawing")
endif()
message(STATUS "example: ${step_output}")

# cmake -P script: shared build, export check, install, consumer build.
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed (${rc}): ${ARGN}\n${out}\n${err}")
  endif()
endfunction()

set(build "${WORK_DIR}/shared")
set(prefix "${WORK_DIR}/prefix")
file(REMOVE_RECURSE "${WORK_DIR}")

run(${CMAKE_COMMAND} -S "${SOURCE_DIR}" -B "${build}" -G "${GENERATOR}"
    -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=ON
    -DVEXEL_BUILD_TESTS=OFF -DVEXEL_BUILD_EXAMPLES=OFF -DVEXEL_INSTALL=ON
    -DCMAKE_INSTALL_PREFIX=${prefix})
run(${CMAKE_COMMAND} --build "${build}" -j 2)
run(${CMAKE_COMMAND} --install "${build}")

# The shared library exports the public classes and hides the internals.
file(GLOB libs "${prefix}/lib*/libvexel.so")
list(GET libs 0 lib)
execute_process(COMMAND nm -D -C --defined-only "${lib}" OUTPUT_VARIABLE symbols RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "nm failed on ${lib}")
endif()
foreach(wanted "vexel::QueryBuilder::tosql" "vexel::col::col_name"
               "vexel::Ptr_CommonExpr::GetExpr" "vexel::SQLValue::SQLValue(int const&)"
               "vexel::sch::tab(")
  string(FIND "${symbols}" "${wanted}" at)
  if(at EQUAL -1)
    message(FATAL_ERROR "${lib} does not export ${wanted}")
  endif()
endforeach()
foreach(hidden "vexel::SQLQuery::" "vexel::PGQuery::" "vexel::SQLiteQuery::"
               "vexel::SQLServerQuery::" "vexel::internal::")
  string(FIND "${symbols}" "${hidden}" at)
  if(NOT at EQUAL -1)
    message(FATAL_ERROR "${lib} exports an internal symbol: ${hidden}")
  endif()
endforeach()

# A consumer finds the installed package and links.
run(${CMAKE_COMMAND} -S "${CONSUMER_DIR}" -B "${WORK_DIR}/consumer" -G "${GENERATOR}"
    -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_PREFIX_PATH=${prefix})
run(${CMAKE_COMMAND} --build "${WORK_DIR}/consumer")
file(GLOB consumer_bin "${WORK_DIR}/consumer/consumer")
execute_process(COMMAND "${consumer_bin}" OUTPUT_VARIABLE printed RESULT_VARIABLE rc)
if(NOT rc EQUAL 0 OR NOT printed MATCHES "SELECT a FROM t")
  message(FATAL_ERROR "consumer failed (${rc}): ${printed}")
endif()

# A host that pulls the sources in with add_subdirectory builds and links.
run(${CMAKE_COMMAND} -S "${CONSUMER_DIR}" -B "${WORK_DIR}/subdir" -G "${GENERATOR}"
    -DCMAKE_CXX_COMPILER=${CXX} -DVEXEL_SOURCE_DIR=${SOURCE_DIR} -DVEXEL_BUILD_CONNECTORS=OFF)
run(${CMAKE_COMMAND} --build "${WORK_DIR}/subdir" -j 2)
execute_process(COMMAND "${WORK_DIR}/subdir/consumer" OUTPUT_VARIABLE printed RESULT_VARIABLE rc)
if(NOT rc EQUAL 0 OR NOT printed MATCHES "SELECT a FROM t")
  message(FATAL_ERROR "add_subdirectory consumer failed (${rc}): ${printed}")
endif()

# The pkg-config file points at the same prefix.
find_program(PKG_CONFIG pkg-config)
if(PKG_CONFIG)
  file(GLOB pcdir "${prefix}/lib*/pkgconfig")
  set(ENV{PKG_CONFIG_PATH} "${pcdir}")
  execute_process(COMMAND ${PKG_CONFIG} --libs vexel OUTPUT_VARIABLE pclibs RESULT_VARIABLE rc)
  if(NOT rc EQUAL 0 OR NOT pclibs MATCHES "-lvexel")
    message(FATAL_ERROR "pkg-config vexel failed: ${pclibs}")
  endif()
endif()
message(STATUS "package check passed: ${lib}")

# cmake -P script: a shared build with its unit tests and export check,
# installed to a prefix other than the configured one; consumers built
# against the installed package (core only, with the engines' find modules
# disabled), through pkg-config, from the Debian package, and with the
# sources as a subdirectory.
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed (${rc}): ${ARGN}\n${out}\n${err}")
  endif()
endfunction()
# Runs a built program with the given library directory; it must print `want`.
function(expect_output program libdir want)
  execute_process(COMMAND ${CMAKE_COMMAND} -E env "LD_LIBRARY_PATH=${libdir}" ${program}
                  OUTPUT_VARIABLE printed ERROR_VARIABLE err RESULT_VARIABLE rc)
  if(NOT rc EQUAL 0 OR NOT printed MATCHES "${want}")
    message(FATAL_ERROR "${program} failed (${rc}): ${printed}\n${err}")
  endif()
endfunction()
function(configure_consumer dir)
  run(${CMAKE_COMMAND} -S "${CONSUMER_DIR}" -B "${WORK_DIR}/${dir}" -G "${GENERATOR}"
      -DCMAKE_CXX_COMPILER=${CXX} ${ARGN})
  run(${CMAKE_COMMAND} --build "${WORK_DIR}/${dir}" -j 2)
endfunction()
# Compiles and links the quickstart with the flags pkg-config gives for the
# .pc files under `pcdir`.
function(pkg_config_quickstart pcdir out)
  set(ENV{PKG_CONFIG_PATH} "${pcdir}")
  execute_process(COMMAND ${PKG_CONFIG} --cflags --libs vexel-sqlite vexel vexel-log
                  OUTPUT_VARIABLE flags RESULT_VARIABLE rc OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "pkg-config failed in ${pcdir}")
  endif()
  separate_arguments(flags UNIX_COMMAND "${flags}")
  run(${CXX} -std=c++17 ${quickstart} ${flags} -o ${out})
endfunction()

set(build "${WORK_DIR}/shared")
set(prefix "${WORK_DIR}/prefix")
set(quickstart "${SOURCE_DIR}/examples/quickstart.cpp")
file(REMOVE_RECURSE "${WORK_DIR}")

run(${CMAKE_COMMAND} -S "${SOURCE_DIR}" -B "${build}" -G "${GENERATOR}"
    -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=ON
    -DBUILD_TESTING=ON -DVEXEL_BUILD_EXAMPLES=OFF -DVEXEL_INSTALL=ON -DVEXEL_PACKAGE_TESTS=OFF
    -DCMAKE_INSTALL_PREFIX=${WORK_DIR}/configured-prefix -DCMAKE_SKIP_INSTALL_ALL_DEPENDENCY=ON)
run(${CMAKE_COMMAND} --build "${build}" -j 2 --target vexel vexel_unit_tests vexel_sqlite_connect
    vexel_pg_connect)
run(${CMAKE_CTEST_COMMAND} --test-dir "${build}" -L "unit|package" --output-on-failure
    --no-tests=error)
run(${CMAKE_COMMAND} --install "${build}" --prefix "${prefix}")
file(GLOB libdir "${prefix}/lib*")

configure_consumer(core -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_DISABLE_FIND_PACKAGE_SQLite3=ON
                   -DCMAKE_DISABLE_FIND_PACKAGE_PostgreSQL=ON -DCMAKE_DISABLE_FIND_PACKAGE_ICU=ON)
expect_output(${WORK_DIR}/core/consumer ${libdir} "SELECT a FROM t")

find_program(PKG_CONFIG pkg-config REQUIRED)
pkg_config_quickstart(${libdir}/pkgconfig ${WORK_DIR}/quickstart_pc)
expect_output(${WORK_DIR}/quickstart_pc ${libdir} "SELECT")

# The Debian package, unpacked under a scratch root (cpack builds nothing
# more: the targets installed are built above).
run(${CMAKE_CPACK_COMMAND} -G DEB -B "${WORK_DIR}/debs" --config "${build}/CPackConfig.cmake")
file(GLOB deb "${WORK_DIR}/debs/*.deb")
run(dpkg -x ${deb} "${WORK_DIR}/root")
file(GLOB deb_libdir "${WORK_DIR}/root/usr/lib*")
configure_consumer(deb -DCMAKE_PREFIX_PATH=${WORK_DIR}/root/usr
                   -DCONSUMER_COMPONENTS=sqlite_connect -DQUICKSTART=${quickstart})
expect_output(${WORK_DIR}/deb/consumer ${deb_libdir} "SELECT a FROM t")
expect_output(${WORK_DIR}/deb/quickstart ${deb_libdir} "SELECT")
pkg_config_quickstart(${deb_libdir}/pkgconfig ${WORK_DIR}/quickstart_deb)

# A host that pulls the sources in with add_subdirectory builds and links.
configure_consumer(subdir -DVEXEL_SOURCE_DIR=${SOURCE_DIR} -DVEXEL_BUILD_CONNECTORS=OFF)
expect_output(${WORK_DIR}/subdir/consumer "" "SELECT a FROM t")
message(STATUS "package check passed")

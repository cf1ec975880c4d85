# Builds the API reference of the public headers with Doxygen; any warning
# (an undocumented public name among them) fails it.
#   cmake -DDOXYGEN=<doxygen> -DSOURCE=<source dir> -DOUT=<dir> [-DVERSION=x.y.z]
#         [-DPROBE=ON] -P Docs.cmake
# With PROBE=ON it checks the check itself: it copies the headers, adds one
# public function without a comment, and succeeds only when Doxygen fails on
# that name.
if(NOT DOXYGEN)
  # ctest reads this exit as "skipped" (SKIP_REGULAR_EXPRESSION).
  message("doxygen not found: API reference skipped")
  return()
endif()
if(NOT DEFINED VERSION)
  set(VERSION "")
endif()

set(include_dir "${SOURCE}/include")
if(PROBE)
  set(include_dir "${OUT}/include")
  file(REMOVE_RECURSE "${include_dir}")
  file(COPY "${SOURCE}/include/" DESTINATION "${include_dir}")
  file(APPEND "${include_dir}/vexel/vexel.h"
       "\nnamespace vexel {\nVEXEL_API int vexel_undocumented_probe(int n);\n}  // namespace vexel\n")
endif()

set(VEXEL_DOCS_VERSION "${VERSION}")
set(VEXEL_DOCS_OUTPUT "${OUT}")
set(VEXEL_DOCS_INCLUDE "${include_dir}")
set(VEXEL_DOCS_SOURCE "${SOURCE}")
file(MAKE_DIRECTORY "${OUT}")
configure_file("${SOURCE}/docs/Doxyfile.in" "${OUT}/Doxyfile" @ONLY)
file(REMOVE "${OUT}/warnings.log")
execute_process(COMMAND "${DOXYGEN}" "${OUT}/Doxyfile" WORKING_DIRECTORY "${OUT}"
                RESULT_VARIABLE result)
set(warnings "")
if(EXISTS "${OUT}/warnings.log")
  file(READ "${OUT}/warnings.log" warnings)
endif()

if(PROBE)
  if(result EQUAL 0)
    message(FATAL_ERROR "doxygen accepted a public function without a comment")
  endif()
  if(NOT warnings MATCHES "vexel_undocumented_probe")
    message(FATAL_ERROR "doxygen failed, but not on the undocumented function:\n${warnings}")
  endif()
  message(STATUS "an undocumented public function fails the reference, as it should")
  return()
endif()

if(NOT result EQUAL 0 OR NOT warnings STREQUAL "")
  message(FATAL_ERROR "API reference has warnings (doxygen exit ${result}):\n${warnings}")
endif()
message(STATUS "API reference: ${OUT}/html/index.html")

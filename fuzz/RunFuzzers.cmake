# Builds the `fuzz` preset and runs each fuzz target for SECONDS seconds on
# a copy of its seed corpus (the copy grows; the committed seeds stay put).
#   cmake -DSOURCE_DIR=... -DWORK_DIR=... -DCLANG=... -DSECONDS=60 -P RunFuzzers.cmake
if(NOT CLANG OR NOT EXISTS "${CLANG}")
  message("clang++ not found: fuzz targets skipped")
  return()
endif()

function(run_step what)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY "${SOURCE_DIR}" RESULT_VARIABLE rc
                  OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "${what} failed (${rc}):\n${out}")
  endif()
endfunction()

string(TIMESTAMP started "%s")
run_step("configuring the fuzz preset" ${CMAKE_COMMAND} --preset fuzz)
run_step("building the fuzz preset" ${CMAKE_COMMAND} --build --preset fuzz)
string(TIMESTAMP built "%s")
math(EXPR build_seconds "${built} - ${started}")
message("fuzz preset built in ${build_seconds} s")

foreach(target IN ITEMS builders sqlite)
  set(corpus "${WORK_DIR}/corpus/${target}")
  set(artifacts "${WORK_DIR}/artifacts/${target}")
  file(REMOVE_RECURSE "${corpus}")
  file(MAKE_DIRECTORY "${corpus}" "${artifacts}")
  file(GLOB seeds "${SOURCE_DIR}/fuzz/corpus/${target}/*")
  file(COPY ${seeds} DESTINATION "${corpus}")
  # A slow input is a finding too: nothing here should take seconds.
  execute_process(
    COMMAND "${SOURCE_DIR}/build/fuzz/fuzz/vexel_fuzz_${target}" -max_total_time=${SECONDS}
            -timeout=30 -print_final_stats=1 "-artifact_prefix=${artifacts}/" "${corpus}"
    RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE out)
  string(REGEX MATCH "DONE[^\n]*" done "${out}")
  string(REGEX MATCH "average_exec_per_sec: *[0-9]+" speed "${out}")
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "vexel_fuzz_${target} found a fault (${rc}); reproducer in "
                        "${artifacts}:\n${out}")
  endif()
  message("vexel_fuzz_${target}: ${done}; ${speed}")
endforeach()

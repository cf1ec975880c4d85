# Runs one block of a document's program and, when the document shows what
# it prints, compares the output byte for byte.
#   cmake -DPROGRAM=<program> -DLINE=<block line> -DEXPECTED=<file> -P RunDocBlock.cmake
execute_process(COMMAND "${PROGRAM}" "${LINE}" RESULT_VARIABLE result OUTPUT_VARIABLE out
                ERROR_VARIABLE err)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "block at line ${LINE} failed (${result}):\n${out}${err}")
endif()
if(EXISTS "${EXPECTED}")
  file(READ "${EXPECTED}" expected)
  if(NOT out STREQUAL expected)
    message(FATAL_ERROR "block at line ${LINE} printed\n${out}\ninstead of\n${expected}")
  endif()
endif()
message(STATUS "${out}")

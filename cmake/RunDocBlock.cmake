# Runs one block of a document's program and, when the document shows what
# it prints, compares the output byte for byte.
#   cmake -DPROGRAM=<program> -DLINE=<block line> -DEXPECTED=<file>
#         [-DPG_CONNINFO_FILE=<file>] -P RunDocBlock.cmake
# A PostgreSQL block finds its server the way libpq programs usually do,
# through PGHOST, PGUSER and PGDATABASE, taken here from the throwaway
# server's connection string ("host=... user=... dbname=...").
if(PG_CONNINFO_FILE)
  if(NOT EXISTS "${PG_CONNINFO_FILE}")
    message(FATAL_ERROR "no PostgreSQL server: ${PG_CONNINFO_FILE} is missing")
  endif()
  file(READ "${PG_CONNINFO_FILE}" conninfo)
  string(STRIP "${conninfo}" conninfo)
  string(REPLACE " " ";" settings "${conninfo}")
  foreach(setting IN LISTS settings)
    if(setting MATCHES "^(host|user|dbname|port)=(.*)$")
      string(TOUPPER "${CMAKE_MATCH_1}" key)
      string(REPLACE "DBNAME" "DATABASE" key "${key}")
      set(ENV{PG${key}} "${CMAKE_MATCH_2}")
    endif()
  endforeach()
endif()
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

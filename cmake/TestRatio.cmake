# Prints the share of test code and fails above the limit: non-blank lines of
# *.h/*.cpp under tests/ against include/, src/, host/ and examples/.
#   cmake -DROOT=<source dir> [-DLIMIT=35] -P TestRatio.cmake
if(NOT DEFINED LIMIT)
  set(LIMIT 35)
endif()

function(count_lines out)
  set(total 0)
  foreach(dir IN LISTS ARGN)
    file(GLOB_RECURSE files ${ROOT}/${dir}/*.h ${ROOT}/${dir}/*.cpp)
    foreach(file IN LISTS files)
      file(READ ${file} text)
      # Only line breaks and other characters matter: blanks go, a ";" would
      # split a CMake list, and each run of breaks marks one line's end.
      string(REGEX REPLACE "[ \t\r]" "" text "\n${text}\n")
      string(REPLACE ";" "," text "${text}")
      string(REGEX REPLACE "\n\n+" "\n" text "${text}")
      string(REGEX REPLACE "[^\n]" "" text "${text}")
      string(LENGTH "${text}" breaks)
      math(EXPR total "${total} + ${breaks} - 1")
    endforeach()
  endforeach()
  set(${out} ${total} PARENT_SCOPE)
endfunction()

count_lines(tests tests)
count_lines(code include src host examples)
math(EXPR permille "${tests} * 1000 / ${code}")
math(EXPR whole "${permille} / 10")
math(EXPR tenth "${permille} % 10")
message(STATUS "test lines ${tests}, code lines ${code}: ${whole}.${tenth}% (limit ${LIMIT}%)")
math(EXPR limit_lines "${code} * ${LIMIT} / 100")
if(tests GREATER limit_lines)
  message(FATAL_ERROR "tests are ${whole}.${tenth}% of the code, above ${LIMIT}%")
endif()

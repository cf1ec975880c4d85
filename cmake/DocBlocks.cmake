# Turns the C++ blocks of a Markdown file into one program, so the examples
# the documents show are compiled as written.
#   vexel_doc_blocks(<markdown> <output.cpp> <runnable-lines-variable> <postgres-lines-variable>)
# Each ```cpp block becomes a function: its #include lines go to the top of
# the program, the rest is the function's body. A block whose fence follows
# a line "<!-- runnable -->" is also run by a test; the program runs the
# block whose opening line it is given (`program 79`). "<!-- runnable:
# postgres -->" marks a block that needs the throwaway PostgreSQL server. A ```text block that
# follows a runnable block with only blank lines between is what the block
# prints; it is written to <output.cpp>_<line>.out for the test to compare.
# #line directives make a compile error point into the Markdown file.
macro(vexel_doc_unmask var)
  string(REPLACE "@SEMI@" ";" ${var} "${${var}}")
  string(REPLACE "@LB@" "[" ${var} "${${var}}")
  string(REPLACE "@RB@" "]" ${var} "${${var}}")
  string(REPLACE "@BS@" "\\" ${var} "${${var}}")
endmacro()

function(vexel_doc_blocks markdown output runnable_var postgres_var)
  file(READ "${markdown}" text)
  # CMake lists split on ";" and treat brackets specially: mask them first.
  string(REPLACE ";" "@SEMI@" text "${text}")
  string(REPLACE "[" "@LB@" text "${text}")
  string(REPLACE "]" "@RB@" text "${text}")
  string(REPLACE "\\" "@BS@" text "${text}")
  string(REPLACE "\n" ";" lines "${text}")

  set(includes "")
  set(functions "")
  set(dispatch "")
  set(runnable "")
  set(postgres "")
  set(in_block OFF)
  set(in_output OFF)
  set(after_runnable "")
  set(previous "")
  set(number 0)
  foreach(line IN LISTS lines)
    math(EXPR number "${number} + 1")
    if(in_output)
      if(line MATCHES "^```[ \t]*$")
        set(in_output OFF)
        vexel_doc_unmask(expected)
        file(WRITE "${output}_${after_runnable}.out.new" "${expected}")
        configure_file("${output}_${after_runnable}.out.new" "${output}_${after_runnable}.out"
                       COPYONLY)
        set(after_runnable "")
      else()
        string(APPEND expected "${line}\n")
      endif()
    elseif(NOT in_block AND after_runnable AND line MATCHES "^```text[ \t]*$")
      set(in_output ON)
      set(expected "")
    elseif(NOT in_block)
      if(NOT line STREQUAL "")
        set(after_runnable "")
      endif()
      if(line MATCHES "^```cpp[ \t]*$")
        set(in_block ON)
        set(start ${number})
        math(EXPR first "${number} + 1")
        string(APPEND functions "void block_${start}() {\n#line ${first} \"${markdown}\"\n")
        string(APPEND dispatch "  if (which == ${start}) block_${start}();\n")
        set(block_runnable OFF)
        if(previous MATCHES "^<!-- runnable(: postgres)? -->[ \t]*$")
          if(CMAKE_MATCH_1)
            list(APPEND postgres ${start})
          else()
            list(APPEND runnable ${start})
          endif()
          set(block_runnable ON)
          file(REMOVE "${output}_${start}.out")
        endif()
      endif()
    elseif(line MATCHES "^```[ \t]*$")
      set(in_block OFF)
      string(APPEND functions "}\n\n")
      if(block_runnable)
        set(after_runnable ${start})
      endif()
    elseif(line MATCHES "^[ \t]*#include")
      string(APPEND includes "${line}\n")
      string(APPEND functions "\n")
    else()
      string(APPEND functions "${line}\n")
    endif()
    set(previous "${line}")
  endforeach()
  if(in_block)
    message(FATAL_ERROR "${markdown}: a ```cpp block opened at line ${start} never closes")
  endif()

  set(program "// Generated from ${markdown} at configure time; edit the Markdown file.
#undef NDEBUG
#include <cassert>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include <tessel/DialectConnect.h>
#include <tessel/SQLiteConnect.h>
#include <vexel/vexel.h>
${includes}
namespace {

${functions}}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  const int which = std::atoi(argv[1]);
${dispatch}  return 0;
}
")
  vexel_doc_unmask(program)
  file(WRITE "${output}.new" "${program}")
  configure_file("${output}.new" "${output}" COPYONLY)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${markdown}")
  set(${runnable_var} ${runnable} PARENT_SCOPE)
  set(${postgres_var} ${postgres} PARENT_SCOPE)
endfunction()

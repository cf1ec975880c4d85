# Warning flags for the project's own targets only, so that a host pulling
# the project in with add_subdirectory keeps its own flags.
function(vexel_warnings target)
  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(${target} PRIVATE -Wall -Wextra)
  elseif(MSVC)
    target_compile_options(${target} PRIVATE /W4)
  endif()
endfunction()

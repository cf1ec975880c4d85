# Helpers for the project's own targets. Warning flags apply to them only,
# so that a host pulling the project in with add_subdirectory keeps its own.
function(vexel_warnings target)
  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(${target} PRIVATE -Wall -Wextra)
  elseif(MSVC)
    target_compile_options(${target} PRIVATE /W4)
  endif()
endfunction()

# A default host library `target`, exported as vexel::<export_name>.
#   vexel_host_library(target export_name [DLL <building-macro>] sources...)
# Static, except that a library marked DLL is a DLL of its own when Vexel is
# one: a Windows DLL must resolve every reference when it is linked, and one
# logger (one sink) must serve the whole process. <building-macro> is defined
# while it is built, so that its header marks its functions dllexport.
function(vexel_host_library target export_name)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "DLL" "")
  set(type STATIC)
  if(arg_DLL AND WIN32 AND BUILD_SHARED_LIBS)
    set(type SHARED)
  endif()
  add_library(${target} ${type} ${arg_UNPARSED_ARGUMENTS})
  add_library(vexel::${export_name} ALIAS ${target})
  target_compile_features(${target} PUBLIC cxx_std_17)
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
                                              $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${export_name}
                                             POSITION_INDEPENDENT_CODE ON)
  if(type STREQUAL "SHARED")
    set_target_properties(${target} PROPERTIES PREFIX "")
    target_compile_definitions(${target} PRIVATE ${arg_DLL})
  endif()
  vexel_warnings(${target})
endfunction()

# Helpers for the project's own targets. Warning flags apply to them only,
# so that a host pulling the project in with add_subdirectory keeps its own.
function(vexel_warnings target)
  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(${target} PRIVATE -Wall -Wextra)
  elseif(MSVC)
    target_compile_options(${target} PRIVATE /W4)
  endif()
endfunction()

# A static default host library `target`, exported as vexel::<export_name>.
function(vexel_host_library target export_name)
  add_library(${target} STATIC ${ARGN})
  add_library(vexel::${export_name} ALIAS ${target})
  target_compile_features(${target} PUBLIC cxx_std_17)
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
                                              $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${export_name}
                                             POSITION_INDEPENDENT_CODE ON)
  vexel_warnings(${target})
endfunction()

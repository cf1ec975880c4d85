# Cross build for 64-bit Windows with MinGW-w64 (Debian: g++-mingw-w64-x86-64-posix)
# whose programs run under Wine (Debian: wine64), so CTest can run them here.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triple x86_64-w64-mingw32)
# The posix thread model: std::thread and std::mutex need it (GoogleTest
# also builds C).
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)
set(CMAKE_OBJDUMP ${triple}-objdump CACHE FILEPATH "")
set(VEXEL_CXXFILT ${triple}-c++filt CACHE FILEPATH "Demangler for the DLL's export table")

set(CMAKE_FIND_ROOT_PATH /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Wine runs the programs (cmake/toolchains/wine-run.sh), with a prefix inside
# the build tree; the project's own DLLs sit next to the programs.
find_program(VEXEL_WINE NAMES wine64 wine PATHS /usr/lib/wine NO_CMAKE_FIND_ROOT_PATH)
if(VEXEL_WINE)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=libstdc++-6.dll
                  OUTPUT_VARIABLE stdcxx OUTPUT_STRIP_TRAILING_WHITESPACE)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=libwinpthread-1.dll
                  OUTPUT_VARIABLE winpthread OUTPUT_STRIP_TRAILING_WHITESPACE)
  get_filename_component(stdcxx_dir "${stdcxx}" DIRECTORY)
  get_filename_component(winpthread_dir "${winpthread}" REALPATH)
  get_filename_component(winpthread_dir "${winpthread_dir}" DIRECTORY)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine-run.sh ${VEXEL_WINE}
      ${CMAKE_BINARY_DIR}/wineprefix ${stdcxx_dir}:${winpthread_dir})
endif()

# Install rules: headers, the library, the default host libraries, a CMake
# package (find_package(vexel CONFIG)) and a pkg-config file.
include(CMakePackageConfigHelpers)

set(VEXEL_CMAKE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/vexel")
get_property(VEXEL_EXTRA_INSTALL_TARGETS GLOBAL PROPERTY VEXEL_EXTRA_INSTALL_TARGETS)

install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/"
        DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(
  TARGETS vexel ${VEXEL_HOST_TARGETS} ${VEXEL_EXTRA_INSTALL_TARGETS}
  EXPORT vexelTargets
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
install(EXPORT vexelTargets NAMESPACE vexel:: DESTINATION "${VEXEL_CMAKE_DIR}")

configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/vexelConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/vexelConfig.cmake"
  INSTALL_DESTINATION "${VEXEL_CMAKE_DIR}")
write_basic_package_version_file(
  "${PROJECT_BINARY_DIR}/vexelConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/vexelConfig.cmake"
              "${PROJECT_BINARY_DIR}/vexelConfigVersion.cmake"
        DESTINATION "${VEXEL_CMAKE_DIR}")

if(BUILD_SHARED_LIBS)
  set(VEXEL_PC_CFLAGS "")
else()
  set(VEXEL_PC_CFLAGS "-DVEXEL_STATIC")
endif()
configure_file("${PROJECT_SOURCE_DIR}/cmake/vexel.pc.in"
               "${PROJECT_BINARY_DIR}/vexel.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/vexel.pc"
        DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

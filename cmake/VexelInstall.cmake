# Install rules: headers, the library, the default host libraries, a CMake
# package with the connections as components, pkg-config files, and a Debian
# package (cpack -G DEB).
include(CMakePackageConfigHelpers)

set(VEXEL_CMAKE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/vexel")
set(VEXEL_COMPONENTS sqlite_connect pg_connect)

install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")

# The core export set needs nothing beyond the compiler's runtime; each
# connection is a set of its own, loaded only when its component is asked
# for, since it needs its engine's client library.
set(vexel_targets vexel ${VEXEL_HOST_TARGETS})
if(TARGET vexel_connect_base)
  list(APPEND vexel_targets vexel_connect_base)
endif()
set(vexel_export_sets vexelTargets)
foreach(component IN LISTS VEXEL_COMPONENTS)
  if(TARGET vexel_${component})
    list(APPEND vexel_export_sets vexel_${component}Targets)
  endif()
endforeach()
foreach(set IN LISTS vexel_export_sets)
  if(set STREQUAL "vexelTargets")
    set(targets ${vexel_targets})
  else()
    string(REGEX REPLACE "Targets$" "" targets "${set}")
  endif()
  install(TARGETS ${targets} EXPORT ${set}
          ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
          LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
          RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
  install(EXPORT ${set} NAMESPACE vexel:: DESTINATION "${VEXEL_CMAKE_DIR}")
endforeach()

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

# pkg-config files that find the prefix from their own place, so that an
# installation moved elsewhere (cmake --install --prefix, a package
# unpacked under another root) still builds.
file(RELATIVE_PATH VEXEL_PC_TO_PREFIX "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
string(REGEX REPLACE "/$" "" VEXEL_PC_TO_PREFIX "${VEXEL_PC_TO_PREFIX}")
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(VEXEL_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
else()
  set(VEXEL_PC_PREFIX "\${pcfiledir}/${VEXEL_PC_TO_PREFIX}")
endif()
function(vexel_pkg_config name description requires libs)
  set(cflags "")
  if(name STREQUAL "vexel" AND NOT BUILD_SHARED_LIBS)
    set(cflags " -DVEXEL_STATIC")
  endif()
  file(CONFIGURE OUTPUT "${PROJECT_BINARY_DIR}/pkgconfig/${name}.pc" @ONLY CONTENT
"prefix=@VEXEL_PC_PREFIX@
libdir=\${prefix}/@CMAKE_INSTALL_LIBDIR@
includedir=\${prefix}/@CMAKE_INSTALL_INCLUDEDIR@

Name: @name@
Description: @description@
Version: @PROJECT_VERSION@
Requires: @requires@
Cflags: -I\${includedir}@cflags@
Libs: -L\${libdir} @libs@
")
  install(FILES "${PROJECT_BINARY_DIR}/pkgconfig/${name}.pc"
          DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
endfunction()
# The core leaves write_log and the base helpers to the host: vexel-log is
# the default that defines them.
vexel_pkg_config(vexel "${PROJECT_DESCRIPTION}" "" "-lvexel")
vexel_pkg_config(vexel-log "Default logger and base helpers for Vexel" ""
                 "-lvexel_log -lvexel_olk_base")
if(TARGET vexel_sqlite_connect)
  vexel_pkg_config(vexel-sqlite "SQLite connection for Vexel" "sqlite3 icu-i18n icu-uc"
                   "-lvexel_sqlite_connect -lvexel_connect_base -lvexel_log -lvexel_olk_base")
endif()
if(TARGET vexel_pg_connect)
  vexel_pkg_config(vexel-pg "PostgreSQL connection for Vexel" "libpq"
                   "-lvexel_pg_connect -lvexel_connect_base -lvexel_log -lvexel_olk_base")
endif()

# cpack -G DEB: one development package with everything installed above.
set(CPACK_PACKAGE_NAME vexel)
set(CPACK_PACKAGE_VENDOR "Vexel developers")
set(CPACK_PACKAGE_CONTACT "Vexel developers <vexel@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_DEBIAN_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "libsqlite3-dev, libicu-dev, libpq-dev")
include(CPack)

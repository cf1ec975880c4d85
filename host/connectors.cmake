# Connections to real engines: SQLite (embedded, with the SQL functions the
# library's SQLite texts call, regular expressions through ICU) and
# PostgreSQL (libpq). Included by host/CMakeLists.txt.

find_package(SQLite3 REQUIRED)
find_package(PostgreSQL REQUIRED)
find_package(ICU REQUIRED COMPONENTS uc i18n)

# The cursor over a result's rows, shared by both connections.
vexel_host_library(vexel_connect_base connect_base common/ResultRows.cpp common/RowsConnect.cpp)

vexel_host_library(vexel_sqlite_connect sqlite_connect sqlite/SQLiteConnect.cpp
                   sqlite/RegexpFunction.cpp sqlite/BitStringFunctions.cpp)
target_include_directories(vexel_sqlite_connect PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(vexel_sqlite_connect PUBLIC vexel_connect_base
                      PRIVATE SQLite::SQLite3 ICU::i18n ICU::uc)

vexel_host_library(vexel_pg_connect pg_connect postgres/PGConnect.cpp)
target_link_libraries(vexel_pg_connect PUBLIC vexel_connect_base PRIVATE PostgreSQL::PostgreSQL)

set_property(GLOBAL APPEND PROPERTY VEXEL_EXTRA_INSTALL_TARGETS vexel_connect_base
                                                                vexel_sqlite_connect
                                                                vexel_pg_connect)

# Static libraries carry their engines' client libraries as link
# dependencies, so a package consumer must find them too.
set(VEXEL_DEPENDENCIES_FILE "${PROJECT_BINARY_DIR}/vexelDependencies.cmake")
file(WRITE "${VEXEL_DEPENDENCIES_FILE}"
     "# Client libraries of the SQLite and PostgreSQL connections.\n"
     "include(CMakeFindDependencyMacro)\n"
     "find_dependency(SQLite3)\n"
     "find_dependency(PostgreSQL)\n"
     "find_dependency(ICU COMPONENTS uc i18n)\n")
if(VEXEL_INSTALL)
  install(FILES "${VEXEL_DEPENDENCIES_FILE}" DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/vexel")
endif()

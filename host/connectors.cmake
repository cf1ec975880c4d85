# Connections to real engines: SQLite (embedded, with the SQL functions the
# library's SQLite texts call, regular expressions through ICU) and
# PostgreSQL (libpq). Included by host/CMakeLists.txt.

find_package(SQLite3 REQUIRED)
find_package(PostgreSQL REQUIRED)
find_package(ICU REQUIRED COMPONENTS uc i18n)

# The cursor over a result's rows, shared by both connections.
add_library(vexel_connect_base STATIC common/ResultRows.cpp common/RowsConnect.cpp)
add_library(vexel::connect_base ALIAS vexel_connect_base)
target_compile_features(vexel_connect_base PUBLIC cxx_std_17)
target_include_directories(
  vexel_connect_base PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
                            $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
set_target_properties(vexel_connect_base PROPERTIES EXPORT_NAME connect_base
                                                    POSITION_INDEPENDENT_CODE ON)
vexel_warnings(vexel_connect_base)

add_library(vexel_sqlite_connect STATIC sqlite/SQLiteConnect.cpp sqlite/RegexpFunction.cpp
                                        sqlite/BitStringFunctions.cpp)
add_library(vexel::sqlite_connect ALIAS vexel_sqlite_connect)
target_include_directories(vexel_sqlite_connect PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(vexel_sqlite_connect PUBLIC vexel_connect_base
                      PRIVATE SQLite::SQLite3 ICU::i18n ICU::uc)
set_target_properties(vexel_sqlite_connect PROPERTIES EXPORT_NAME sqlite_connect
                                                      POSITION_INDEPENDENT_CODE ON)
vexel_warnings(vexel_sqlite_connect)

add_library(vexel_pg_connect STATIC postgres/PGConnect.cpp)
add_library(vexel::pg_connect ALIAS vexel_pg_connect)
target_link_libraries(vexel_pg_connect PUBLIC vexel_connect_base PRIVATE PostgreSQL::PostgreSQL)
set_target_properties(vexel_pg_connect PROPERTIES EXPORT_NAME pg_connect
                                                  POSITION_INDEPENDENT_CODE ON)
vexel_warnings(vexel_pg_connect)

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

# Connections to real engines: SQLite (embedded, with the SQL functions the
# library's SQLite texts call, regular expressions through ICU) and
# PostgreSQL (libpq). Included by host/CMakeLists.txt.

find_package(SQLite3 REQUIRED)
find_package(PostgreSQL REQUIRED)
find_package(ICU REQUIRED COMPONENTS uc i18n)

# The cursor over a result's rows, the typed reads and the transaction
# guard, shared by both connections.
vexel_host_library(vexel_connect_base connect_base common/ResultSource.cpp common/ResultRows.cpp
                   common/RowsConnect.cpp common/FieldText.cpp common/HostLog.cpp
                   common/Transaction.cpp)
target_include_directories(vexel_connect_base PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(vexel_connect_base PUBLIC vexel_log)

vexel_host_library(vexel_sqlite_connect sqlite_connect sqlite/SQLiteConnect.cpp
                   sqlite/SQLiteRows.cpp sqlite/StepClock.cpp sqlite/RegexpFunction.cpp
                   sqlite/BitStringFunctions.cpp)
target_include_directories(vexel_sqlite_connect PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(vexel_sqlite_connect PUBLIC vexel_connect_base
                      PRIVATE SQLite::SQLite3 ICU::i18n ICU::uc)

vexel_host_library(vexel_pg_connect pg_connect postgres/PGConnect.cpp postgres/PGRows.cpp)
target_include_directories(vexel_pg_connect PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(vexel_pg_connect PUBLIC vexel_connect_base PRIVATE PostgreSQL::PostgreSQL)

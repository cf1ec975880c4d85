// Random call sequences on every builder and expression, executed on a real
// in-memory SQLite database that holds tables, a view and sequences under
// the names the input favours.
#include <cstddef>
#include <cstdint>
#include <memory>

#include "Checks.h"
#include "Program.h"
#include "tessel/SQLiteConnect.h"

namespace {

using vexel_fuzz::Input;

constexpr const char* kSchema =
    "CREATE TABLE t1(id INTEGER PRIMARY KEY AUTOINCREMENT, a INTEGER, b TEXT, tags TEXT, s TEXT);"
    "CREATE TABLE t2(id INTEGER PRIMARY KEY AUTOINCREMENT, a INTEGER, b TEXT, tags TEXT, s TEXT);"
    "INSERT INTO t1(a, b, tags, s) VALUES (1, 'x', '[1,2]', '0101'), (2, 'y', '[\"a\"]', '1');"
    "INSERT INTO t2(a, b, tags, s) VALUES (1, 'a''b', '[]', '10');"
    "CREATE VIEW v1 AS SELECT * FROM t1;";

// Statements a host might run on the same connection between the library's.
constexpr const char* kHostStatements[] = {
    "DELETE FROM t1;", "INSERT INTO t1(a) VALUES (7);", "BEGIN;", "COMMIT;", "ROLLBACK;",
    "DROP TABLE t2;",  "DELETE FROM sqlite_sequence;"};

class SQLiteConnections : public vexel_fuzz::ConnectionSource {
 public:
  SQLiteConnections() : db_(std::make_shared<tessel::SQLiteConnect>(":memory:")) {
    // A statement that runs away (a recursive WITH without end) stops.
    db_->SetStatementTimeOut(1);
    if (!db_->ExecuteUpdate(kSchema)) vexel_fuzz::finding("the test schema was refused");
  }

  std::shared_ptr<tessel::CConnect> connection(Input& input) override {
    return input.pick(6) == 0 ? nullptr : db_;
  }

  void disturb(Input& input) override {
    if (!db_->ExecuteUpdate(kHostStatements[input.pick(7)])) {
      // The host reads its own failures; the library must not see them.
      std::string ignored;
      db_->GetLastError(ignored);
    }
  }

 private:
  std::shared_ptr<tessel::SQLiteConnect> db_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  Input input(data, size);
  SQLiteConnections connections;
  vexel_fuzz::run_program(input, connections);
  return 0;
}

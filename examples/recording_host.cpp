// A host of its own: the three things the library takes from its host,
// written here instead of linking the shipped ones.
//
// - RawSQLiteConnect implements tessel::CConnect over SQLite's C API and
//   notes which operation the library called with which text.
// - write_log is this program's logger (the library declares it in
//   <olk/Log.h> and never defines it).
// - Olk::Base::StringUtil's helpers are this program's base library.
//
// The program links vexel::vexel and SQLite only, runs one statement of each
// kind and prints the operations and rows.
#include <sqlite3.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include <olk/Log.h>
#include <olk/StringUtil.h>
#include <tessel/CConnect.h>
#include <vexel/vexel.h>

// The logger: one line per failure or trace point. The library's lines
// already name their function, file and line; levels 2 and 3 are traces.
int write_log(int level, const char* module, const char* format, ...) {
  if (level < 4) return 0;
  va_list args;
  va_start(args, format);
  std::fprintf(stderr, "[%s:%d] ", module, level);
  std::vfprintf(stderr, format, args);
  std::fputc('\n', stderr);
  va_end(args);
  return 0;
}

// The base library. The library builds SQL with these, so "%f" must write
// a decimal point: a program that switches the C locale (setlocale) formats
// under "C" here, as the shipped helpers do.
namespace Olk {
namespace Base {
namespace StringUtil {
std::string vstr_fmt(const char* format, va_list args) {
  va_list measure;
  va_copy(measure, args);
  const int size = std::vsnprintf(nullptr, 0, format, measure);
  va_end(measure);
  if (size <= 0) return std::string();
  std::string text(static_cast<size_t>(size) + 1, '\0');
  std::vsnprintf(&text[0], text.size(), format, args);
  text.pop_back();
  return text;
}
std::string str_fmt(const char* format, ...) {
  va_list args;
  va_start(args, format);
  std::string text = vstr_fmt(format, args);
  va_end(args);
  return text;
}
std::string StringReplace(const std::string& text, const std::string& from, const std::string& to) {
  if (from.empty()) return text;
  std::string out;
  size_t at = 0;
  for (size_t hit; (hit = text.find(from, at)) != std::string::npos; at = hit + from.size()) {
    out.append(text, at, hit - at).append(to);
  }
  return out.append(text, at, std::string::npos);
}
}  // namespace StringUtil
}  // namespace Base
}  // namespace Olk

namespace {

// A connection over SQLite's C API. Every operation runs each statement of
// its text in order and keeps the rows of the last one that returns columns,
// as text. (SQLite texts of regexp and str_bit_* conditions call functions
// a host registers with sqlite3_create_function; this one registers none.)
class RawSQLiteConnect : public tessel::CConnect {
 public:
  explicit RawSQLiteConnect(const char* path) { sqlite3_open(path, &db_); }
  ~RawSQLiteConnect() override { sqlite3_close(db_); }

  std::vector<std::string> calls;  // "Operation: text", in calling order

  bool ExecuteUpdate(const std::string& sql) override { return run("ExecuteUpdate", sql); }
  bool ExecuteQuery(const std::string& sql) override { return run("ExecuteQuery", sql); }
  bool ExecuteQueryUDT(const std::string& sql, const int&) override {
    return run("ExecuteQueryUDT", sql);
  }
  bool ExecuteSortByCollate(const std::string& sql, const std::string&) override {
    return run("ExecuteSortByCollate", sql);
  }
  bool ExecuteLoop(const std::string& sql) override { return run("ExecuteLoop", sql); }
  bool ExecuteQueryContainView(const std::string& sql) override {
    return run("ExecuteQueryContainView", sql);
  }
  bool ExecuteReturning(const std::string& sql) override { return run("ExecuteReturning", sql); }
  bool SeqenceExecute(const std::string& sql) override { return run("SeqenceExecute", sql); }
  bool SeqenceExecuteManual(const std::string& sql) override {
    return run("SeqenceExecuteManual", sql);
  }
  tessel::DBTYPE GetDBType() override { return tessel::DB_SQLITE; }

  int GetLastError(std::string& error_info) override {
    error_info = error_;
    return code_;
  }
  int GetLastQueryError(std::string& error_info) override { return GetLastError(error_info); }
  bool MoveNext() override { return ++row_ < rows_.size(); }
  bool IsEOF() override { return row_ >= rows_.size(); }
  std::string GetFieldString(const std::string& column_name) override {
    for (size_t i = 0; i < names_.size() && !IsEOF(); ++i) {
      if (names_[i] == column_name) return rows_[row_][i];
    }
    return std::string();
  }
  int GetFieldInt(int column_index) override {
    if (IsEOF() || column_index < 0 || static_cast<size_t>(column_index) >= names_.size()) return 0;
    return std::atoi(rows_[row_][static_cast<size_t>(column_index)].c_str());
  }
  int GetFieldInt(const std::string& column_name) override {
    return std::atoi(GetFieldString(column_name).c_str());
  }

  const std::vector<std::string>& names() const { return names_; }

 private:
  bool run(const char* operation, const std::string& sql) {
    calls.push_back(std::string(operation) + ": " + sql);
    names_.clear();
    rows_.clear();
    row_ = 0;
    for (const char* rest = sql.c_str(); *rest != '\0';) {
      sqlite3_stmt* stmt = nullptr;
      if (sqlite3_prepare_v2(db_, rest, -1, &stmt, &rest) != SQLITE_OK) return fail();
      if (stmt == nullptr) continue;  // only blanks or a comment were left
      const int columns = sqlite3_column_count(stmt);
      if (columns > 0) {
        names_.clear();
        rows_.clear();
        for (int i = 0; i < columns; ++i) names_.push_back(sqlite3_column_name(stmt, i));
      }
      int step;
      while ((step = sqlite3_step(stmt)) == SQLITE_ROW) {
        std::vector<std::string> row;
        for (int i = 0; i < columns; ++i) {
          const unsigned char* text = sqlite3_column_text(stmt, i);
          row.push_back(text != nullptr ? reinterpret_cast<const char*>(text) : "");
        }
        rows_.push_back(row);
      }
      sqlite3_finalize(stmt);
      if (step != SQLITE_DONE) return fail();
    }
    return true;
  }
  bool fail() {
    code_ = sqlite3_extended_errcode(db_);
    error_ = sqlite3_errmsg(db_);
    rows_.clear();
    return false;
  }

  sqlite3* db_ = nullptr;
  int code_ = 0;
  std::string error_;
  std::vector<std::string> names_;
  std::vector<std::vector<std::string>> rows_;
  size_t row_ = 0;
};

void print_rows(RawSQLiteConnect& db) {
  for (; !db.IsEOF(); db.MoveNext()) {
    std::string line = "   ";
    for (const std::string& name : db.names()) line += " " + name + "=" + db.GetFieldString(name);
    std::cout << line << "\n";
  }
}

}  // namespace

int main() {
  auto db = std::make_shared<RawSQLiteConnect>(":memory:");
  if (!db->ExecuteUpdate("CREATE TABLE items (id INTEGER PRIMARY KEY, name TEXT, qty INTEGER)")) {
    return EXIT_FAILURE;
  }
  // Reference objects carry their own dialect: give them the connection's.
  vexel::tab items("items");
  items.set_db_type(db->GetDBType());
  using vexel::col;
  using vexel::SQLValue;

  vexel::InsertBuilder ins(db);
  ins.INSERT_INTO(items)
      .COLUMNS({col("name"), col("qty")})
      .VALUES({SQLValue("apple"), SQLValue(3)})
      .VALUES({SQLValue("pear"), SQLValue(0)});
  vexel::UpdateBuilder up(db);
  up.UPDATE(items).SET(col("qty"), col("qty").increase(SQLValue(2))).WHERE(items.col("id") == 1);
  vexel::DeleteBuilder del(db);
  del.DELETE_FROM(items).WHERE(items.col("qty") == 0).RETURNING({col("name")});
  vexel::QueryBuilder q(db);
  q.SELECT({items.col("id"), items.col("name"), items.col("qty")}).FROM(items);

  bool ok = ins.Execute() && up.Execute() && del.Execute();
  std::cout << "deleted:\n";
  print_rows(*db);
  ok = ok && q.Execute();
  std::cout << "left:\n";
  print_rows(*db);

  // A failing statement: the library reads GetLastError and logs one line
  // through write_log above.
  vexel::QueryBuilder missing(db);
  missing.SELECT({col("x")}).FROM(vexel::tab("no_such_table"));
  const bool refused = !missing.Execute();

  std::cout << "operations the library called:\n";
  for (const std::string& call : db->calls) std::cout << "  " << call << "\n";
  return ok && refused ? EXIT_SUCCESS : EXIT_FAILURE;
}

// Checks shared by the builder tests: texts per dialect code, what the
// connection was sent, and executions run succeeding and failing.
#ifndef VEXEL_TESTS_BUILDERCHECKS_H
#define VEXEL_TESTS_BUILDERCHECKS_H

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "support/CaptureLog.h"
#include "support/Dialects.h"
#include "vexel/SQLValue.h"
#include "vexel/col.h"

namespace vexel_test {

using Strings = std::vector<std::string>;
using Run = std::function<bool(const std::shared_ptr<FakeConnect>&)>;

// One text but on SQL Server; one on SQLite; one on PostgreSQL (codes 2, 7).
inline PerDialect ms(const std::string& t, const std::string& m) { return {t, t, m, t}; }
inline PerDialect pg(const std::string& l, const std::string& t) { return {l, t, t, t}; }
inline PerDialect pg_only(const std::string& p, const std::string& t) { return {t, p, t, p}; }

// Column lists and value rows as calls, which keep table rows on one line.
template <typename... Names>
std::vector<vexel::col> cols(const Names&... names) {
  return {vexel::col(names)...};
}
template <typename... Values>
std::vector<vexel::SQLValue> row(const Values&... values) {
  return {vexel::SQLValue(values)...};
}

// The class of `kind` a code gets ("Query" -> "SQLiteQuery", "PGQuery",
// "SQLServerQuery"); unknown codes, and SQL Server sequences, take PG's.
inline std::string impl(int code, const std::string& kind) {
  const bool pg = code != 1 && (code != 3 || kind.rfind("Seq", 0) == 0);
  return (pg ? "PG" : code == 1 ? "SQLite" : "SQLServer") + kind;
}

inline Strings lines_of(const std::string& text) {
  Strings out;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) out.push_back(line);
  return out;
}

// Statements the connection received: "Op:sql", "Op(time-out or collation):sql".
inline Strings sent(const FakeConnect& conn) {
  Strings out;
  for (const FakeCall& c : conn.calls()) {
    if (c.op.rfind("Execute", 0) != 0 && c.op.rfind("Seqence", 0) != 0) continue;
    out.push_back(c.op + (c.extra.empty() ? "" : "(" + c.extra + ")") + ":" + c.sql);
  }
  return out;
}

// A failure line as CaptureLog::texts() shows it; `head` is the format up
// to "errorcode", e.g. "ExecuteQuery failed ".
inline std::string failed(const std::string& site, const std::string& head,
                          const std::string& sql) {
  return "5|[vexel::" + site + "]" + head + "errorcode:42.error_info:boom,sql:" + sql + ".[";
}

template <typename Builder>
struct TextRow {
  using Start = void (*)(Builder&);
  std::function<void(Builder&)> build;
  PerDialect want;
};
template <typename Builder, size_t N>
void check_texts(const TextRow<Builder> (&rows)[N],
                 typename TextRow<Builder>::Start start = nullptr) {
  for (const TextRow<Builder>& row : rows) {
    for (int code : kDialects) {
      Builder b(fake(code));
      if (start != nullptr) start(b);
      row.build(b);
      EXPECT_EQ(b.tosql(), row.want.at(code)) << "code " << code << ", row " << row.want.postgres;
    }
  }
}

// On fresh connections of each code, `run` succeeds sending `want` ("\n"
// between statements), logging and reading back nothing; then statement k
// fails: those up to k were sent, the run answers false, GetLastError is
// read once and one line is logged under the code's class of `kind_op`.
inline void check_routes(const Run& run, const PerDialect& want, const std::string& kind_op,
                         const PerDialect& heads) {
  for (int code : kDialects) {
    const Strings statements = lines_of(want.at(code)), head = lines_of(heads.at(code));
    for (size_t k = 0; k <= statements.size(); ++k) {
      SCOPED_TRACE("code " + std::to_string(code) + ", failing statement " + std::to_string(k));
      const bool fails = k < statements.size();
      const std::string& failing = statements[fails ? k : 0];
      auto conn = fake(code);
      if (fails) conn->FailOn(failing.substr(0, failing.find_first_of("(:")));
      CaptureLog log;
      EXPECT_EQ(run(conn), !fails);
      EXPECT_EQ(sent(*conn), Strings(statements.begin(), statements.begin() + (fails ? k + 1 : k)));
      EXPECT_EQ(conn->count("GetLastError"), fails ? 1 : 0);
      const std::string line = failed(impl(code, kind_op), k < head.size() ? head[k] : head.back(),
                                      failing.substr(failing.find(':') + 1));
      EXPECT_EQ(log.texts(), fails ? Strings{line} : Strings{});
    }
  }
}

}  // namespace vexel_test

#endif  // VEXEL_TESTS_BUILDERCHECKS_H

// Table-driven tests across dialects: every case lists the expected text for
// SQLite (1), PostgreSQL (2), SQL Server (3) and an unknown code (7).
#ifndef VEXEL_TESTS_DIALECTS_H
#define VEXEL_TESTS_DIALECTS_H

#include <memory>
#include <string>

#include "support/FakeConnect.h"
#include "tessel/DBType.h"

namespace vexel_test {

constexpr int kDialects[] = {1, 2, 3, 7};

struct PerDialect {
  std::string sqlite;
  std::string postgres;
  std::string sqlserver;
  std::string unknown;

  const std::string& at(int db) const {
    switch (db) {
      case 1:
        return sqlite;
      case 2:
        return postgres;
      case 3:
        return sqlserver;
      default:
        return unknown;
    }
  }
};

// The same text in every dialect.
inline PerDialect all(const std::string& text) { return {text, text, text, text}; }

inline tessel::DBTYPE db(int code) { return static_cast<tessel::DBTYPE>(code); }

inline std::shared_ptr<FakeConnect> fake(int code) { return std::make_shared<FakeConnect>(code); }

}  // namespace vexel_test

#endif  // VEXEL_TESTS_DIALECTS_H

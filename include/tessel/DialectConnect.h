/// \file
/// A connection that only states a dialect. A builder made over it renders
/// that dialect's text without a database: to print or log another dialect's
/// statements, or to render in a program that executes elsewhere. Its execute
/// operations fail, and the cursor is always at its end.
#ifndef TESSEL_DIALECTCONNECT_H
#define TESSEL_DIALECTCONNECT_H

#include <string>

#include "tessel/CConnect.h"

namespace tessel {

/// A connection that only reports a dialect: builders over it render that
/// dialect's text; every execute operation returns false.
///
/// \code
/// vexel::QueryBuilder q(std::make_shared<tessel::DialectConnect>(tessel::DB_SQLSERVER));
/// q.SELECT({vexel::col("id")}).FROM(vexel::tab("t")).LIMIT(5);
/// // q.tosql() == "SELECT id FROM t OFFSET 0 ROWS FETCH NEXT 5 ROWS ONLY"
/// \endcode
class DialectConnect : public CConnect {
 public:
  /// A connection reporting dialect `db`.
  explicit DialectConnect(DBTYPE db) : db_(db) {}

  DBTYPE GetDBType() override { return db_; }

  bool ExecuteUpdate(const std::string&) override { return false; }
  bool ExecuteQuery(const std::string&) override { return false; }
  bool ExecuteQueryUDT(const std::string&, const int&) override { return false; }
  bool ExecuteSortByCollate(const std::string&, const std::string&) override { return false; }
  bool ExecuteLoop(const std::string&) override { return false; }
  bool ExecuteQueryContainView(const std::string&) override { return false; }
  bool ExecuteReturning(const std::string&) override { return false; }
  bool SeqenceExecute(const std::string&) override { return false; }
  bool SeqenceExecuteManual(const std::string&) override { return false; }
  int GetLastError(std::string& error_info) override {
    error_info = "no database: this connection only renders text";
    return -1;
  }
  int GetLastQueryError(std::string& error_info) override { return GetLastError(error_info); }
  bool MoveNext() override { return false; }
  /// Always at the end: there are no rows.
  bool IsEOF() override { return true; }
  ///@{
  /// No rows: every read answers "" or 0.
  std::string GetFieldString(const std::string&) override { return std::string(); }
  int GetFieldInt(int) override { return 0; }
  int GetFieldInt(const std::string&) override { return 0; }
  ///@}

 private:
  DBTYPE db_;
};

}  // namespace tessel

#endif  // TESSEL_DIALECTCONNECT_H

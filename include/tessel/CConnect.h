/// \file
/// The host's database connection. The library renders SQL text, hands it to
/// one of these operations and reports only success or failure; the rows of
/// the last result stay here and are read with the cursor operations.
///
/// The order of the pure virtual operations is part of the contract with
/// hosts that build their own connection: keep it.
#ifndef TESSEL_CCONNECT_H
#define TESSEL_CCONNECT_H

#include <string>

#include "tessel/DBType.h"

namespace tessel {

class CConnect {
 public:
  virtual ~CConnect() = default;

  /// Runs a data-change statement (or several, where the engine allows).
  virtual bool ExecuteUpdate(const std::string& sql) = 0;
  /// Runs a query and keeps its rows for the cursor.
  virtual bool ExecuteQuery(const std::string& sql) = 0;
  /// Code and text of the last failure. A success need not clear them, so
  /// they mean something only right after an operation returned false.
  virtual int GetLastError(std::string& error_info) = 0;
  /// Cursor over the rows of the last result.
  virtual bool MoveNext() = 0;
  virtual bool IsEOF() = 0;
  virtual std::string GetFieldString(const std::string& column_name) = 0;
  virtual int GetFieldInt(int column_index) = 0;
  virtual int GetFieldInt(const std::string& column_name) = 0;
  /// Code and text of the last failed query (read after an insert's query).
  virtual int GetLastQueryError(std::string& error_info) = 0;
  /// Query stopped after `time_out` seconds.
  virtual bool ExecuteQueryUDT(const std::string& sql, const int& time_out) = 0;
  /// Query sorted under the named collation.
  virtual bool ExecuteSortByCollate(const std::string& sql, const std::string& collate_name) = 0;
  /// Query whose (possibly large) result is fetched in batches.
  virtual bool ExecuteLoop(const std::string& sql) = 0;
  /// Dialect of this connection.
  virtual DBTYPE GetDBType() = 0;
  /// Query that reads from a view in the schema "public".
  virtual bool ExecuteQueryContainView(const std::string& sql) = 0;
  /// Data-change statement that returns rows.
  virtual bool ExecuteReturning(const std::string& sql) = 0;
  /// Next value of an emulated sequence (the spelling is the interface's own).
  virtual bool SeqenceExecute(const std::string& sql) = 0;
  /// Next value taken from a column's maximum.
  virtual bool SeqenceExecuteManual(const std::string& sql) = 0;

 protected:
  CConnect() = default;
  CConnect(const CConnect&) = default;
  CConnect& operator=(const CConnect&) = default;
  CConnect(CConnect&&) = default;
  CConnect& operator=(CConnect&&) = default;
};

}  // namespace tessel

#endif  // TESSEL_CCONNECT_H

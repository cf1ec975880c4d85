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

/// The host's database-access layer: the connection interface the library
/// executes through, the dialect codes, and the connections shipped with the library.
namespace tessel {

/// The connection interface a host implements; builders hold it as
/// `std::shared_ptr<tessel::CConnect>` and never delete it.
///
/// What the library expects of an implementation: each execute operation runs
/// the whole text it is given (a statement, or several separated by ";" where
/// the engine allows) and returns true on success; on false, GetLastError
/// reports why. A query's rows stay in the connection, read with MoveNext,
/// IsEOF and GetField*; GetDBType answers the dialect every builder renders
/// for. The library never reads rows itself, except the catalogue
/// (CDBSystemInfo) and the sequence builder. examples/recording_host.cpp is a
/// complete implementation over SQLite's C API.
class CConnect {
 public:
  virtual ~CConnect() = default;

  /// Runs a data-change statement (or several, where the engine allows).
  /// The library calls it for INSERT, UPDATE and DELETE without RETURNING
  /// (`InsertBuilder::Execute` -> "INSERT INTO items(name,qty) VALUES('apple',3)"),
  /// for PostgreSQL's VACUUM, and for the catalogue's sequence reset.
  virtual bool ExecuteUpdate(const std::string& sql) = 0;
  /// Runs a query and keeps its rows for the cursor. The library calls it
  /// for QueryBuilder::Execute (its text ends in ";": "SELECT items.id FROM
  /// items;"), WithBuilder::Execute, the catalogue's questions, and on SQLite
  /// for the time-out, collation and loop forms (the text alone).
  virtual bool ExecuteQuery(const std::string& sql) = 0;
  /// Code and text of the last failure. A success need not clear them, so
  /// they mean something only right after an operation returned false. The
  /// library calls it after every failed execute and writes both into its
  /// log line ("ExecuteQuery failed errorcode:%d.error_info:%s,sql:%s").
  virtual int GetLastError(std::string& error_info) = 0;
  /// Moves the cursor to the next row of the last result; false when none
  /// is left. A fresh result stands on its first row.
  virtual bool MoveNext() = 0;
  /// True when the cursor stands after the last row (or the result has none).
  virtual bool IsEOF() = 0;
  /// The current row's value of the named column as text ("" for NULL).
  virtual std::string GetFieldString(const std::string& column_name) = 0;
  ///@{
  /// The current row's value of a column as an int, by index (0-based) or name.
  virtual int GetFieldInt(int column_index) = 0;
  virtual int GetFieldInt(const std::string& column_name) = 0;
  ///@}
  /// Code and text of the last failed query (read after an insert's query).
  /// Implementations without a separate record answer as GetLastError.
  virtual int GetLastQueryError(std::string& error_info) = 0;
  /// Query stopped after `time_out` seconds (QueryBuilder::ExecuteQueryUDT,
  /// WithBuilder::ExecuteQueryUDT; not on SQLite, where ExecuteQuery runs).
  virtual bool ExecuteQueryUDT(const std::string& sql, const int& time_out) = 0;
  /// Query sorted under the named collation (ExecuteSortByCollate of the
  /// query builders). The text names the collation itself where it wants one.
  virtual bool ExecuteSortByCollate(const std::string& sql, const std::string& collate_name) = 0;
  /// Query whose (possibly large) result is fetched in batches
  /// (ExecuteLoop of the query builders); the cursor reads on as usual.
  virtual bool ExecuteLoop(const std::string& sql) = 0;
  /// Dialect of this connection. Every builder asks it once, when it is made
  /// (and on Reset); 1, 2 and 3 choose SQLite, PostgreSQL and SQL Server,
  /// any other code the PostgreSQL texts.
  virtual DBTYPE GetDBType() = 0;
  /// Query that reads from a view in the schema "public" (QueryBuilder::Execute
  /// of a statement FROM such a view); a connection with nothing special to
  /// do runs it as ExecuteQuery.
  virtual bool ExecuteQueryContainView(const std::string& sql) = 0;
  /// Data-change statement that returns rows: INSERT, UPDATE or DELETE with
  /// RETURNING (OUTPUT on SQL Server), without a trailing ";". The rows are
  /// read through the cursor as a query's.
  virtual bool ExecuteReturning(const std::string& sql) = 0;
  /// Next value of an emulated sequence (the spelling is the interface's own):
  /// SQLite's SeqenceBuilder::NEXT_VAL. The value is read from column "seq".
  virtual bool SeqenceExecute(const std::string& sql) = 0;
  /// Next value taken from a column's maximum: SQLite's
  /// SeqenceBuilder::MANUAL_NEXT_VAL.
  virtual bool SeqenceExecuteManual(const std::string& sql) = 0;

 protected:
  CConnect() = default;
  ///@{
  /// Copying and moving are for derived classes only.
  CConnect(const CConnect&) = default;
  CConnect& operator=(const CConnect&) = default;
  CConnect(CConnect&&) = default;
  CConnect& operator=(CConnect&&) = default;
  ///@}
};

}  // namespace tessel

#endif  // TESSEL_CCONNECT_H

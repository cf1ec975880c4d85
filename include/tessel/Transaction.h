/// \file
/// A transaction on a shipped connection for the scope of a guard:
///
/// \code
/// {
///   tessel::Transaction tx(*conn);
///   conn->ExecuteUpdate("INSERT ...");
///   conn->ExecuteUpdate("UPDATE ...");  // a throw before Commit undoes both
///   tx.Commit();
/// }
/// \endcode
///
/// A guard made while no transaction is open begins one and commits it. A
/// guard made inside an open transaction (an outer guard's, or one the
/// caller began in text) works on a savepoint of it instead: its Commit
/// releases the savepoint, its rollback undoes only the work since the guard
/// began and leaves the outer transaction going. A guard destroyed without
/// Commit rolls back. Guards end in the reverse order of their making, and
/// none may outlive its connection. Starting a guard ends the cursor's
/// current result. Each failure (the connection refusing BEGIN, COMMIT, a
/// savepoint, or a Commit out of order) writes one log line and returns
/// false; the connection's GetLastError then tells the engine's reason.
#ifndef TESSEL_TRANSACTION_H
#define TESSEL_TRANSACTION_H

#include <string>

#include "tessel/RowsConnect.h"

namespace tessel {

/// A scope guard for a transaction (or, nested, a savepoint) on a shipped
/// connection; see the file's description.
class Transaction {
 public:
  /// Begins a transaction, or a savepoint inside an open one, on `conn`.
  explicit Transaction(RowsConnect& conn);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  /// Began and not yet ended.
  bool active() const { return active_; }
  /// Makes the guard's work part of the outer transaction, or permanent.
  bool Commit();
  /// Undoes the guard's work now (the destructor then does nothing).
  bool Rollback();

 private:
  /// Runs the guard's own statement; logs a failure.
  bool run(const char* function, const std::string& sql);

  RowsConnect& conn_;
  std::string savepoint_;  ///< empty when the guard owns the whole transaction
  int depth_ = 0;          ///< the guard's place among the connection's guards
  bool active_ = false;
};

}  // namespace tessel

#endif  // TESSEL_TRANSACTION_H

/// \file
/// Reads or sets a sequence inside another statement. The text is a
/// fragment without its verb: callers prefix "SELECT " or "UPDATE ".
///
/// \code
/// ins.EXCLUDE(vexel::CURRVAL(seq("s.t_id_seq"), t));  // read after insert
/// \endcode
#ifndef VEXEL_SEQENCEEXPR_H
#define VEXEL_SEQENCEEXPR_H

#include <cstdint>
#include <string>

#include "vexel/CommonExpr.h"
#include "vexel/export.h"
#include "vexel/seq.h"
#include "vexel/tab.h"

namespace vexel {

/// A sequence read or set (made by CURRVAL and SETVAL), for InsertBuilder::EXCLUDE.
class VEXEL_API SeqenceExpr : public CommonExpr {
 public:
  /// Which function made the node.
  enum Kind : int32_t { kCurrent = 1, kSet = 2 };

  /// A node of `kind` for sequence `seq_name` of `table_name`.
  SeqenceExpr(Kind kind, const std::string& seq_name, const std::string& table_name, int32_t value);
  ///@{
  /// Plain value.
  SeqenceExpr(const SeqenceExpr&) = default;
  SeqenceExpr& operator=(const SeqenceExpr&) = default;
  ///@}
  ~SeqenceExpr() override = default;

  /// Empty for dialects without sequences (SQL Server and unknown codes).
  std::string GetExpr(const tessel::DBTYPE& db_type) const override;
  void set_table_name(const std::string& table_name) override { table_name_ = table_name; }

 private:
  int32_t kind_;
  std::string seq_name_;
  std::string table_name_;
  int32_t value_;
};

/// The sequence's current value: PostgreSQL "last_value FROM items_id_seq",
/// SQLite "seq FROM sqlite_sequence WHERE name = 'shop.items'", SQL Server "".
VEXEL_API SeqenceExpr CURRVAL(const seq& s, const tab& t);
/// Sets the sequence: PostgreSQL "setval('sq'::regclass, 5, true)", SQLite
/// "sqlite_sequence SET seq = 5 WHERE name = 'shop.items'", SQL Server "".
VEXEL_API SeqenceExpr SETVAL(const seq& s, const int& value, const tab& t);

}  // namespace vexel

#endif  // VEXEL_SEQENCEEXPR_H

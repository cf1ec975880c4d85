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

class VEXEL_API SeqenceExpr : public CommonExpr {
 public:
  enum Kind : int32_t { kCurrent = 1, kSet = 2 };

  SeqenceExpr(Kind kind, const std::string& seq_name, const std::string& table_name, int32_t value);
  SeqenceExpr(const SeqenceExpr&) = default;
  SeqenceExpr& operator=(const SeqenceExpr&) = default;
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

VEXEL_API SeqenceExpr CURRVAL(const seq& s, const tab& t);
VEXEL_API SeqenceExpr SETVAL(const seq& s, const int& value, const tab& t);

}  // namespace vexel

#endif  // VEXEL_SEQENCEEXPR_H

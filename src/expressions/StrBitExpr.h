// Bit-string operations on a column holding '0'/'1' text. PostgreSQL (and
// SQL Server, which gets the same text) uses the bit-string operators; SQLite
// calls str_bit_* functions that the host registers on its connections.
// One renderer serves all six operations; the named classes only fix which.
#ifndef VEXEL_EXPRESSIONS_STRBITEXPR_H
#define VEXEL_EXPRESSIONS_STRBITEXPR_H

#include <string>

#include "vexel/CommonExpr.h"

namespace vexel {

class StrBitExpr : public CommonExpr {
 public:
  enum class Op { kAnd, kOr, kXor, kNot, kShiftLeft, kShiftRight };

  std::string GetExpr(const tessel::DBTYPE& db_type) const override;
  void set_table_name(const std::string& table_name) override;

 protected:
  // `operand` is the bit string (AND, OR, XOR), the decimal shift count, or
  // empty (NOT).
  StrBitExpr(Op op, std::string col_text, std::string operand);
  ~StrBitExpr() override = default;

 private:
  Op op_;
  std::string col_text_;
  std::string operand_;
};

class StrBitAndExpr final : public StrBitExpr {
 public:
  StrBitAndExpr(std::string col_text, std::string bits);
};

class StrBitOrExpr final : public StrBitExpr {
 public:
  StrBitOrExpr(std::string col_text, std::string bits);
};

class StrBitXorExpr final : public StrBitExpr {
 public:
  StrBitXorExpr(std::string col_text, std::string bits);
};

class StrBitNotExpr final : public StrBitExpr {
 public:
  explicit StrBitNotExpr(std::string col_text);
};

class StrBitShiftLeftExpr final : public StrBitExpr {
 public:
  StrBitShiftLeftExpr(std::string col_text, int count);
};

class StrBitShiftRightExpr final : public StrBitExpr {
 public:
  StrBitShiftRightExpr(std::string col_text, int count);
};

}  // namespace vexel

#endif  // VEXEL_EXPRESSIONS_STRBITEXPR_H

#include "expressions/StrBitExpr.h"

#include <utility>

namespace vexel {

StrBitExpr::StrBitExpr(Op op, std::string col_text, std::string operand)
    : op_(op), col_text_(std::move(col_text)), operand_(std::move(operand)) {}

// Each operation: the SQLite call, then the PostgreSQL text that SQL Server
// and unknown codes also get.
std::string StrBitExpr::GetExpr(const tessel::DBTYPE& db_type) const {
  const bool sqlite = db_type == tessel::DB_SQLITE;
  const std::string& c = col_text_;
  const std::string& b = operand_;  // bits, or the shift count
  switch (op_) {
    case Op::kAnd:
      return sqlite ? "str_bit_and(" + c + ",'" + b + "')" : c + " & B'" + b + "'";
    case Op::kOr:
      return sqlite ? "str_bit_or(" + c + ",'" + b + "')" : c + " | B'" + b + "'";
    case Op::kXor:
      return sqlite ? "str_bit_xor(" + c + ",'" + b + "')" : c + " # B'" + b + "'";
    case Op::kNot:
      return sqlite ? "str_bit_not(" + c + ")" : "~" + c;
    case Op::kShiftLeft:
      return sqlite ? "str_bit_shift_left(" + c + "," + b + ")" : c + " << " + b;
    case Op::kShiftRight:
      return sqlite ? "str_bit_shift_right(" + c + "," + b + ")" : c + " >> " + b;
  }
  return std::string();
}

void StrBitExpr::set_table_name(const std::string& /*table_name*/) {}

StrBitAndExpr::StrBitAndExpr(std::string col_text, std::string bits)
    : StrBitExpr(Op::kAnd, std::move(col_text), std::move(bits)) {}
StrBitOrExpr::StrBitOrExpr(std::string col_text, std::string bits)
    : StrBitExpr(Op::kOr, std::move(col_text), std::move(bits)) {}
StrBitXorExpr::StrBitXorExpr(std::string col_text, std::string bits)
    : StrBitExpr(Op::kXor, std::move(col_text), std::move(bits)) {}
StrBitNotExpr::StrBitNotExpr(std::string col_text)
    : StrBitExpr(Op::kNot, std::move(col_text), std::string()) {}
StrBitShiftLeftExpr::StrBitShiftLeftExpr(std::string col_text, int count)
    : StrBitExpr(Op::kShiftLeft, std::move(col_text), std::to_string(count)) {}
StrBitShiftRightExpr::StrBitShiftRightExpr(std::string col_text, int count)
    : StrBitExpr(Op::kShiftRight, std::move(col_text), std::to_string(count)) {}

}  // namespace vexel

#include "vexel/quantified.h"

#include <memory>
#include <utility>

#include "vexel/QueryBuilder.h"

namespace vexel {
namespace {

// The comparison of a column's text with all or any rows of a subquery,
// written when the statement is rendered, in its dialect.
class QuantifiedExpr final : public CommonExpr {
 public:
  QuantifiedExpr(std::string lhs, const char* op, const quantified& q)
      : lhs_(std::move(lhs)), op_(op), kind_(q.kind()), subquery_(q.subquery()) {}

  // SQLite has neither ANY nor ALL: the subquery becomes a named one-column
  // table that EXISTS searches for a row that matches (ANY) or for one that
  // does not (ALL).
  std::string GetExpr(const tessel::DBTYPE& db) const override {
    const bool all = kind_ == quantified::kAll;
    if (db != tessel::DB_SQLITE) {
      return lhs_ + " " + op_ + (all ? " ALL (" : " ANY (") + subquery_ + ")";
    }
    const std::string test = lhs_ + " " + op_ + " vexel_q.vexel_v";
    return std::string(all ? "NOT EXISTS" : "EXISTS") + " (WITH vexel_q(vexel_v) AS (" + subquery_ +
           ") SELECT 1 FROM vexel_q WHERE " + (all ? "(" + test + ") IS NOT TRUE" : test) + ")";
  }
  void set_table_name(const std::string& /*table_name*/) override {}

 private:
  std::string lhs_;
  const char* op_;
  quantified::Kind kind_;
  std::string subquery_;
};

Ptr_CommonExpr compare(const col& c, const char* op, const quantified& q) {
  return Ptr_CommonExpr(std::make_shared<QuantifiedExpr>(c.col_name(), op, q));
}

}  // namespace

quantified::quantified(Kind kind, const QueryBuilder& subquery)
    : kind_(kind == kAll ? kAll : kAny), subquery_(subquery.tosql()) {}

quantified ANY_OF(const QueryBuilder& subquery) { return quantified(quantified::kAny, subquery); }
quantified ALL_OF(const QueryBuilder& subquery) { return quantified(quantified::kAll, subquery); }

Ptr_CommonExpr operator==(const col& c, const quantified& q) { return compare(c, "=", q); }
Ptr_CommonExpr operator!=(const col& c, const quantified& q) { return compare(c, "<>", q); }
Ptr_CommonExpr operator<(const col& c, const quantified& q) { return compare(c, "<", q); }
Ptr_CommonExpr operator<=(const col& c, const quantified& q) { return compare(c, "<=", q); }
Ptr_CommonExpr operator>(const col& c, const quantified& q) { return compare(c, ">", q); }
Ptr_CommonExpr operator>=(const col& c, const quantified& q) { return compare(c, ">=", q); }

}  // namespace vexel

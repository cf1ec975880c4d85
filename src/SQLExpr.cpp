#include "vexel/SQLExpr.h"

#include <typeinfo>

#include "vexel/SQLValue.h"
#include "vexel/col.h"

namespace vexel {

SQLExpr::SQLExpr(const std::string& text) : expr_text_(text) {}
SQLExpr::SQLExpr(const char* text) : expr_text_(text != nullptr ? text : "") {}
SQLExpr::SQLExpr(const SQLValue& v) : expr_text_(v.GetValue()) {}
SQLExpr::SQLExpr(const SQLValue& v, const tessel::DBTYPE& db) : expr_text_(v.GetExpr(db)) {}
SQLExpr::SQLExpr(const CommonExpr& e, const tessel::DBTYPE& db) : expr_text_(e.GetExpr(db)) {}
SQLExpr::SQLExpr(const std::shared_ptr<CommonExpr>& p, const tessel::DBTYPE& db)
    : expr_text_(p ? p->GetExpr(db) : std::string()) {}
// The column renders under its own dialect, not `db`: hosts rely on the
// schema staying in the text.
SQLExpr::SQLExpr(const col& c, const tessel::DBTYPE& /*db*/) : expr_text_(c.col_name()) {}

std::string SQLExpr::GetExpr(const tessel::DBTYPE& /*db_type*/) const { return expr_text_; }

void SQLExpr::set_table_name(const std::string& /*table_name*/) {}

// A host's subclass may render otherwise: only the class itself answers.
const std::string* SQLExpr::fixed_text() const {
  return typeid(*this) == typeid(SQLExpr) ? &expr_text_ : nullptr;
}

}  // namespace vexel

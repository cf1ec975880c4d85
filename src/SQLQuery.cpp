#include "SQLQuery.h"

#include "internal/Text.h"
#include "postgres/PGQuery.h"
#include "sqlite/SQLiteQuery.h"
#include "sqlserver/SQLServerQuery.h"
#include "vexel/CommonExpr.h"

namespace vexel {

SQLQuery::SQLQuery(const std::shared_ptr<tessel::CConnect>& conn)
    : db_conn_(conn), db_type_(conn ? conn->GetDBType() : tessel::DB_POSTGRESQL) {}

std::string SQLQuery::condition_text(const CommonExpr& condition) const {
  return condition.GetExpr(db_type_);
}

void SQLQuery::SELECT(const std::vector<col>& cols) {
  select_cols_ = internal::with_dialect(cols, db_type_);
}

void SQLQuery::SELECT(const CommonExpr& e) { select_expression_ = condition_text(e); }

void SQLQuery::JOIN(const std::string& keyword, const std::string& target) {
  joins_.push_back(keyword + target);
}

void SQLQuery::ON(const CommonExpr& condition) { ons_.push_back(condition_text(condition)); }

void SQLQuery::WHERE(const CommonExpr& condition) { where_ = condition_text(condition); }

void SQLQuery::HAVING(const CommonExpr& condition) { having_ = condition_text(condition); }

void SQLQuery::AND(const CommonExpr& condition) { extend(" AND ", condition); }

void SQLQuery::OR(const CommonExpr& condition) { extend(" OR ", condition); }

// Attaches to HAVING before WHERE before the last ON, without brackets:
// hosts rely on SQL's own precedence here.
void SQLQuery::extend(const char* connector, const CommonExpr& condition) {
  std::string* target = nullptr;
  if (!having_.empty()) {
    target = &having_;
  } else if (!where_.empty()) {
    target = &where_;
  } else if (!ons_.empty()) {
    target = &ons_.back();
  }
  if (target != nullptr) *target += connector + condition_text(condition);
}

std::string SQLQuery::render(const SelectForm& form) const {
  std::string s = "SELECT ";
  if (form.select_expression) s += select_expression_;
  s += internal::join_names(select_cols_);
  if (from_.empty() && !form.always_from) return s;
  // SQL Server writes " FROM " even with nothing after it; callers match it.
  s += " FROM ";
  s += from_;
  for (size_t i = 0; i < joins_.size(); ++i) {
    s += joins_[i];
    if (i < ons_.size()) s += " ON " + ons_[i];
  }
  if (!where_.empty()) s += " WHERE " + where_;
  if (!group_cols_.empty()) s += " GROUP BY " + internal::join_names(group_cols_);
  if (!having_.empty()) s += " HAVING " + having_;
  if (!order_cols_.empty()) s += " ORDER BY " + internal::join_orders(order_cols_);
  if (form.fetch_paging) {
    // An offset without a limit is not rendered at all.
    if (limit_ != 0) {
      s += " OFFSET " + std::to_string(offset_) + " ROWS";
      s += " FETCH NEXT " + std::to_string(limit_) + " ROWS ONLY";
    }
  } else {
    if (limit_ != 0) s += " LIMIT " + std::to_string(limit_);
    if (offset_ != 0) s += " OFFSET " + std::to_string(offset_);
  }
  // Set operations follow in a fixed order, whatever the call order was.
  if (!union_all_.empty()) s += " UNION ALL " + union_all_;
  if (!union_.empty()) s += " UNION " + union_;
  if (!except_.empty()) s += " EXCEPT " + except_;
  if (!intersect_.empty()) s += " INTERSECT " + intersect_;
  return s;
}

bool SQLQuery::run(const ExecForm& form, Variant variant, const internal::Site& site, int time_out,
                   const std::string& collate_name) {
  return internal::ExecuteQuery(db_conn_, form, variant, site, time_out, collate_name,
                                [this] { return tosql(); });
}

std::shared_ptr<SQLQuery> make_query(tessel::DBTYPE db,
                                     const std::shared_ptr<tessel::CConnect>& conn) {
  switch (db) {
    case tessel::DB_SQLITE:
      return internal::make_nothrow<SQLiteQuery>(conn);
    case tessel::DB_SQLSERVER:
      return internal::make_nothrow<SQLServerQuery>(conn);
    default:
      return internal::make_nothrow<PGQuery>(conn);
  }
}

std::shared_ptr<SQLQuery> copy_query(tessel::DBTYPE db, const SQLQuery& other) {
  switch (db) {
    case tessel::DB_SQLITE:
      return internal::make_nothrow<SQLiteQuery>(other);
    case tessel::DB_SQLSERVER:
      return internal::make_nothrow<SQLServerQuery>(other);
    default:
      return internal::make_nothrow<PGQuery>(other);
  }
}

}  // namespace vexel

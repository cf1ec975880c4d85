#include "SQLQuery.h"

#include <charconv>

#include "internal/ExprTree.h"
#include "internal/Text.h"
#include "postgres/PGQuery.h"
#include "sqlite/SQLiteQuery.h"
#include "sqlserver/SQLServerQuery.h"
#include "vexel/CommonExpr.h"

namespace vexel {

SQLQuery::SQLQuery(const std::shared_ptr<tessel::CConnect>& conn)
    : db_conn_(conn), db_type_(conn ? conn->GetDBType() : tessel::DB_POSTGRESQL) {}

void SQLQuery::assign(std::string& target, const CommonExpr& condition) const {
  target.clear();
  internal::ExprTree::append(target, condition, db_type_);
}

void SQLQuery::SELECT(internal::Span<col> cols) {
  select_text_ = internal::join_names(cols, db_type_);
}

void SQLQuery::GROUP_BY(internal::Span<col> cols) {
  group_text_ = internal::join_names(cols, db_type_);
  has_group_ = !cols.empty();
}

void SQLQuery::ORDER_BY(internal::Span<col> cols) {
  order_text_ = internal::join_orders(cols, db_type_);
  has_order_ = !cols.empty();
}

void SQLQuery::SELECT(const CommonExpr& e) { assign(select_expression_, e); }

void SQLQuery::JOIN(const std::string& keyword, const std::string& target) {
  joins_.push_back(keyword + target);
}

void SQLQuery::ON(const CommonExpr& condition) {
  ons_.emplace_back();
  internal::ExprTree::append(ons_.back(), condition, db_type_);
}

void SQLQuery::WHERE(const CommonExpr& condition) { assign(where_, condition); }

void SQLQuery::HAVING(const CommonExpr& condition) { assign(having_, condition); }

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
  if (target == nullptr) return;
  *target += connector;
  internal::ExprTree::append(*target, condition, db_type_);
}

namespace {

void put_number(std::string& s, int value) {
  char digits[12];
  const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  s.append(digits, end);
}

}  // namespace

std::string SQLQuery::render(const SelectForm& form) const {
  // Room for every stored text and the keywords around them, so that the
  // statement is written into one allocation.
  std::size_t size = 96 + select_expression_.size() + select_text_.size() + from_.size() +
                     where_.size() + group_text_.size() + having_.size() + order_text_.size() +
                     union_all_.size() + union_.size() + except_.size() + intersect_.size();
  for (const std::string& join : joins_) size += join.size();
  for (const std::string& on : ons_) size += on.size() + 4;
  std::string s;
  s.reserve(size);
  s += "SELECT ";
  if (form.select_expression) s += select_expression_;
  s += select_text_;
  if (from_.empty() && !form.always_from) return s;
  // SQL Server writes " FROM " even with nothing after it; callers match it.
  s += " FROM ";
  s += from_;
  for (size_t i = 0; i < joins_.size(); ++i) {
    s += joins_[i];
    if (i < ons_.size()) s.append(" ON ").append(ons_[i]);
  }
  if (!where_.empty()) s.append(" WHERE ").append(where_);
  if (has_group_) s.append(" GROUP BY ").append(group_text_);
  if (!having_.empty()) s.append(" HAVING ").append(having_);
  if (has_order_) s.append(" ORDER BY ").append(order_text_);
  if (form.fetch_paging) {
    // An offset without a limit is not rendered at all.
    if (limit_ != 0) {
      s += " OFFSET ";
      put_number(s, offset_);
      s += " ROWS FETCH NEXT ";
      put_number(s, limit_);
      s += " ROWS ONLY";
    }
  } else {
    if (limit_ != 0) {
      s += " LIMIT ";
      put_number(s, limit_);
    }
    if (offset_ != 0) {
      s += " OFFSET ";
      put_number(s, offset_);
    }
  }
  // Set operations follow in a fixed order, whatever the call order was.
  if (!union_all_.empty()) s.append(" UNION ALL ").append(union_all_);
  if (!union_.empty()) s.append(" UNION ").append(union_);
  if (!except_.empty()) s.append(" EXCEPT ").append(except_);
  if (!intersect_.empty()) s.append(" INTERSECT ").append(intersect_);
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

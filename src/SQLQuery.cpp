#include "SQLQuery.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "internal/ExprTree.h"
#include "internal/Facade.h"
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

void SQLQuery::assign(std::string& target, Ptr_CommonExpr&& condition) const {
  if (!internal::ExprTree::take(condition, target)) assign(target, std::as_const(condition));
}

void SQLQuery::assign(internal::ShortText<64>& target, const CommonExpr& condition) const {
  target.clear();
  if (const std::string* text = internal::ExprTree::fixed(condition)) {
    target.append(*text);
  } else {
    target.append(internal::ExprTree::render(condition, db_type_));
  }
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

void SQLQuery::SELECT(const CommonExpr& e) { assign(extra_.get().select_expression, e); }

SQLQuery::Join& SQLQuery::entry(std::size_t n) {
  if (n < kJoinsInPlace) return joins_[n];
  // Entries are asked for in order, so a new one is always the next.
  if (n - kJoinsInPlace == more_joins_.size()) more_joins_.emplace_back();
  return more_joins_[n - kJoinsInPlace];
}

void SQLQuery::JOIN(std::string_view keyword, std::string target) {
  Join& join = entry(join_count_++);
  join.keyword = keyword;
  join.target = std::move(target);
}

void SQLQuery::join_table(std::string_view keyword, const tab& t) {
  Join& join = entry(join_count_++);
  join.keyword = keyword;
  join.target.clear();
  internal::append_table(join.target, t);
}

void SQLQuery::ON(const CommonExpr& condition) { assign(entry(on_count_++).on, condition); }

void SQLQuery::ON(Ptr_CommonExpr&& condition) {
  assign(entry(on_count_++).on, std::move(condition));
}

void SQLQuery::WHERE(const CommonExpr& condition) { assign(where_, condition); }
void SQLQuery::WHERE(Ptr_CommonExpr&& condition) { assign(where_, std::as_const(condition)); }
void SQLQuery::HAVING(Ptr_CommonExpr&& condition) {
  assign(extra_.get().having, std::move(condition));
}

void SQLQuery::HAVING(const CommonExpr& condition) { assign(extra_.get().having, condition); }

void SQLQuery::AND(const CommonExpr& condition) { extend(" AND ", condition); }

void SQLQuery::OR(const CommonExpr& condition) { extend(" OR ", condition); }

namespace {

// Room for a few more conditions: a condition extended once is usually
// extended again. A text in place grows on its own.
void make_room(std::string& target) {
  if (target.capacity() < target.size() + 48) {
    target.reserve(std::max<std::size_t>(2 * target.size() + 96, 256));
  }
}
template <std::size_t N>
void make_room(internal::ShortText<N>& /*target*/) {}

void append_rendered(std::string& target, const CommonExpr& condition, tessel::DBTYPE db) {
  internal::ExprTree::append(target, condition, db);
}
template <std::size_t N>
void append_rendered(internal::ShortText<N>& target, const CommonExpr& condition,
                     tessel::DBTYPE db) {
  target.append(internal::ExprTree::render(condition, db));
}

template <typename Text>
void extend_text(Text& target, std::string_view connector, const CommonExpr& condition,
                 tessel::DBTYPE db) {
  make_room(target);
  const std::string* text = internal::ExprTree::fixed(condition);
  char small[256];
  if (text != nullptr && text->size() <= sizeof small - connector.size()) {
    // The connector and a finished condition are appended in one piece.
    std::memcpy(small, connector.data(), connector.size());
    detail::copy_bytes(small + connector.size(), text->data(), text->size());
    target.append(small, connector.size() + text->size());
    return;
  }
  target.append(connector.data(), connector.size());
  append_rendered(target, condition, db);
}

}  // namespace

// Attaches to HAVING before WHERE before the last ON, without brackets:
// hosts rely on SQL's own precedence here.
void SQLQuery::extend(std::string_view connector, const CommonExpr& condition) {
  const Extra* extra = extra_.find();
  if (extra != nullptr && !extra->having.empty()) {
    extend_text(extra_.get().having, connector, condition, db_type_);
  } else if (!where_.empty()) {
    extend_text(where_, connector, condition, db_type_);
  } else if (on_count_ != 0) {
    extend_text(entry(on_count_ - 1).on, connector, condition, db_type_);
  }
}

namespace {

template <typename Sink, std::size_t N>
void put_clause(Sink& f, const char (&keyword)[N], std::string_view text) {
  f.put(keyword, N - 1);
  f.put(text.data(), text.size());
}

}  // namespace

std::string SQLQuery::render(const SelectForm& form) const {
  // At least what write writes: its keywords and two numbers take 142
  // bytes at most.
  std::size_t size = 160 + select_text_.size() + from_.size() + where_.size() + group_text_.size() +
                     order_text_.size();
  if (const Extra* x = extra_.find()) {
    size += x->select_expression.size() + x->having.size() + x->union_all.size() +
            x->union_.size() + x->except.size() + x->intersect.size();
  }
  for (std::size_t i = 0; i < join_count_ || i < on_count_; ++i) {
    const Join& join = entry(i);
    size += join.keyword.size() + 4 + join.target.size() + join.on.size();
  }
  return internal::bounded_text(size, [&](auto& f) { write(f, form); });
}

template <typename Sink>
void SQLQuery::write(Sink& f, const SelectForm& form) const {
  const Extra* x = extra_.find();
  f.put("SELECT ", 7);
  if (form.select_expression && x != nullptr) f.put(x->select_expression);
  f.put(select_text_);
  if (from_.empty() && !form.always_from) return;
  // SQL Server writes " FROM " even with nothing after it; callers match it.
  put_clause(f, " FROM ", from_);
  for (std::size_t i = 0; i < join_count_; ++i) {
    const Join& join = entry(i);
    f.put(join.keyword.data(), join.keyword.size());
    f.put(join.target);
    if (i < on_count_) put_clause(f, " ON ", join.on);
  }
  if (!where_.empty()) put_clause(f, " WHERE ", where_.view());
  if (has_group_) put_clause(f, " GROUP BY ", group_text_);
  if (x != nullptr && !x->having.empty()) put_clause(f, " HAVING ", x->having);
  if (has_order_) put_clause(f, " ORDER BY ", order_text_);
  if (form.fetch_paging) {
    // An offset without a limit is not rendered at all.
    if (limit_ != 0) {
      f.put(" OFFSET ", 8);
      f.put_number(offset_);
      f.put(" ROWS FETCH NEXT ", 17);
      f.put_number(limit_);
      f.put(" ROWS ONLY", 10);
    }
  } else {
    if (limit_ != 0) {
      f.put(" LIMIT ", 7);
      f.put_number(limit_);
    }
    if (offset_ != 0) {
      f.put(" OFFSET ", 8);
      f.put_number(offset_);
    }
  }
  // Set operations follow in a fixed order, whatever the call order was.
  if (x == nullptr) return;
  if (!x->union_all.empty()) put_clause(f, " UNION ALL ", x->union_all);
  if (!x->union_.empty()) put_clause(f, " UNION ", x->union_);
  if (!x->except.empty()) put_clause(f, " EXCEPT ", x->except);
  if (!x->intersect.empty()) put_clause(f, " INTERSECT ", x->intersect);
}

bool SQLQuery::run(const ExecForm& form, Variant variant, const internal::Site& site, int time_out,
                   const std::string& collate_name) {
  return internal::ExecuteQuery(db_conn_, form, variant, site, time_out, collate_name,
                                [this] { return tosql(); });
}

void place(detail::QuerySlot& slot, tessel::DBTYPE db,
           const std::shared_ptr<tessel::CConnect>& conn) {
  internal::place_dialect<PGQuery, SQLiteQuery, SQLServerQuery>(slot, db, conn);
}

void place(detail::QuerySlot& slot, tessel::DBTYPE db, const SQLQuery& other) {
  internal::place_dialect<PGQuery, SQLiteQuery, SQLServerQuery>(slot, db, other);
}

std::shared_ptr<SQLQuery> copy_query(tessel::DBTYPE db, const SQLQuery& other) {
  return internal::make_dialect<PGQuery, SQLiteQuery, SQLServerQuery, SQLQuery>(db, other);
}

}  // namespace vexel

#include "vexel/col.h"

#include "internal/Text.h"
#include "vexel/CommonExpr.h"
#include "vexel/SQLValue.h"

namespace vexel {

col::col(const std::string& name) : col_name_(name) {}
col::col(const char* name) : col_name_(name != nullptr ? name : "") {}
col::col(const col& other, const tessel::DBTYPE& db) : col(other) { db_type_ = db; }
col::col(const CommonExpr& e, const tessel::DBTYPE& db) : col_name_(e.GetExpr(db)), db_type_(db) {}

std::string col::plain_text(bool drop_schema) const {
  std::string text;
  append_text(text, db_type_, drop_schema);
  return text;
}

std::string col::function_text(tessel::DBTYPE db) const {
  std::string text;
  append_text(text, db, false);
  return text;
}

void col::append_text(std::string& out, tessel::DBTYPE db, bool drop_schema) const {
  internal::Append a(out);
  internal::ColumnText::put(a, *this, db, drop_schema);
}

std::string col::col_name() const {
  if (col_type_ == ColumnFunction) return function_text(db_type_);
  return plain_text(db_type_ == tessel::DB_SQLITE);
}

std::string col::GetExpr(const tessel::DBTYPE& db) const {
  if (col_type_ == ColumnFunction) return function_text(db);
  return plain_text(false);
}

void col::set_schema_name(const std::string& name) {
  if (!name.empty()) schema_name_ = name;
}

void col::set_table_name(const std::string& name) {
  if (!name.empty()) table_name_ = name;
}

void col::set_view_name(const std::string& name) { set_table_name(name); }

bool col::operator<(const col& other) const { return col_name() < other.col_name(); }

// Unlike tab::AS, an empty alias still appends " AS ": callers match the text.
col& col::AS(const std::string& alias) {
  col_name_ += " AS " + alias;
  return *this;
}

col& col::AS(const char* alias) { return AS(std::string(alias != nullptr ? alias : "")); }

// The marker goes inside the qualifier ("t. DISTINCT c"); hosts that want
// "DISTINCT t.c" build the column without a table.
col& col::DISTINCT() {
  col_name_ = " DISTINCT " + col_name_;
  return *this;
}

col& col::EXCLUDED() {
  excluded_ = true;
  return *this;
}

// The ordering texts carry their own blanks; callers match them exactly.
col& col::ASC() {
  order_sql_ = " ASC ";
  return *this;
}

col& col::DESC() {
  order_sql_ = " DESC ";
  return *this;
}

col& col::NullsFirst() {
  order_sql_ += " NULLS FIRST ";
  return *this;
}

col& col::NullsLast() {
  order_sql_ += " NULLS LAST ";
  return *this;
}

col& col::operator+(const col& other) {
  col_name_ += " + " + other.col_name();
  return *this;
}

col& col::operator+(const SQLValue& v) { return increase(v); }

col& col::increase(const SQLValue& v) {
  col_name_ += " + " + internal::ValueText::of(v, db_type_);
  return *this;
}

col& col::operator-(const col& other) {
  col_name_ += " - " + other.col_name();
  return *this;
}

col& col::operator-(const SQLValue& v) { return decrease(v); }

col& col::decrease(const SQLValue& v) {
  col_name_ += " - " + internal::ValueText::of(v, db_type_);
  return *this;
}

std::string col::to_order() const {
  if (order_sql_.empty()) return col_name();
  return col_name() + order_sql_;
}

}  // namespace vexel

#include "vexel/col.h"

#include "internal/Text.h"
#include "vexel/CommonExpr.h"
#include "vexel/SQLValue.h"

namespace vexel {

col::col(const std::string& name) : parts_(name) {}
col::col(const char* name)
    : parts_(name != nullptr ? std::string_view(name) : std::string_view()) {}
col::col(const col& other, const tessel::DBTYPE& db) : col(other) { db_type_ = db; }
col::col(const CommonExpr& e, const tessel::DBTYPE& db) : db_type_(db), parts_(e.GetExpr(db)) {}

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
  if (!name.empty()) parts_.set(ColumnParts::kSchema, name);
}

void col::set_table_name(const std::string& name) {
  if (!name.empty()) parts_.set(ColumnParts::kTable, name);
}

void col::set_view_name(const std::string& name) { set_table_name(name); }

bool col::operator<(const col& other) const { return col_name() < other.col_name(); }

// Unlike tab::AS, an empty alias still appends " AS ": callers match the text.
col& col::AS(const std::string& alias) {
  parts_.append(ColumnParts::kName, " AS ");
  parts_.append(ColumnParts::kName, alias);
  return *this;
}

col& col::AS(const char* alias) { return AS(std::string(alias != nullptr ? alias : "")); }

// The marker goes inside the qualifier ("t. DISTINCT c"); hosts that want
// "DISTINCT t.c" build the column without a table.
col& col::DISTINCT() {
  parts_.prepend(ColumnParts::kName, " DISTINCT ");
  return *this;
}

col& col::EXCLUDED() {
  excluded_ = true;
  return *this;
}

// The ordering texts carry their own blanks; callers match them exactly.
col& col::ASC() {
  parts_.set(ColumnParts::kOrder, " ASC ");
  return *this;
}

col& col::DESC() {
  parts_.set(ColumnParts::kOrder, " DESC ");
  return *this;
}

col& col::NullsFirst() {
  parts_.append(ColumnParts::kOrder, " NULLS FIRST ");
  return *this;
}

col& col::NullsLast() {
  parts_.append(ColumnParts::kOrder, " NULLS LAST ");
  return *this;
}

col& col::operator+(const col& other) {
  parts_.append(ColumnParts::kName, " + " + other.col_name());
  return *this;
}

col& col::operator+(const SQLValue& v) { return increase(v); }

col& col::increase(const SQLValue& v) {
  parts_.append(ColumnParts::kName, " + " + internal::ValueText::of(v, db_type_));
  return *this;
}

col& col::operator-(const col& other) {
  parts_.append(ColumnParts::kName, " - " + other.col_name());
  return *this;
}

col& col::operator-(const SQLValue& v) { return decrease(v); }

col& col::decrease(const SQLValue& v) {
  parts_.append(ColumnParts::kName, " - " + internal::ValueText::of(v, db_type_));
  return *this;
}

std::string col::to_order() const {
  std::string text = col_name();
  text += order_part();
  return text;
}

}  // namespace vexel

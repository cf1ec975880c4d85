#include "vexel/view.h"

#include "internal/Text.h"

namespace vexel {

view::view(const std::string& name) : table_name_(name) {}
view::view(const char* name) : table_name_(name != nullptr ? name : "") {}

view& view::AS(const std::string& alias) {
  if (!alias.empty()) table_name_ += " AS " + alias;
  return *this;
}

view& view::AS(const char* alias) { return AS(std::string(alias != nullptr ? alias : "")); }

std::string view::view_name() const {
  if (db_type_ == tessel::DB_SQLITE || schema_name_.empty()) return table_name_;
  return schema_name_ + "." + table_name_;
}

col view::col(const std::string& name) const {
  return internal::ColumnText::of(schema_name_, table_name_, name, db_type_);
}

col view::col(const char* name) const { return col(std::string(name != nullptr ? name : "")); }

}  // namespace vexel

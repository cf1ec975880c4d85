#include "vexel/tab.h"

#include "internal/Text.h"

namespace vexel {

tab::tab(const std::string& name) : table_name_(name) {}
tab::tab(const char* name) : table_name_(name != nullptr ? name : "") {}

tab& tab::AS(const std::string& alias) {
  if (alias.empty()) return *this;
  char small[64];
  if (alias.size() <= sizeof small - 4) {
    // One append of " AS alias", put together on the stack.
    detail::copy_bytes(small, " AS ", 4);
    detail::copy_bytes(small + 4, alias.data(), alias.size());
    table_name_.append(small, alias.size() + 4);
  } else {
    table_name_.append(" AS ", 4).append(alias);
  }
  return *this;
}

tab& tab::AS(const char* alias) { return AS(std::string(alias != nullptr ? alias : "")); }

void tab::set_schema_name(const std::string& name) {
  if (!name.empty()) schema_name_ = name;
}

std::string tab::table_name() const {
  std::string text;
  internal::append_table(text, *this);
  return text;
}

col tab::col(const std::string& name) const {
  return internal::ColumnText::of(schema_name_, table_name_, name, db_type_);
}

col tab::col(const char* name) const { return col(std::string(name != nullptr ? name : "")); }

}  // namespace vexel

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
  const std::size_t size =
      (schema_name_.empty() ? 0 : schema_name_.size() + 1) + table_name_.size();
  char small[64];
  if (size <= sizeof small) {
    // Put together on the stack and copied once.
    char* p = small;
    if (!schema_name_.empty()) {
      detail::copy_bytes(p, schema_name_.data(), schema_name_.size());
      p += schema_name_.size();
      *p++ = '.';
    }
    detail::copy_bytes(p, table_name_.data(), table_name_.size());
    return std::string(small, size);
  }
  std::string text;
  text.reserve(schema_name_.size() + 1 + table_name_.size());
  internal::append_table(text, *this);
  return text;
}

col tab::col(const std::string& name) const {
  return internal::ColumnText::of(schema_name_, table_name_, name, db_type_);
}

col tab::col(const char* name) const { return col(std::string(name != nullptr ? name : "")); }

}  // namespace vexel

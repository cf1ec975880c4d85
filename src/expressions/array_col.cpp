#include "vexel/array_col.h"

#include <memory>

#include "expressions/ArrayCondition.h"
#include "expressions/ListText.h"
#include "vexel/ArrayExpr.h"
#include "vexel/tab.h"
#include "vexel/view.h"

namespace vexel {
namespace {

template <typename Node, typename... Args>
Ptr_CommonExpr condition(const Args&... args) {
  return Ptr_CommonExpr(std::make_shared<Node>(args...));
}

}  // namespace

array_col::array_col(const std::string& name) : col(name) {}
array_col::array_col(const char* name) : col(name) {}

Ptr_CommonExpr array_col::contains(const std::vector<int>& values) const {
  return condition<ColContainsExpr>(*this, values);
}
Ptr_CommonExpr array_col::contains(const std::vector<std::string>& values) const {
  return condition<ColContainsExpr>(*this, values);
}
Ptr_CommonExpr array_col::contains(std::initializer_list<int> values) const {
  return contains(std::vector<int>(values));
}
Ptr_CommonExpr array_col::contains(std::initializer_list<const char*> values) const {
  return contains(internal::string_items(values));
}

Ptr_CommonExpr array_col::operator&(const std::vector<int>& values) const {
  return condition<ColInterSecExpr>(*this, values);
}
Ptr_CommonExpr array_col::operator&(const std::vector<std::string>& values) const {
  return condition<ColInterSecExpr>(*this, values);
}
Ptr_CommonExpr array_col::operator&(std::initializer_list<int> values) const {
  return operator&(std::vector<int>(values));
}
Ptr_CommonExpr array_col::operator&(std::initializer_list<const char*> values) const {
  return operator&(internal::string_items(values));
}

Ptr_CommonExpr array_col::operator[](const int& index) const {
  return condition<sub_array_col>(col_name(), index);
}

namespace {

array_col qualified(const std::string& name, const std::string& schema, const std::string& table,
                    tessel::DBTYPE db) {
  array_col c(name);
  c.set_schema_name(schema);
  c.set_view_name(table);
  c.set_db_type(db);
  return c;
}

}  // namespace

// Qualified like the plain column of the same name.
array_col tab::array_col(const std::string& name) const {
  return qualified(name, schema_name_, table_name_, db_type_);
}
array_col tab::array_col(const char* name) const {
  return array_col(std::string(name != nullptr ? name : ""));
}
array_col view::array_col(const std::string& name) const {
  return qualified(name, schema_name_, table_name_, db_type_);
}
array_col view::array_col(const char* name) const {
  return array_col(std::string(name != nullptr ? name : ""));
}

ANY::ANY(const array_col& c) : column_name_(c.only_col_name()), table_name_(c.only_table_name()) {}

}  // namespace vexel

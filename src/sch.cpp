#include "vexel/sch.h"

namespace vexel {
namespace {

// What sch gives every object it makes: its schema and its dialect.
template <typename T>
void stamp(T& out, const std::string& schema, tessel::DBTYPE db) {
  out.set_schema_name(schema);
  out.set_db_type(db);
}

}  // namespace

sch::sch(const std::string& name) : schema_name_(name) {}
sch::sch(const char* name) : schema_name_(name != nullptr ? name : "") {}

tab sch::tab(const std::string& name) const { return vexel::tab(schema_name_, name, db_type_); }
tab sch::tab(const char* name) const { return tab(vexel::tab(name)); }

tab sch::tab(const vexel::tab& t) const {
  vexel::tab out(t);
  stamp(out, schema_name_, db_type_);
  return out;
}

view sch::view(const std::string& name) const { return view(vexel::view(name)); }
view sch::view(const char* name) const { return view(vexel::view(name)); }

// view::set_schema_name assigns even an empty name, so an unnamed schema
// clears the view's own.
view sch::view(const vexel::view& v) const {
  vexel::view out(v);
  stamp(out, schema_name_, db_type_);
  return out;
}

func sch::func(const std::string& name) const {
  vexel::func f(name);
  stamp(f, schema_name_, db_type_);
  return f;
}

func sch::func(const char* name) const { return func(std::string(name != nullptr ? name : "")); }

}  // namespace vexel

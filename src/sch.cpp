#include "vexel/sch.h"

namespace vexel {

sch::sch(const std::string& name) : schema_name_(name) {}
sch::sch(const char* name) : schema_name_(name != nullptr ? name : "") {}

tab sch::tab(const std::string& name) const {
  vexel::tab out(name);
  out.set_schema_name(schema_name_);
  out.set_db_type(db_type_);
  return out;
}
tab sch::tab(const char* name) const { return tab(vexel::tab(name)); }

tab sch::tab(const vexel::tab& t) const {
  vexel::tab out(t);
  out.set_schema_name(schema_name_);
  out.set_db_type(db_type_);
  return out;
}

view sch::view(const std::string& name) const { return view(vexel::view(name)); }
view sch::view(const char* name) const { return view(vexel::view(name)); }

// view::set_schema_name assigns even an empty name, so an unnamed schema
// clears the view's own.
view sch::view(const vexel::view& v) const {
  vexel::view out(v);
  out.set_schema_name(schema_name_);
  out.set_db_type(db_type_);
  return out;
}

func sch::func(const std::string& name) const {
  vexel::func f(name);
  f.set_schema_name(schema_name_);
  f.set_db_type(db_type_);
  return f;
}

func sch::func(const char* name) const { return func(std::string(name != nullptr ? name : "")); }

}  // namespace vexel

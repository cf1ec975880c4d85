#include "vexel/func.h"

namespace vexel {

func::func() { col_type_ = ColumnFunction; }
func::func(const std::string& name) : col(name) { col_type_ = ColumnFunction; }
func::func(const char* name) : col(name) { col_type_ = ColumnFunction; }

func::func(const func& other) : col(other) {
  excluded_ = false;
  col_type_ = ColumnFunction;
}

// The dot is written twice on purpose ("s..f", ".f" without a schema):
// hosts match these texts.
std::string func::col_name() const {
  if (db_type_ == tessel::DB_SQLITE) return std::string(name_part());
  std::string text(schema_part());
  if (!text.empty()) text += '.';
  text += '.';
  text += name_part();
  return text;
}

}  // namespace vexel

/// \file
/// A schema reference; makes tables, views and functions that carry its name
/// and dialect.
#ifndef VEXEL_SCH_H
#define VEXEL_SCH_H

#include <string>

#include "tessel/DBType.h"
#include "vexel/export.h"
#include "vexel/func.h"
#include "vexel/tab.h"
#include "vexel/view.h"

namespace vexel {

class VEXEL_API sch {
 public:
  sch() = default;
  sch(const std::string& name);
  sch(const char* name);

  const std::string& schema_name() const { return schema_name_; }
  tessel::DBTYPE db_type() const { return db_type_; }
  void set_db_type(tessel::DBTYPE db) { db_type_ = db; }

  vexel::tab tab(const std::string& name) const;
  vexel::tab tab(const char* name) const;
  vexel::tab tab(const vexel::tab& t) const;
  vexel::view view(const std::string& name) const;
  vexel::view view(const char* name) const;
  vexel::view view(const vexel::view& v) const;
  vexel::func func(const std::string& name) const;
  vexel::func func(const char* name) const;

 private:
  std::string schema_name_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
};

}  // namespace vexel

#endif  // VEXEL_SCH_H

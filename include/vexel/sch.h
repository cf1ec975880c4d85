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

/// A schema reference; makes tables, views and functions that carry its name
/// and its dialect (default PostgreSQL: call set_db_type for other engines).
/// On SQLite a schema is an attached database (`ATTACH DATABASE ... AS shop`).
class VEXEL_API sch {
 public:
  sch() = default;
  ///@{
  /// A schema named `name`.
  sch(const std::string& name);
  sch(const char* name);
  ///@}

  ///@{
  /// The schema's name and dialect.
  const std::string& schema_name() const { return schema_name_; }
  tessel::DBTYPE db_type() const { return db_type_; }
  ///@}
  /// Sets the dialect given to the objects made from now on.
  void set_db_type(tessel::DBTYPE db) { db_type_ = db; }

  ///@{
  /// A table of this schema (the overload taking a tab moves it here).
  vexel::tab tab(const std::string& name) const;
  vexel::tab tab(const char* name) const;
  vexel::tab tab(const vexel::tab& t) const;
  ///@}
  ///@{
  /// A view of this schema (the overload taking a view moves it here).
  vexel::view view(const std::string& name) const;
  vexel::view view(const char* name) const;
  vexel::view view(const vexel::view& v) const;
  ///@}
  ///@{
  /// A function of this schema; it renders "shop..f" on PostgreSQL and "f" on SQLite.
  vexel::func func(const std::string& name) const;
  vexel::func func(const char* name) const;
  ///@}

 private:
  std::string schema_name_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
};

}  // namespace vexel

#endif  // VEXEL_SCH_H

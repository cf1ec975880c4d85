/// \file
/// A table reference. AS appends the alias to the table text itself, so take
/// columns before aliasing ("s.t AS x.c" otherwise).
#ifndef VEXEL_TAB_H
#define VEXEL_TAB_H

#include <string>

#include "tessel/DBType.h"
#include "vexel/array_col.h"
#include "vexel/col.h"
#include "vexel/export.h"

namespace vexel {

class array_col;

class VEXEL_API tab {
 public:
  tab() = default;
  tab(const std::string& name);
  tab(const char* name);
  tab(const tab&) = default;
  tab& operator=(const tab&) = default;

  tab& AS(const std::string& alias);
  tab& AS(const char* alias);
  /// An empty name keeps the schema the table had.
  void set_schema_name(const std::string& name);
  void set_db_type(tessel::DBTYPE db) { db_type_ = db; }
  tessel::DBTYPE db_type() const { return db_type_; }
  const std::string& schema_name() const { return schema_name_; }
  const std::string& get_only_table_name() const { return table_name_; }
  /// "schema.table" (the schema is kept in every dialect).
  std::string table_name() const;

  vexel::col col(const std::string& name) const;
  vexel::col col(const char* name) const;
  /// An array column qualified like col().
  vexel::array_col array_col(const std::string& name) const;
  vexel::array_col array_col(const char* name) const;

 private:
  std::string schema_name_;
  std::string table_name_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
};

}  // namespace vexel

#endif  // VEXEL_TAB_H

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

/// A table reference: schema and name plus a dialect (default PostgreSQL).
/// It renders "schema.table" in every dialect and makes columns that carry its
/// names and dialect.
///
/// \code
/// vexel::tab items = vexel::sch("shop").tab("items");
/// items.col("qty").col_name();   // "shop.items.qty" (PostgreSQL, the default)
/// items.set_db_type(tessel::DB_SQLITE);
/// items.col("qty").col_name();   // "items.qty"
/// \endcode
class VEXEL_API tab {
 public:
  tab() = default;
  ///@{
  /// A table without schema: `tab("t")` renders "t".
  tab(const std::string& name);
  tab(const char* name);
  ///@}
  ///@{
  /// Tables are plain values.
  tab(const tab&) = default;
  tab& operator=(const tab&) = default;
  tab(tab&&) noexcept = default;
  tab& operator=(tab&&) noexcept = default;
  ///@}

  ///@{
  /// Appends " AS alias" to the table text in place ("shop.items AS i"); columns
  /// taken afterwards carry it too ("shop.items AS i.x"), so take them first.
  tab& AS(const std::string& alias);
  tab& AS(const char* alias);
  ///@}
  /// An empty name keeps the schema the table had.
  void set_schema_name(const std::string& name);
  /// Sets the dialect the table's columns render in.
  void set_db_type(tessel::DBTYPE db) { db_type_ = db; }
  ///@{
  /// The dialect, schema name and bare table name.
  tessel::DBTYPE db_type() const { return db_type_; }
  const std::string& schema_name() const { return schema_name_; }
  const std::string& get_only_table_name() const { return table_name_; }
  ///@}
  /// "schema.table" (the schema is kept in every dialect).
  std::string table_name() const;

  ///@{
  /// A column of this table, in the table's dialect.
  vexel::col col(const std::string& name) const;
  vexel::col col(const char* name) const;
  ///@}
  ///@{
  /// An array column qualified like col().
  vexel::array_col array_col(const std::string& name) const;
  vexel::array_col array_col(const char* name) const;
  ///@}

 private:
  friend class sch;
  /// A table made by a schema: both names and the dialect at once.
  tab(const std::string& schema, const std::string& name, tessel::DBTYPE db)
      : schema_name_(schema), table_name_(name), db_type_(db) {}

  std::string schema_name_;
  std::string table_name_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
};

}  // namespace vexel

#endif  // VEXEL_TAB_H

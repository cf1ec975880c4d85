/// \file
/// A view reference. Unlike tab, set_schema_name assigns even an empty name,
/// and SQLite renders a view without its schema.
#ifndef VEXEL_VIEW_H
#define VEXEL_VIEW_H

#include <string>

#include "tessel/DBType.h"
#include "vexel/array_col.h"
#include "vexel/col.h"
#include "vexel/export.h"

namespace vexel {

/// A view reference, like tab: "shop.v" on PostgreSQL and SQL Server, "v" on
/// SQLite (views are rendered without their schema there).
class VEXEL_API view {
 public:
  view() = default;
  ///@{
  /// A view without schema.
  view(const std::string& name);
  view(const char* name);
  ///@}
  ///@{
  /// Views are plain values.
  view(const view&) = default;
  view& operator=(const view&) = default;
  view(view&&) noexcept = default;
  view& operator=(view&&) noexcept = default;
  ///@}

  ///@{
  /// Appends " AS alias" to the view text in place.
  view& AS(const std::string& alias);
  view& AS(const char* alias);
  ///@}
  ///@{
  /// Sets the schema or the dialect.
  void set_schema_name(const std::string& name) { schema_name_ = name; }
  void set_db_type(tessel::DBTYPE db) { db_type_ = db; }
  ///@}
  ///@{
  /// The dialect, schema name and bare view name.
  tessel::DBTYPE db_type() const { return db_type_; }
  const std::string& schema_name() const { return schema_name_; }
  const std::string& get_only_view_name() const { return table_name_; }
  ///@}
  /// The rendered view name ("shop.v"; "v" on SQLite).
  std::string view_name() const;

  ///@{
  /// A column of this view, in the view's dialect.
  vexel::col col(const std::string& name) const;
  vexel::col col(const char* name) const;
  ///@}
  ///@{
  /// An array column qualified like col().
  vexel::array_col array_col(const std::string& name) const;
  vexel::array_col array_col(const char* name) const;
  ///@}

 private:
  std::string schema_name_;
  std::string table_name_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
};

}  // namespace vexel

#endif  // VEXEL_VIEW_H

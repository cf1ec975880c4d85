// A column reference: names plus a dialect, rendered as plain qualified text
// ("s.t.c"; SQLite drops the schema). Modifiers (AS, DISTINCT, arithmetic)
// edit the column text in place and return *this so calls chain.
#ifndef VEXEL_COL_H
#define VEXEL_COL_H

#include <cstdint>
#include <string>

#include "tessel/DBType.h"
#include "vexel/export.h"

namespace vexel {

class CommonExpr;
class SQLValue;

enum ColType : int32_t {
  ColumnPlain = 1,
  ColumnFunction = 3,
};

class VEXEL_API col {
 public:
  col() = default;
  col(const std::string& name);
  col(const char* name);
  col(const col& other, const tessel::DBTYPE& db);
  // A column whose text is the node's text in dialect `db`.
  col(const CommonExpr& e, const tessel::DBTYPE& db);
  col(const col&) = default;
  col(col&&) = default;
  col& operator=(const col&) = default;
  col& operator=(col&&) = default;

  // The rendered column in the column's own dialect; every statement
  // builder renders columns through it.
  virtual std::string col_name() const;
  // The same text in the given dialect, for hosts.
  std::string GetExpr(const tessel::DBTYPE& db) const;

  void set_col_name(const std::string& name) { col_name_ = name; }
  void set_col_type(const ColType& type) { col_type_ = type; }
  void set_db_type(tessel::DBTYPE db) { db_type_ = db; }
  void set_schema_name(const std::string& name);
  void set_table_name(const std::string& name);
  void set_view_name(const std::string& name);

  const std::string& only_col_name() const { return col_name_; }
  const std::string& only_table_name() const { return table_name_; }
  const std::string& only_schema_name() const { return schema_name_; }
  const std::string& only_order_sql() const { return order_sql_; }
  tessel::DBTYPE db_type() const { return db_type_; }
  ColType col_type() const { return col_type_; }

  // Orders columns by their rendered text, so a col can key a std::map.
  bool operator<(const col& other) const;

  // Modifiers.
  col& AS(const std::string& alias);
  col& AS(const char* alias);
  col& DISTINCT();
  col& EXCLUDED();
  col& ASC();
  col& DESC();
  col& NullsFirst();
  col& NullsLast();
  col& operator+(const col& other);
  col& operator+(const SQLValue& v);
  col& increase(const SQLValue& v);
  col& operator-(const col& other);
  col& operator-(const SQLValue& v);
  col& decrease(const SQLValue& v);
  // col_name() followed by the ordering suffix, if any.
  std::string to_order() const;

 protected:
  // Qualified text for a column whose type is not a function.
  std::string plain_text(bool drop_schema) const;
  // Text of a function copied into a plain column.
  std::string function_text(tessel::DBTYPE db) const;

  bool excluded_ = false;
  std::string schema_name_;
  std::string table_name_;
  std::string col_name_;
  std::string order_sql_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
  ColType col_type_ = ColumnPlain;
};

}  // namespace vexel

#endif  // VEXEL_COL_H

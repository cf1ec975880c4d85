/// \file
/// Array nodes that hosts hold directly: element access, "value = ANY(c)",
/// array literals for SET lists and arrays split from delimited text. Each
/// renders with the dialect it is asked for: PostgreSQL arrays, SQLite JSON.
#ifndef VEXEL_ARRAYEXPR_H
#define VEXEL_ARRAYEXPR_H

#include <string>
#include <vector>

#include "vexel/CommonExpr.h"
#include "vexel/array_col.h"
#include "vexel/export.h"

namespace vexel {

/// "v = some element of the column"; built by SQLValue::operator==(const ANY&).
class VEXEL_API ColAnyColExpr : public CommonExpr {
 public:
  /// Made by SQLValue::operator==(const ANY&).
  ColAnyColExpr(const std::string& table_name, const std::string& value_text,
                const std::string& column_name);
  ///@{
  /// Plain value.
  ColAnyColExpr(const ColAnyColExpr&) = default;
  ColAnyColExpr(ColAnyColExpr&&) = default;
  ColAnyColExpr& operator=(const ColAnyColExpr&) = default;
  ColAnyColExpr& operator=(ColAnyColExpr&&) = default;
  ///@}
  ~ColAnyColExpr() override = default;

  std::string GetExpr(const tessel::DBTYPE& db_type) const override;
  void set_table_name(const std::string& table_name) override;

 private:
  std::string table_name_;
  std::string value_text_;
  std::string column_name_;
};

/// One element of an array column: "c[i]", or "c->>$.i" on SQLite.
class VEXEL_API sub_array_col : public CommonExpr {
 public:
  /// Element `index` of `column`; made by array_col::operator[]: PostgreSQL
  /// "shop.items.tags[1]", SQLite "items.tags->>$.1".
  sub_array_col(const std::string& column, const int& index);
  ///@{
  /// Plain value.
  sub_array_col(const sub_array_col&) = default;
  sub_array_col(sub_array_col&&) = default;
  sub_array_col& operator=(const sub_array_col&) = default;
  sub_array_col& operator=(sub_array_col&&) = default;
  ///@}
  ~sub_array_col() override = default;

  std::string GetExpr(const tessel::DBTYPE& db_type) const override;
  void set_table_name(const std::string& table_name) override;

 private:
  std::string column_;
  int index_;
};

/// An array literal: ARRAY[...]\::INTEGER[] / \::VARCHAR[], or json_array(...)
/// on SQLite. Strings are written in double quotes, never escaped.
class VEXEL_API ArrayValue : public CommonExpr {
 public:
  ///@{
  /// An array literal: `ArrayValue({1, 2})` renders PostgreSQL "ARRAY[1,2]::INTEGER[]",
  /// SQLite "json_array(1,2)".
  explicit ArrayValue(const std::vector<int>& values);
  explicit ArrayValue(const std::vector<std::string>& values);
  ///@}
  ///@{
  /// Plain value.
  ArrayValue(const ArrayValue&) = default;
  ArrayValue(ArrayValue&&) = default;
  ArrayValue& operator=(const ArrayValue&) = default;
  ArrayValue& operator=(ArrayValue&&) = default;
  ///@}
  ~ArrayValue() override = default;

  std::string GetExpr(const tessel::DBTYPE& db_type) const override;
  void set_table_name(const std::string& table_name) override;

 private:
  std::vector<int> int_values_;
  std::vector<std::string> string_values_;
  std::string int_list_;
  std::string string_list_;
};

/// An array split from delimited text: string_to_array(...) on PostgreSQL,
/// a json_array of the pieces on SQLite (integers read from each piece;
/// empty or non-numeric pieces are left out of an integer array).
class VEXEL_API string_to_array : public CommonExpr {
 public:
  /// `text` split at `separator`: PostgreSQL "string_to_array('1,2',',')::INTEGER[]",
  /// SQLite "json_array(1,2)".
  string_to_array(const array_type& type, const std::string& text, char separator);
  ///@{
  /// Plain value.
  string_to_array(const string_to_array&) = default;
  string_to_array(string_to_array&&) = default;
  string_to_array& operator=(const string_to_array&) = default;
  string_to_array& operator=(string_to_array&&) = default;
  ///@}
  ~string_to_array() override = default;

  std::string GetExpr(const tessel::DBTYPE& db_type) const override;
  void set_table_name(const std::string& table_name) override;

 private:
  std::string sqlite_array() const;

  array_type type_;
  std::string text_;
  char separator_;
};

}  // namespace vexel

#endif  // VEXEL_ARRAYEXPR_H

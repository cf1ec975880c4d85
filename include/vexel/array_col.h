/// \file
/// Columns that hold arrays: native arrays in PostgreSQL, JSON array text in
/// SQLite. The conditions render with the statement's dialect.
///
/// \code
/// vexel::array_col tags = t.array_col("tags");
/// q.WHERE(tags.contains({1, 2}));         // holds every listed value
/// q.WHERE(tags.operator&({"a", "b"}));    // shares at least one value
/// q.WHERE(vexel::SQLValue(3) == vexel::ANY(tags));
/// \endcode
#ifndef VEXEL_ARRAY_COL_H
#define VEXEL_ARRAY_COL_H

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "vexel/Ptr_CommonExpr.h"
#include "vexel/col.h"
#include "vexel/export.h"

namespace vexel {

/// Element type of an array built from text (string_to_array).
enum array_type : int32_t {
  /// Integers: "\::INTEGER[]"; on SQLite pieces that are not numbers are left out.
  ArrayOfInteger = 1,
  /// Texts: "\::VARCHAR[]", items in double quotes.
  ArrayOfString = 2,
};

/// An array column (PostgreSQL arrays; JSON arrays on SQLite).
///
/// \code
/// vexel::array_col tags = vexel::tab("items").array_col("tags");
/// tags.contains({1, 2});  // PostgreSQL "tags @> ARRAY[1,2]::INTEGER[]"
///                         // SQLite reads json_each(tags) in an EXISTS subquery
/// \endcode
class VEXEL_API array_col : public col {
 public:
  array_col() = default;
  ///@{
  /// A bare array column.
  array_col(const std::string& name);
  array_col(const char* name);
  ///@}
  ///@{
  /// Plain value.
  array_col(const array_col&) = default;
  array_col(array_col&&) = default;
  array_col& operator=(const array_col&) = default;
  array_col& operator=(array_col&&) = default;
  ///@}

  ///@{
  /// The column holds every listed value.
  Ptr_CommonExpr contains(const std::vector<int>& values) const;
  Ptr_CommonExpr contains(const std::vector<std::string>& values) const;
  ///@}
  ///@{
  /// Braced lists would be ambiguous between the two vector forms.
  Ptr_CommonExpr contains(std::initializer_list<int> values) const;
  Ptr_CommonExpr contains(std::initializer_list<const char*> values) const;
  ///@}
  ///@{
  /// The column shares at least one value with the list.
  Ptr_CommonExpr operator&(const std::vector<int>& values) const;
  Ptr_CommonExpr operator&(const std::vector<std::string>& values) const;
  Ptr_CommonExpr operator&(std::initializer_list<int> values) const;
  Ptr_CommonExpr operator&(std::initializer_list<const char*> values) const;
  ///@}
  /// One element; the index is written as given (no shift between SQLite's
  /// zero-based path and PostgreSQL's one-based subscript).
  Ptr_CommonExpr operator[](const int& index) const;
};

/// The right-hand side of "value = ANY(array)": SQLValue(v) == ANY(c).
class VEXEL_API ANY {
 public:
  /// The array column's elements: `SQLValue(3) == ANY(tags)` renders "3=ANY(tags)" on PostgreSQL.
  explicit ANY(const array_col& c);

  ///@{
  /// The column's and table's names as taken.
  const std::string& column_name() const { return column_name_; }
  const std::string& table_name() const { return table_name_; }
  ///@}

 private:
  std::string column_name_;
  std::string table_name_;
};

}  // namespace vexel

#endif  // VEXEL_ARRAY_COL_H

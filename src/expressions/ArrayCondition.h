// Conditions on array columns built by array_col: containment ("holds every
// listed value") and overlap ("shares at least one value"). Column texts and
// value lists are fixed when the node is built.
#ifndef VEXEL_EXPRESSIONS_ARRAYCONDITION_H
#define VEXEL_EXPRESSIONS_ARRAYCONDITION_H

#include <string>
#include <vector>

#include "vexel/CommonExpr.h"
#include "vexel/array_col.h"

namespace vexel {

class ColContainsExpr final : public CommonExpr {
 public:
  ColContainsExpr(const array_col& c, const std::vector<int>& values);
  ColContainsExpr(const array_col& c, const std::vector<std::string>& values);
  std::string GetExpr(const tessel::DBTYPE& db_type) const override;
  void set_table_name(const std::string& table_name) override;

 private:
  std::string table_name_;
  array_type type_;
  std::string column_name_;
  std::string values_;  // "1,2" or "'a','b'"
  std::string count_;   // number of values given, duplicates included
};

class ColInterSecExpr final : public CommonExpr {
 public:
  ColInterSecExpr(const array_col& c, const std::vector<int>& values);
  ColInterSecExpr(const array_col& c, const std::vector<std::string>& values);
  std::string GetExpr(const tessel::DBTYPE& db_type) const override;
  void set_table_name(const std::string& table_name) override;

 private:
  std::string table_name_;
  std::string column_name_;
  std::string values_;         // "1,2" or "'a','b'"
  std::string parenthesised_;  // "(1,2)" or "('a', 'b')"
  array_type type_;
};

}  // namespace vexel

#endif  // VEXEL_EXPRESSIONS_ARRAYCONDITION_H

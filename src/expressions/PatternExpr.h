// Pattern-matching conditions whose text depends on the dialect: LIKE,
// ILIKE, the regular-expression kinds and full-text search. Each renders
// when the statement is rendered, with the statement's dialect.
#ifndef VEXEL_EXPRESSIONS_PATTERNEXPR_H
#define VEXEL_EXPRESSIONS_PATTERNEXPR_H

#include <cstdint>
#include <string>

#include "vexel/CommonExpr.h"

namespace vexel {

// "c LIKE 'p'" in every dialect; "c NOT LIKE 'p'" when negated.
class LikeExpr final : public CommonExpr {
 public:
  LikeExpr(std::string col_text, std::string pattern, bool negated = false);
  std::string GetExpr(const tessel::DBTYPE& db_type) const override;
  void set_table_name(const std::string& table_name) override;

 private:
  std::string col_text_;
  std::string pattern_;
  bool negated_;
};

// ILIKE on PostgreSQL only; every other dialect gets LIKE (NOT ILIKE and
// NOT LIKE when negated).
class ILikeExpr final : public CommonExpr {
 public:
  ILikeExpr(std::string col_text, std::string pattern, bool negated = false);
  std::string GetExpr(const tessel::DBTYPE& db_type) const override;
  void set_table_name(const std::string& table_name) override;

 private:
  std::string col_text_;
  std::string pattern_;
  bool negated_;
};

// The SQLite mode argument of regexp(text, pattern, mode) equals the kind.
enum RegexpKind : int32_t {
  kRegexp = 0,        // case-insensitive match
  kRegexpCap = 1,     // case-sensitive match
  kNotRegexp = 2,     // no case-insensitive match
  kNotRegexpCap = 3,  // no case-sensitive match
  kSimilarTo = 4,
};

class ColRegexpExpr final : public CommonExpr {
 public:
  // `pattern` is already quoted (or a value's text for kSimilarTo).
  ColRegexpExpr(RegexpKind kind, std::string col_text, std::string pattern);
  std::string GetExpr(const tessel::DBTYPE& db_type) const override;
  void set_table_name(const std::string& table_name) override;

 private:
  std::string col_text_;
  std::string pattern_;
  RegexpKind kind_;
};

// PostgreSQL text search; elsewhere a substring LIKE.
class FullTextExpr final : public CommonExpr {
 public:
  // `col_text` is the bare column name, without schema or table.
  FullTextExpr(std::string col_text, std::string words);
  std::string GetExpr(const tessel::DBTYPE& db_type) const override;
  void set_table_name(const std::string& table_name) override;

 private:
  std::string col_text_;
  std::string text_;
};

}  // namespace vexel

#endif  // VEXEL_EXPRESSIONS_PATTERNEXPR_H

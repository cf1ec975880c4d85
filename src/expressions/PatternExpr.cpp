#include "expressions/PatternExpr.h"

#include <utility>

namespace vexel {

LikeExpr::LikeExpr(std::string col_text, std::string pattern, bool negated)
    : col_text_(std::move(col_text)), pattern_(std::move(pattern)), negated_(negated) {}

std::string LikeExpr::GetExpr(const tessel::DBTYPE& /*db_type*/) const {
  return col_text_ + (negated_ ? " NOT LIKE '" : " LIKE '") + pattern_ + "'";
}

void LikeExpr::set_table_name(const std::string& /*table_name*/) {}

ILikeExpr::ILikeExpr(std::string col_text, std::string pattern, bool negated)
    : col_text_(std::move(col_text)), pattern_(std::move(pattern)), negated_(negated) {}

std::string ILikeExpr::GetExpr(const tessel::DBTYPE& db_type) const {
  const char* op = negated_ ? " NOT LIKE '" : " LIKE '";
  if (db_type == tessel::DB_POSTGRESQL) op = negated_ ? " NOT ILIKE '" : " ILIKE '";
  return col_text_ + op + pattern_ + "'";
}

void ILikeExpr::set_table_name(const std::string& /*table_name*/) {}

ColRegexpExpr::ColRegexpExpr(RegexpKind kind, std::string col_text, std::string pattern)
    : col_text_(std::move(col_text)), pattern_(std::move(pattern)), kind_(kind) {}

namespace {

// PostgreSQL's operator for each kind; SQL Server and unknown codes get the
// same text (hosts match it, valid or not).
const char* regexp_operator(RegexpKind kind) {
  switch (kind) {
    case kRegexp:
      return " ~* ";
    case kRegexpCap:
      return " ~ ";
    case kNotRegexp:
      return " !~* ";
    case kNotRegexpCap:
      return " !~ ";
    case kSimilarTo:
      return " SIMILAR TO ";
  }
  return nullptr;
}

}  // namespace

std::string ColRegexpExpr::GetExpr(const tessel::DBTYPE& db_type) const {
  const char* op = regexp_operator(kind_);
  if (op == nullptr) return std::string();
  switch (db_type) {
    case tessel::DB_SQLITE:
      // SIMILAR TO degrades to LIKE; callers match its two blanks.
      if (kind_ == kSimilarTo) return col_text_ + " LIKE  " + pattern_;
      // The host's regexp(text, pattern, mode), mode = kind.
      return "regexp(" + col_text_ + " , " + pattern_ + "," + std::to_string(kind_) + ")";
    case tessel::DB_POSTGRESQL:
    case tessel::DB_SQLSERVER:
    default:
      return col_text_ + op + pattern_;
  }
}

void ColRegexpExpr::set_table_name(const std::string& /*table_name*/) {}

FullTextExpr::FullTextExpr(std::string col_text, std::string words)
    : col_text_(std::move(col_text)), text_(std::move(words)) {}

std::string FullTextExpr::GetExpr(const tessel::DBTYPE& db_type) const {
  switch (db_type) {
    case tessel::DB_POSTGRESQL:
      return col_text_ + " @@ to_tsquery('" + text_ + "')";
    case tessel::DB_SQLITE:
    case tessel::DB_SQLSERVER:
    default:
      return col_text_ + " LIKE '%" + text_ + "%'";
  }
}

void FullTextExpr::set_table_name(const std::string& /*table_name*/) {}

}  // namespace vexel

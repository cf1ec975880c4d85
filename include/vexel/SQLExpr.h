/// \file
/// A piece of SQL text taken verbatim, whatever dialect is asked for.
#ifndef VEXEL_SQLEXPR_H
#define VEXEL_SQLEXPR_H

#include <memory>
#include <string>

#include "vexel/CommonExpr.h"

namespace vexel {

class SQLValue;
class col;

/// A raw SQL text, written as it stands in every dialect: `SQLExpr("a > 1")`
/// stands wherever a condition or node goes. Never for text from outside.
class VEXEL_API SQLExpr : public CommonExpr {
 public:
  SQLExpr() = default;
  ///@{
  /// The text as given.
  SQLExpr(const std::string& text);
  SQLExpr(const char* text);
  ///@}
  ///@{
  /// A value's text, or a node's text in dialect `db`, taken now.
  SQLExpr(const SQLValue& v);
  SQLExpr(const SQLValue& v, const tessel::DBTYPE& db);
  SQLExpr(const CommonExpr& e, const tessel::DBTYPE& db);
  SQLExpr(const std::shared_ptr<CommonExpr>& p, const tessel::DBTYPE& db);
  ///@}
  /// Renders `c` with the column's own dialect; `db` is not applied (hosts
  /// rely on the schema staying in the text).
  SQLExpr(const col& c, const tessel::DBTYPE& db);

  ///@{
  /// Plain value.
  SQLExpr(const SQLExpr&) = default;
  SQLExpr(SQLExpr&&) = default;
  SQLExpr& operator=(const SQLExpr&) = default;
  SQLExpr& operator=(SQLExpr&&) = default;
  ///@}
  ~SQLExpr() override = default;

  /// The text.
  const std::string& ToExpr() const { return expr_text_; }
  std::string GetExpr(const tessel::DBTYPE& db_type) const override;
  void set_table_name(const std::string& table_name) override;

 protected:
  const std::string* fixed_text() const override;

 private:
  std::string expr_text_;
};

}  // namespace vexel

#endif  // VEXEL_SQLEXPR_H

/// \file
/// Literal values. The text is fixed at construction: integers in decimal,
/// floating values with six decimals, strings in single quotes. Strings are
/// not escaped: callers that need quoting pass an SQLExpr or escape first.
#ifndef VEXEL_SQLVALUE_H
#define VEXEL_SQLVALUE_H

#include <string>

#include "vexel/ArrayExpr.h"
#include "vexel/CommonExpr.h"

namespace vexel {

class SQLExpr;
class ANY;
class Ptr_CommonExpr;
class SafeValue;
namespace internal {
struct ValueText;
}  // namespace internal

/// A function-call text taken verbatim by SQLValue.
struct SQLFunc {
  /// The call's text, e.g. "now()".
  std::string text;
};

/// A literal whose text is fixed when it is made: integers in decimal,
/// floating values with six decimals ("1.500000"), texts between single
/// quotes exactly as given, not escaped (`SQLValue("it's")` is "'it's'").
/// Use SafeValue for text from outside the program.
class VEXEL_API SQLValue : public CommonExpr {
 public:
  SQLValue() = default;
  ///@{
  /// A number; the forms with a dialect only record it.
  SQLValue(const short& v);
  SQLValue(const short& v, const tessel::DBTYPE& db);
  SQLValue(const unsigned short& v);
  SQLValue(const unsigned short& v, const tessel::DBTYPE& db);
  SQLValue(const int& v);
  SQLValue(const int& v, const tessel::DBTYPE& db);
  SQLValue(const unsigned int& v);
  SQLValue(const unsigned int& v, const tessel::DBTYPE& db);
  SQLValue(const long& v);
  SQLValue(const long& v, const tessel::DBTYPE& db);
  SQLValue(const unsigned long& v);
  SQLValue(const unsigned long& v, const tessel::DBTYPE& db);
  SQLValue(const long long& v);
  SQLValue(const long long& v, const tessel::DBTYPE& db);
  SQLValue(const unsigned long long& v);
  SQLValue(const unsigned long long& v, const tessel::DBTYPE& db);
  SQLValue(const float& v);
  SQLValue(const float& v, const tessel::DBTYPE& db);
  SQLValue(const double& v);
  SQLValue(const double& v, const tessel::DBTYPE& db);
  ///@}
  ///@{
  /// A text in single quotes, not escaped.
  SQLValue(const std::string& s);
  SQLValue(const std::string& s, const tessel::DBTYPE& db);
  SQLValue(const char* s);
  SQLValue(const char* s, const tessel::DBTYPE& db);
  ///@}
  /// A value carrying dialect `db`.
  SQLValue(const SQLValue& v, const tessel::DBTYPE& db);
  /// The node's text in dialect `db`, taken as it stands:
  /// `SQLValue(vexel::NOW(0), db)` is "now() at time zone 'UTC'" on PostgreSQL,
  /// "DATETIME('now')" on SQLite and "" on SQL Server.
  SQLValue(const CommonExpr& e, const tessel::DBTYPE& db);
  ///@{
  /// The raw text of `e`, or of a function call, as it stands.
  SQLValue(const SQLExpr& e);
  SQLValue(const SQLFunc& f);
  SQLValue(const SQLFunc& f, const tessel::DBTYPE& db);
  ///@}

  ///@{
  /// Plain value.
  SQLValue(const SQLValue&) = default;
  SQLValue(SQLValue&&) = default;
  SQLValue& operator=(const SQLValue&) = default;
  SQLValue& operator=(SQLValue&&) = default;
  ///@}
  ~SQLValue() override = default;

  /// The fixed text.
  const std::string& GetValue() const { return value_; }
  /// The fixed text; a value made from a SafeValue gives its form in
  /// `db_type` instead.
  std::string GetExpr(const tessel::DBTYPE& db_type) const override;
  void set_table_name(const std::string& table_name) override;
  ///@{
  /// Sets or reads the recorded dialect.
  void set_db_type(const tessel::DBTYPE& db) { db_type_ = db; }
  tessel::DBTYPE db_type() const { return db_type_; }
  ///@}

  /// "value = some element of the array column".
  ColAnyColExpr operator==(const ANY& any) const;

 protected:
  const std::string* fixed_text() const override;

 private:
  friend class SafeValue;
  friend struct internal::ValueText;

  std::string value_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
  /// Set for a value made from a SafeValue, whose text depends on the dialect.
  std::shared_ptr<const CommonExpr> per_dialect_;
};

}  // namespace vexel

#endif  // VEXEL_SQLVALUE_H

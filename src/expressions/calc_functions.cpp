// The functions over computed values. Each keeps its forms for the three
// dialects side by side; unknown dialect codes take PostgreSQL's.
#include <string>
#include <utility>
#include <vector>

#include "vexel/calc.h"

namespace vexel {
namespace {

using Texts = std::vector<std::string>;
using tessel::DB_SQLITE;
using tessel::DB_SQLSERVER;

// A call of one operand, which needs no brackets inside the call's own.
calc call(const calc& x, calc::Render render) {
  return calc::make({{x, calc::kLowest}}, calc::kAtom, std::move(render));
}

calc named(const char* function, const calc& x) {
  return call(x, [function](tessel::DBTYPE, const Texts& t) {
    return std::string(function) + "(" + t[0] + ")";
  });
}

// The operands' texts joined by `separator`.
std::string joined(const Texts& t, const char* separator) {
  std::string out;
  for (const std::string& part : t) {
    if (!out.empty()) out += separator;
    out += part;
  }
  return out;
}

std::vector<calc::Operand> operands(std::initializer_list<calc> values, calc::Level first,
                                    calc::Level rest) {
  std::vector<calc::Operand> out;
  for (const calc& v : values) out.push_back({v, out.empty() ? first : rest});
  return out;
}

}  // namespace

calc LOWER(const calc& s) { return named("LOWER", s); }
calc UPPER(const calc& s) { return named("UPPER", s); }
calc TRIM(const calc& s) { return named("TRIM", s); }

calc LENGTH(const calc& s) {
  return call(s, [](tessel::DBTYPE db, const Texts& t) {
    return (db == DB_SQLSERVER ? "LEN(" : "LENGTH(") + t[0] + ")";
  });
}

// A negative length would be an error on two engines and count backwards on
// the third: it takes nothing instead.
calc SUBSTRING(const calc& s, long long start, long long length) {
  const std::string from = std::to_string(start);
  const std::string count = std::to_string(length < 0 ? 0 : length);
  return call(s, [from, count](tessel::DBTYPE db, const Texts& t) {
    if (db == DB_SQLITE) return "SUBSTR(" + t[0] + ", " + from + ", " + count + ")";
    if (db == DB_SQLSERVER) return "SUBSTRING(" + t[0] + ", " + from + ", " + count + ")";
    return "SUBSTRING(" + t[0] + " FROM " + from + " FOR " + count + ")";
  });
}

// SQL Server's SUBSTRING needs a length: the text's size in bytes is never
// less than what is left of it.
calc SUBSTRING(const calc& s, long long start) {
  const std::string from = std::to_string(start);
  return call(s, [from](tessel::DBTYPE db, const Texts& t) {
    if (db == DB_SQLITE) return "SUBSTR(" + t[0] + ", " + from + ")";
    if (db == DB_SQLSERVER)
      return "SUBSTRING(" + t[0] + ", " + from + ", DATALENGTH(" + t[0] + "))";
    return "SUBSTRING(" + t[0] + " FROM " + from + ")";
  });
}

calc CONCAT(std::initializer_list<calc> parts) {
  if (parts.size() == 0) return calc(SafeValue(""));
  if (parts.size() == 1) return *parts.begin();
  return calc::make(operands(parts, calc::kConcat, calc::kUnary), calc::kConcat,
                    [](tessel::DBTYPE db, const Texts& t) {
                      return joined(t, db == DB_SQLSERVER ? " + " : " || ");
                    });
}

// SQLite and SQL Server want two operands at least: one is the value itself.
calc COALESCE(std::initializer_list<calc> values) {
  if (values.size() == 0) return calc(SafeValue());
  if (values.size() == 1) return *values.begin();
  return calc::make(
      operands(values, calc::kLowest, calc::kLowest), calc::kAtom,
      [](tessel::DBTYPE, const Texts& t) { return "COALESCE(" + joined(t, ", ") + ")"; });
}

calc NULLIF(const calc& a, const calc& b) {
  return calc::make(
      {{a, calc::kLowest}, {b, calc::kLowest}}, calc::kAtom,
      [](tessel::DBTYPE, const Texts& t) { return "NULLIF(" + t[0] + ", " + t[1] + ")"; });
}

namespace {

struct CastForm {
  const char* postgres;
  const char* sqlserver;
  // SQLite's form around the operand: its date and time functions keep the
  // text forms the engine compares, where a CAST would make a number.
  const char* sqlite_open;
  const char* sqlite_close;
};

constexpr CastForm kCasts[] = {
    {"INTEGER", "INT", "CAST(", " AS INTEGER)"},
    {"BIGINT", "BIGINT", "CAST(", " AS INTEGER)"},
    {"DOUBLE PRECISION", "FLOAT", "CAST(", " AS REAL)"},
    {"TEXT", "NVARCHAR(MAX)", "CAST(", " AS TEXT)"},
    {"DATE", "DATE", "date(", ")"},
    {"TIMESTAMP", "DATETIME2", "datetime(", ")"},
    {"BOOLEAN", "BIT", "(CAST(", " AS INTEGER) <> 0)"},
};

}  // namespace

calc CAST(const calc& x, CastType type) {
  const auto index = static_cast<std::size_t>(type);
  if (index >= sizeof(kCasts) / sizeof(kCasts[0])) return x;
  const CastForm& form = kCasts[index];
  return call(x, [&form](tessel::DBTYPE db, const Texts& t) {
    if (db == DB_SQLITE) return form.sqlite_open + t[0] + form.sqlite_close;
    return "CAST(" + t[0] + " AS " + (db == DB_SQLSERVER ? form.sqlserver : form.postgres) + ")";
  });
}

namespace {

struct FieldForm {
  const char* postgres;   // EXTRACT's field
  const char* sqlite;     // strftime's format
  const char* sqlserver;  // DATEPART's part
};

constexpr FieldForm kFields[] = {
    {"YEAR", "%Y", "year"},   {"MONTH", "%m", "month"},   {"DAY", "%d", "day"},
    {"HOUR", "%H", "hour"},   {"MINUTE", "%M", "minute"}, {"SECOND", "%S", "second"},
    {"DOW", "%w", "weekday"}, {"EPOCH", "%s", "second"},
};

std::string sqlserver_field(DateField field, const std::string& d) {
  // DATEPART's weekday counts from the server's first day of the week.
  if (field == DateField::DayOfWeek)
    return "((DATEPART(weekday, " + d + ") + @@DATEFIRST - 1) % 7)";
  if (field == DateField::Epoch) return "DATEDIFF_BIG(second, '1970-01-01', " + d + ")";
  return std::string("DATEPART(") + kFields[static_cast<int>(field)].sqlserver + ", " + d + ")";
}

// EXTRACT gives fractional seconds (and epochs): they are cut to whole ones,
// as the other engines count them.
std::string postgres_field(DateField field, const std::string& d) {
  const std::string extract =
      std::string("EXTRACT(") + kFields[static_cast<int>(field)].postgres + " FROM " + d + ")";
  if (field == DateField::Epoch) return "CAST(FLOOR(" + extract + ") AS BIGINT)";
  if (field == DateField::Second) return "CAST(FLOOR(" + extract + ") AS INTEGER)";
  return "CAST(" + extract + " AS INTEGER)";
}

}  // namespace

calc DATE_FIELD(DateField field, const calc& d) {
  const auto index = static_cast<std::size_t>(field);
  if (index >= sizeof(kFields) / sizeof(kFields[0])) return d;
  return call(d, [field](tessel::DBTYPE db, const Texts& t) {
    if (db == DB_SQLITE) {
      return std::string("CAST(strftime('") + kFields[static_cast<int>(field)].sqlite + "', " +
             t[0] + ") AS INTEGER)";
    }
    if (db == DB_SQLSERVER) return sqlserver_field(field, t[0]);
    return postgres_field(field, t[0]);
  });
}

namespace {

// The interval words of each engine for YEAR .. SECOND.
constexpr const char* kPostgresUnits[] = {"year", "month", "day", "hour", "minute", "second"};
constexpr const char* kSqliteUnits[] = {"years", "months", "days", "hours", "minutes", "seconds"};

calc shifted(const calc& d, long long amount, TimeType unit, bool date) {
  if (unit < YEAR || unit > SECOND) return d;
  const int u = unit - YEAR;
  const std::string n = std::to_string(amount);
  const std::string signed_n = amount < 0 ? n : "+" + n;
  return call(d, [u, n, signed_n, date](tessel::DBTYPE db, const Texts& t) {
    if (db == DB_SQLITE) {
      return (date ? "date(" : "datetime(") + t[0] + ", '" + signed_n + " " + kSqliteUnits[u] +
             "')";
    }
    if (db == DB_SQLSERVER) {
      const std::string add = std::string("DATEADD(") + kPostgresUnits[u] + ", " + n + ", ";
      if (date) return "CAST(" + add + t[0] + ") AS DATE)";
      return add + "CAST(" + t[0] + " AS DATETIME2))";
    }
    const std::string interval = std::string(" + INTERVAL '") + n + " " + kPostgresUnits[u] + "'";
    if (date) return "CAST(CAST(" + t[0] + " AS DATE)" + interval + " AS DATE)";
    return "(CAST(" + t[0] + " AS TIMESTAMP)" + interval + ")";
  });
}

}  // namespace

calc DATE_ADD(const calc& d, long long amount, TimeType unit) {
  return shifted(d, amount, unit, true);
}

calc TIMESTAMP_ADD(const calc& t, long long amount, TimeType unit) {
  return shifted(t, amount, unit, false);
}

}  // namespace vexel

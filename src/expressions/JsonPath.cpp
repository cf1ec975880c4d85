#include "vexel/JsonPath.h"

#include "internal/Log.h"
#include "olk/StringUtil.h"
#include "vexel/SQLExpr.h"

namespace vexel {
namespace {

using Olk::Base::StringUtil::StringReplace;
using Values = std::map<tessel::DBTYPE, SQLValue>;

constexpr int kTrace = 2;
constexpr int kError = 5;

// Every dialect key, empty, in the order hosts see them inserted.
Values empty_values() {
  Values values;
  for (int code : {2, 1, 3, 4}) values.emplace(static_cast<tessel::DBTYPE>(code), SQLValue());
  return values;
}

// The text goes into the UPDATE as it stands, without quotes around it.
SQLValue verbatim(const std::string& text) { return SQLValue(SQLExpr(text)); }

// "'{a,b}'" -> "$.a.b"; false (logged) when the braces are missing or out
// of order.
bool sqlite_path(const internal::Site& site, const std::string& target_path, std::string& path) {
  const size_t open = target_path.find('{');
  const size_t close = target_path.find('}');
  if (open == std::string::npos || close == std::string::npos || close < open) {
    VEXEL_LOG_AT(site, kError, "[%s]target_path error:%s.[%s(%d)]", target_path.c_str());
    return false;
  }
  path = "$." + StringReplace(target_path.substr(open + 1, close - open - 1), ",", ".");
  VEXEL_LOG_AT(site, kTrace, "[%s]after:target_path:%s.[%s(%d)]", path.c_str());
  return true;
}

// Splits `value` at its first and last double quote and rewrites the part
// between them with `escape`, tracing each step. A value without two double
// quotes is returned as given.
template <typename Escape>
std::string rewrite_quoted(const internal::Site& site, const std::string& value, Escape escape) {
  const size_t first = value.find('"');
  const size_t last = value.rfind('"');
  if (first == std::string::npos || first == last) return value;
  const std::string pre = value.substr(0, first);
  const std::string post = value.substr(last + 1);
  std::string between = value.substr(first + 1, last - first - 1);
  VEXEL_LOG_AT(site, kTrace, "[%s]pre_value:%s.[%s(%d)]", pre.c_str());
  VEXEL_LOG_AT(site, kTrace, "[%s]post_value:%s.[%s(%d)]", post.c_str());
  VEXEL_LOG_AT(site, kTrace, "[%s]between_value:%s.[%s(%d)]", between.c_str());
  between = escape(between);
  std::string rebuilt = pre + "\"" + between + "\"" + post;
  VEXEL_LOG_AT(site, kTrace, "[%s]after_value:%s.[%s(%d)]", rebuilt.c_str());
  return rebuilt;
}

// PostgreSQL string literal inside JSON: inner double quotes get a
// backslash.
std::string postgres_value(const internal::Site& site, const std::string& new_value) {
  return rewrite_quoted(site, new_value, [&site](const std::string& between) {
    std::string escaped = StringReplace(between, "\"", "\\\"");
    VEXEL_LOG_AT(site, kTrace, "[%s]after between_value:%s.[%s(%d)]", escaped.c_str());
    return escaped;
  });
}

// SQLite takes the text inside the single quotes; inner double quotes are
// doubled and a doubled single quote becomes one.
std::string sqlite_value(const internal::Site& site, const std::string& new_value) {
  const size_t first = new_value.find('\'');
  const size_t last = new_value.rfind('\'');
  std::string value;
  if (first != std::string::npos && first != last) {
    value = new_value.substr(first + 1, last - first - 1);
    VEXEL_LOG_AT(site, kTrace, "[%s]after:after_value:%s.[%s(%d)]", value.c_str());
  } else {
    value = new_value;
    VEXEL_LOG_AT(site, kError, "[%s]no no_single_quote_value:%s.[%s(%d)]", value.c_str());
  }
  return rewrite_quoted(site, value, [&site](const std::string& between) {
    std::string escaped = StringReplace(between, "\"", "\"\"");
    VEXEL_LOG_AT(site, kTrace, "[%s]after between_value:%s.[%s(%d)]", escaped.c_str());
    return StringReplace(escaped, "''", "'");
  });
}

}  // namespace

Values JSON_KEY_DELETE(const col& c, const std::string& target_path) {
  const internal::Site site = VEXEL_SITE;
  VEXEL_LOG_AT(site, kTrace, "[%s]before:target_path:%s.[%s(%d)]", target_path.c_str());
  Values values = empty_values();
  const std::string column = c.col_name();
  values[tessel::DB_POSTGRESQL] = verbatim(column + "::jsonb #- " + target_path);
  std::string path;
  if (sqlite_path(site, target_path, path)) {
    // The blank after the parenthesis is part of the text hosts match.
    values[tessel::DB_SQLITE] = verbatim("json_remove( " + column + ",'" + path + "')");
  }
  return values;
}

// The value is taken by copy as the interface declares it.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
Values JSON_SET(const col& c, const std::string& target_path, std::string new_value) {
  const internal::Site site = VEXEL_SITE;
  VEXEL_LOG_AT(site, kTrace, "[%s]before:target_path:%s.new_value:%s[%s(%d)]", target_path.c_str(),
               new_value.c_str());
  Values values = empty_values();
  const std::string column = c.col_name();
  // The blanks after "jsonb_set(" and "json_set(" are part of the texts.
  values[tessel::DB_POSTGRESQL] = verbatim("jsonb_set( " + column + "," + target_path + "," +
                                           postgres_value(site, new_value) + ")");
  std::string path;
  if (!sqlite_path(site, target_path, path)) return values;
  values[tessel::DB_SQLITE] =
      verbatim("json_set( " + column + ",'" + path + "'," + sqlite_value(site, new_value) + ")");
  return values;
}

}  // namespace vexel

#include "internal/Quote.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace vexel {
namespace internal {
namespace {

// PostgreSQL's keywords that are not unreserved, which quote_ident quotes,
// and the ones later server versions add (quoting those is harmless).
// Sorted for binary search.
// clang-format off
constexpr const char* kPgKeywords[] = {
    "all", "analyse", "analyze", "and", "any", "array", "as", "asc", "asymmetric", "authorization",
    "between", "bigint", "binary", "bit", "boolean", "both", "case", "cast", "char", "character",
    "check", "coalesce", "collate", "collation", "column", "concurrently", "constraint", "create",
    "cross", "current_catalog", "current_date", "current_role", "current_schema", "current_time",
    "current_timestamp", "current_user", "dec", "decimal", "default", "deferrable", "desc",
    "distinct", "do", "else", "end", "except", "exists", "extract", "false", "fetch", "float",
    "for", "foreign", "freeze", "from", "full", "grant", "greatest", "group", "grouping", "having",
    "ilike", "in", "initially", "inner", "inout", "int", "integer", "intersect", "interval", "into",
    "is", "isnull", "join", "json", "json_array", "json_arrayagg", "json_exists", "json_object",
    "json_objectagg", "json_query", "json_scalar", "json_serialize", "json_table", "json_value",
    "lateral", "leading", "least", "left", "like", "limit", "localtime", "localtimestamp",
    "merge_action", "national", "natural", "nchar", "none", "normalize", "not", "notnull", "null",
    "nullif", "numeric", "offset", "on", "only", "or", "order", "out", "outer", "overlaps",
    "overlay", "placing", "position", "precision", "primary", "real", "references", "returning",
    "right", "row", "select", "session_user", "setof", "similar", "smallint", "some", "substring",
    "symmetric", "system_user", "table", "tablesample", "then", "time", "timestamp", "to",
    "trailing", "treat", "trim", "true", "union", "unique", "user", "using", "values", "varchar",
    "variadic", "verbose", "when", "where", "window", "with", "xmlattributes", "xmlconcat",
    "xmlelement", "xmlexists", "xmlforest", "xmlnamespaces", "xmlparse", "xmlpi", "xmlroot",
    "xmlserialize", "xmltable",
};
// clang-format on

// SQLite's keywords, lower case, sorted.
// clang-format off
constexpr const char* kSqliteKeywords[] = {
    "abort", "action", "add", "after", "all", "alter", "always", "analyze", "and", "as", "asc",
    "attach", "autoincrement", "before", "begin", "between", "by", "cascade", "case", "cast",
    "check", "collate", "column", "commit", "conflict", "constraint", "create", "cross", "current",
    "current_date", "current_time", "current_timestamp", "database", "default", "deferrable",
    "deferred", "delete", "desc", "detach", "distinct", "do", "drop", "each", "else", "end",
    "escape", "except", "exclude", "exclusive", "exists", "explain", "fail", "filter", "first",
    "following", "for", "foreign", "from", "full", "generated", "glob", "group", "groups", "having",
    "if", "ignore", "immediate", "in", "index", "indexed", "initially", "inner", "insert",
    "instead", "intersect", "into", "is", "isnull", "join", "key", "last", "left", "like", "limit",
    "match", "materialized", "natural", "no", "not", "nothing", "notnull", "null", "nulls", "of",
    "offset", "on", "or", "order", "others", "outer", "over", "partition", "plan", "pragma",
    "preceding", "primary", "query", "raise", "range", "recursive", "references", "regexp",
    "reindex", "release", "rename", "replace", "restrict", "returning", "right", "rollback", "row",
    "rows", "savepoint", "select", "set", "table", "temp", "temporary", "then", "ties", "to",
    "transaction", "trigger", "unbounded", "union", "unique", "update", "using", "vacuum", "values",
    "view", "virtual", "when", "where", "window", "with", "without",
};
// clang-format on

template <std::size_t N>
bool is_keyword(const char* const (&words)[N], const std::string& lower) {
  return std::binary_search(std::begin(words), std::end(words), lower.c_str(),
                            [](const char* a, const char* b) { return std::strcmp(a, b) < 0; });
}

bool is_lower(char c) { return c >= 'a' && c <= 'z'; }
bool is_upper(char c) { return c >= 'A' && c <= 'Z'; }
bool is_digit(char c) { return c >= '0' && c <= '9'; }

std::string doubled(const std::string& text, char quote) {
  std::string out;
  out.reserve(text.size() + 2);
  for (const char c : text) {
    out += c;
    if (c == quote) out += quote;
  }
  return out;
}

std::string double_quoted(const std::string& name) { return '"' + doubled(name, '"') + '"'; }

}  // namespace

std::string pg_ident(const std::string& name) {
  if (name.empty()) return name;
  bool plain = is_lower(name[0]) || name[0] == '_';
  for (std::size_t i = 1; plain && i < name.size(); ++i) {
    plain = is_lower(name[i]) || is_digit(name[i]) || name[i] == '_';
  }
  return plain && !is_keyword(kPgKeywords, name) ? name : double_quoted(name);
}

namespace {

// The name in lower case when it is a plain identifier of any case, else
// empty.
std::string plain_lower(const std::string& name) {
  std::string lower = name;
  bool plain = !name.empty() && !is_digit(name[0]);
  for (char& c : lower) {
    plain = plain && (is_lower(c) || is_upper(c) || is_digit(c) || c == '_');
    if (is_upper(c)) c = static_cast<char>(c - 'A' + 'a');
  }
  return plain ? lower : std::string();
}

}  // namespace

std::string sqlite_ident(const std::string& name) {
  if (name.empty()) return name;
  const std::string lower = plain_lower(name);
  return !lower.empty() && !is_keyword(kSqliteKeywords, lower) ? name : double_quoted(name);
}

// SQL Server's reserved words are mostly the other two dialects' keywords;
// a plain name that is a keyword in either is bracketed to be safe.
std::string sqlserver_ident(const std::string& name) {
  if (name.empty()) return name;
  const std::string lower = plain_lower(name);
  const bool bare = !lower.empty() && !is_keyword(kSqliteKeywords, lower) &&
                    !is_keyword(kPgKeywords, lower) && lower != "top" && lower != "identity" &&
                    lower != "percent" && lower != "tran" && lower != "file";
  return bare ? name : '[' + doubled(name, ']') + ']';
}

std::string pg_literal(const std::string& text) {
  const std::string body = literal_body(text);
  if (text.find('\\') == std::string::npos) return "'" + body + "'";
  return "E'" + doubled(body, '\\') + "'";
}

std::string literal_body(const std::string& text) { return doubled(text, '\''); }

}  // namespace internal
}  // namespace vexel

#include "postgres/PGSystemInfo.h"

#include <algorithm>
#include <climits>
#include <map>
#include <utility>

#include "internal/Quote.h"
#include "olk/StringUtil.h"

namespace vexel {
namespace {

using internal::literal_body;
using internal::pg_ident;
using Olk::Base::StringUtil::str_fmt;

// Hosts and their tooling match the catalogue texts exactly: keep them
// letter for letter.
constexpr const char* kTableExists =
    "SELECT tablename FROM pg_catalog.pg_tables WHERE schemaname = '%s' AND tablename = '%s';";
constexpr const char* kTablesOfSchema =
    "SELECT tablename FROM pg_catalog.pg_tables WHERE schemaname = '%s';";
constexpr const char* kChildTables =
    "select c.relname as the_tablename from pg_class c join pg_inherits i on i.inhrelid = c.oid "
    "join pg_class d on d.oid = i.inhparent JOIN pg_namespace pn ON pn.oid = d.relnamespace "
    "where pn.nspname = '%s' AND d.relname = '%s';";
constexpr const char* kAllSchemas = "SELECT nspname FROM pg_namespace;";
// Run as it stands, not through str_fmt: its "%" are LIKE wildcards.
constexpr const char* kUserSchemas =
    "SELECT nspname FROM pg_namespace WHERE nspname NOT ILIKE 'pg_%' AND nspname NOT ILIKE "
    "'sql_%' AND nspname NOT ILIKE 'information_%';";
// The first table (by name) and column using each sequence of a nextval
// default in the given schemas. The runs of blanks are part of the text
// hosts recognise in their statement logs: keep them. The first "%s" takes
// "%", making the condition ILIKE 'nextval%'.
constexpr const char* kSequenceColumns =
    "WITH seq_tab AS                                                                 "
    "                                                                               ("
    "SELECT            (t_4.nspname || '.' || t_2.relname) AS tab_name, t_3.attname A"
    "S col_name,                                                                     "
    "                                  SPLIT_PART(pg_get_expr(t_1.adbin, 'pg_catalog."
    "pg_class'::regclass), '''', 2) AS seq_name,                                     "
    "                                              ROW_NUMBER() OVER(PARTITION BY SPL"
    "IT_PART(pg_get_expr(t_1.adbin, 'pg_catalog.pg_class'::regclass), '''', 2) ORDER "
    "BY t_2.relname ASC) AS row_no                              FROM                 "
    "                                                                                "
    "                                                                        pg_attrd"
    "ef t_1                                                                          "
    "                                                                                "
    "     JOIN pg_class t_2 ON t_1.adrelid = t_2.oid                                 "
    "                                                                                "
    "                  JOIN pg_attribute t_3 ON t_3.attrelid = t_2.oid AND t_1.adnum "
    "= t_3.attnum                                                                    "
    "                               JOIN pg_namespace t_4 ON t_4.oid = t_2.relnamespa"
    "ce                                                                              "
    "                                            WHERE                               "
    "                                                                                "
    "                                                         pg_get_expr(t_1.adbin, "
    "'pg_catalog.pg_class'::regclass) ILIKE 'nextval%s'                              "
    "                                                                       AND t_2.r"
    "elkind = 'r' AND t_2.relnamespace IN(SELECT oid FROM pg_namespace WHERE nspname "
    "IN(%s)) ORDER BY tab_name ASC)            SELECT tab_name, col_name, seq_name FR"
    "OM seq_tab WHERE row_no = 1; ";
constexpr const char* kColumnMax = "SELECT max(%s) FROM %s;";
constexpr const char* kSetSequence = "SELECT setval('%s', %d, false);";

// "'a' ,'b'": each name a literal, joined by " ,".
std::string quoted_list(const std::vector<std::string>& names) {
  std::string list;
  for (const std::string& name : names) list += " ," + internal::pg_literal(name);
  return list.size() > 2 ? list.substr(2) : std::string();
}

}  // namespace

bool CPGSystemInfo::IsExistsInDB(const std::string& schema, const std::string& table,
                                 bool& exists) {
  if (!has_conn(VEXEL_SITE)) return false;
  return read_exists(
      VEXEL_SITE, str_fmt(kTableExists, literal_body(schema).c_str(), literal_body(table).c_str()),
      "tablename", exists);
}

bool CPGSystemInfo::GetAllTablesBySchema(const std::string& schema,
                                         std::vector<std::string>& tables) {
  if (!has_conn(VEXEL_SITE)) return false;
  VEXEL_LOG(2, "[%s]schema_name:%s.[%s(%d)]", schema.c_str());
  return read_column(VEXEL_SITE, str_fmt(kTablesOfSchema, literal_body(schema).c_str()),
                     "tablename", tables);
}

bool CPGSystemInfo::GetAllChiledTableByParentTable(const std::string& parent,
                                                   std::vector<std::string>& children) {
  if (!has_conn(VEXEL_SITE)) return false;
  const std::string::size_type dot = parent.find('.');
  // Exactly "schema.table": one dot with a name on each side.
  if (dot == std::string::npos || dot == 0 || dot + 1 == parent.size() ||
      parent.find('.', dot + 1) != std::string::npos) {
    VEXEL_LOG(5, "[%s]parent_table_name[%s] error.[%s(%d)]", parent.c_str());
    return false;
  }
  const std::string schema = parent.substr(0, dot);
  const std::string table = parent.substr(dot + 1);
  return read_column(
      VEXEL_SITE, str_fmt(kChildTables, literal_body(schema).c_str(), literal_body(table).c_str()),
      "the_tablename", children);
}

bool CPGSystemInfo::GetAllSchemaName(std::vector<std::string>& schemas) {
  if (!has_conn(VEXEL_SITE)) return false;
  return read_column(VEXEL_SITE, kAllSchemas, "nspname", schemas);
}

bool CPGSystemInfo::SequenceReset() {
  if (!has_conn(VEXEL_SITE)) return false;
  std::vector<std::string> schemas;
  if (!read_column(VEXEL_SITE, kUserSchemas, "nspname", schemas)) return false;
  const std::string sql = str_fmt(kSequenceColumns, "%", quoted_list(schemas).c_str());
  if (!query(VEXEL_SITE, sql)) return false;
  // All rows are read before the first setval replaces the result.
  std::map<std::pair<std::string, std::string>, std::string> seq_of_column;
  for (; !db_conn_->IsEOF(); db_conn_->MoveNext()) {
    seq_of_column[{db_conn_->GetFieldString("tab_name"), db_conn_->GetFieldString("col_name")}] =
        db_conn_->GetFieldString("seq_name");
  }
  // Names read from the catalogue go into the next statements quoted
  // where they need it, so that any name works and none can run as SQL.
  for (const auto& entry : seq_of_column) {
    const std::string table = table_reference(entry.first.first, schemas);
    if (!SetMapSeqValue(table, pg_ident(entry.first.second), entry.second)) return false;
  }
  return true;
}

// The sequence query joins schema and table with a dot, which either name
// may hold as well: the schema is a listed one the text starts with, and
// where several fit, the longest whose table exists. Ordinary names have
// exactly one.
std::string CPGSystemInfo::table_reference(const std::string& tab_name,
                                           const std::vector<std::string>& schemas) {
  std::vector<std::string> fits;
  for (const std::string& schema : schemas) {
    if (tab_name.size() > schema.size() && tab_name.compare(0, schema.size(), schema) == 0 &&
        tab_name[schema.size()] == '.') {
      fits.push_back(schema);
    }
  }
  std::sort(fits.begin(), fits.end(),
            [](const std::string& a, const std::string& b) { return a.size() > b.size(); });
  for (const std::string& schema : fits) {
    const std::string table = tab_name.substr(schema.size() + 1);
    bool exists = fits.size() == 1;
    if (!exists) {
      const std::string sql =
          str_fmt(kTableExists, literal_body(schema).c_str(), literal_body(table).c_str());
      read_exists(VEXEL_SITE, sql, "tablename", exists);
    }
    if (exists) return pg_ident(schema) + "." + pg_ident(table);
  }
  const std::string::size_type dot = tab_name.find('.');
  if (dot == std::string::npos) return pg_ident(tab_name);
  return pg_ident(tab_name.substr(0, dot)) + "." + pg_ident(tab_name.substr(dot + 1));
}

bool CPGSystemInfo::SetMapSeqValue(const std::string& table, const std::string& column,
                                   const std::string& seq_name) {
  bool done = query(VEXEL_SITE, str_fmt(kColumnMax, column.c_str(), table.c_str()));
  if (done) {
    // The connection reads NULL as "": an empty column restarts at 0.
    int value = 0;
    if (!db_conn_->IsEOF() && !db_conn_->GetFieldString("max").empty()) {
      const int max = db_conn_->GetFieldInt(0);
      done = max < INT_MAX;
      value = done ? max + 1 : 0;
    }
    done = done && query(VEXEL_SITE, str_fmt(kSetSequence, literal_body(seq_name).c_str(), value));
  }
  if (done) {
    VEXEL_LOG(3, "[%s]SET SEQUENCE SUCCESS, SEQ_NAME: %s.[%s(%d)]", seq_name.c_str());
  } else {
    VEXEL_LOG(5, "[%s]SET SEQUENCE Failed, SEQ_NAME: %s.[%s(%d)]", seq_name.c_str());
  }
  return done;
}

}  // namespace vexel

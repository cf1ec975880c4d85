// JSON path functions: one ready text per dialect, and the exact trace and
// error lines hosts read to follow the path and value rewriting.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "support/CaptureLog.h"
#include "vexel/vexel.h"

namespace {

using Entries = std::map<tessel::DBTYPE, vexel::SQLValue>;
using Lines = std::vector<std::string>;

// Entry texts for 1, 2, 3 and 4, after checking that these are the only keys.
std::vector<std::string> texts(const Entries& entries) {
  std::vector<std::string> out;
  for (const auto& entry : entries) out.push_back(entry.second.GetValue());
  EXPECT_EQ(entries.size(), 4u);
  for (int code : {1, 2, 3, 4}) {
    EXPECT_EQ(entries.count(static_cast<tessel::DBTYPE>(code)), 1u) << code;
  }
  return out;
}

const vexel::col kDoc("doc");

TEST(JsonKeyDelete, EntriesAndTrace) {
  vexel_test::CaptureLog log;
  const Entries entries = vexel::JSON_KEY_DELETE(kDoc, "'{a,b}'");
  EXPECT_EQ(texts(entries), (std::vector<std::string>{"json_remove( doc,'$.a.b')",
                                                      "doc::jsonb #- '{a,b}'", "", ""}));
  EXPECT_EQ(log.texts(), (Lines{
                             "2|[vexel::JSON_KEY_DELETE]before:target_path:'{a,b}'.[",
                             "2|[vexel::JSON_KEY_DELETE]after:target_path:$.a.b.[",
                         }));
}

TEST(JsonKeyDelete, PathWithoutBraces) {
  vexel_test::CaptureLog log;
  const Entries entries = vexel::JSON_KEY_DELETE(kDoc, "a.b");
  EXPECT_EQ(texts(entries), (std::vector<std::string>{"", "doc::jsonb #- a.b", "", ""}));
  EXPECT_EQ(log.texts(), (Lines{
                             "2|[vexel::JSON_KEY_DELETE]before:target_path:a.b.[",
                             "5|[vexel::JSON_KEY_DELETE]target_path error:a.b.[",
                         }));
}

// The inner double quote and the doubled single quote show when each rewrite
// happens: the SQLite "after between_value" line still has the doubled quote.
TEST(JsonSet, StringValueTrace) {
  vexel_test::CaptureLog log;
  const Entries entries = vexel::JSON_SET(kDoc, "'{a}'", "'\"x\"y''z\"'");
  EXPECT_EQ(texts(entries),
            (std::vector<std::string>{"json_set( doc,'$.a',\"x\"\"y'z\")",
                                      "jsonb_set( doc,'{a}','\"x\\\"y''z\"')", "", ""}));
  const std::string f = "[vexel::JSON_SET]";
  EXPECT_EQ(log.texts(), (Lines{
                             "2|" + f + "before:target_path:'{a}'.new_value:'\"x\"y''z\"'[",
                             // PostgreSQL value
                             "2|" + f + "pre_value:'.[",
                             "2|" + f + "post_value:'.[",
                             "2|" + f + "between_value:x\"y''z.[",
                             "2|" + f + "after between_value:x\\\"y''z.[",
                             "2|" + f + "after_value:'\"x\\\"y''z\"'.[",
                             // SQLite path and value
                             "2|" + f + "after:target_path:$.a.[",
                             "2|" + f + "after:after_value:\"x\"y''z\".[",
                             "2|" + f + "pre_value:.[",
                             "2|" + f + "post_value:.[",
                             "2|" + f + "between_value:x\"y''z.[",
                             "2|" + f + "after between_value:x\"\"y''z.[",
                             "2|" + f + "after_value:\"x\"\"y'z\".[",
                         }));
}

TEST(JsonSet, ValueWithoutSingleQuotes) {
  vexel_test::CaptureLog log;
  const Entries entries = vexel::JSON_SET(kDoc, "'{a,b}'", "1");
  EXPECT_EQ(texts(entries), (std::vector<std::string>{"json_set( doc,'$.a.b',1)",
                                                      "jsonb_set( doc,'{a,b}',1)", "", ""}));
  EXPECT_EQ(log.texts(), (Lines{
                             "2|[vexel::JSON_SET]before:target_path:'{a,b}'.new_value:1[",
                             "2|[vexel::JSON_SET]after:target_path:$.a.b.[",
                             "5|[vexel::JSON_SET]no no_single_quote_value:1.[",
                         }));
}

TEST(JsonSet, PathWithoutBracesStopsBeforeSqlite) {
  vexel_test::CaptureLog log;
  const Entries entries = vexel::JSON_SET(kDoc, "a", "'1'");
  EXPECT_EQ(texts(entries), (std::vector<std::string>{"", "jsonb_set( doc,a,'1')", "", ""}));
  EXPECT_EQ(log.texts(), (Lines{
                             "2|[vexel::JSON_SET]before:target_path:a.new_value:'1'[",
                             "5|[vexel::JSON_SET]target_path error:a.[",
                         }));
}

// Inner double quotes: a backslash for PostgreSQL, doubled for SQLite; a
// doubled single quote becomes one in the SQLite text only.
TEST(JsonSet, Escaping) {
  const struct {
    const char* name;
    const char* path;
    const char* value;
    const char* sqlite;
    const char* postgres;
  } cases[] = {
      {"inner quotes", "'{a}'", "'\"say \"hi\" it''s\"'",
       "json_set( doc,'$.a',\"say \"\"hi\"\" it's\")",
       "jsonb_set( doc,'{a}','\"say \\\"hi\\\" it''s\"')"},
      {"one double quote is left alone", "'{a}'", "'\"x'", "json_set( doc,'$.a',\"x)",
       "jsonb_set( doc,'{a}','\"x')"},
      {"one single quote counts as none", "'{a}'", "x'", "json_set( doc,'$.a',x')",
       "jsonb_set( doc,'{a}',x')"},
      {"text around the quotes is kept", "'{a}'", "'[\"a\",\"b\"]'",
       "json_set( doc,'$.a',[\"a\"\",\"\"b\"])", "jsonb_set( doc,'{a}','[\"a\\\",\\\"b\"]')"},
      {"closing brace first", "'}a{'", "'1'", "", "jsonb_set( doc,'}a{','1')"},
      {"empty path", "'{}'", "'1'", "json_set( doc,'$.',1)", "jsonb_set( doc,'{}','1')"},
  };
  for (const auto& k : cases) {
    vexel_test::CaptureLog quiet;
    const Entries entries = vexel::JSON_SET(kDoc, k.path, k.value);
    EXPECT_EQ(entries.at(tessel::DB_SQLITE).GetValue(), k.sqlite) << k.name;
    EXPECT_EQ(entries.at(tessel::DB_POSTGRESQL).GetValue(), k.postgres) << k.name;
  }
}

// The column renders in its own dialect when the function is called.
TEST(JsonSet, QualifiedColumn) {
  vexel_test::CaptureLog quiet;
  const vexel::col c = vexel::sch("s").tab("t").col("doc");
  EXPECT_EQ(vexel::JSON_KEY_DELETE(c, "'{a}'").at(tessel::DB_SQLITE).GetValue(),
            "json_remove( s.t.doc,'$.a')");
}

}  // namespace

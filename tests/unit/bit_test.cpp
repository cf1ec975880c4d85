// Bit-string operations: PostgreSQL operators (also for SQL Server and
// unknown codes) and the host's str_bit_* functions on SQLite.
#include <gtest/gtest.h>

#include "support/Dialects.h"
#include "vexel/vexel.h"

namespace {

using vexel_test::db;
using vexel_test::fake;
using vexel_test::kDialects;
using vexel_test::PerDialect;

PerDialect postgres_elsewhere(const std::string& sqlite, const std::string& postgres) {
  return {sqlite, postgres, postgres, postgres};
}

TEST(StrBit, Operations) {
  const vexel::col flags = vexel::tab("t").col("flags");
  const struct {
    const char* name;
    vexel::Ptr_CommonExpr node;
    PerDialect expected;
  } cases[] = {
      {"and", flags.str_bit_and("0101"),
       postgres_elsewhere("str_bit_and(t.flags,'0101')", "t.flags & B'0101'")},
      {"or", flags.str_bit_or("1"),
       postgres_elsewhere("str_bit_or(t.flags,'1')", "t.flags | B'1'")},
      {"xor", flags.str_bit_xor("10"),
       postgres_elsewhere("str_bit_xor(t.flags,'10')", "t.flags # B'10'")},
      {"not", flags.str_bit_not(), postgres_elsewhere("str_bit_not(t.flags)", "~t.flags")},
      {"shift left", flags.str_bit_shift_left(3),
       postgres_elsewhere("str_bit_shift_left(t.flags,3)", "t.flags << 3")},
      {"shift right", flags.str_bit_shift_right(2),
       postgres_elsewhere("str_bit_shift_right(t.flags,2)", "t.flags >> 2")},
      {"negative shift", flags.str_bit_shift_left(-1),
       postgres_elsewhere("str_bit_shift_left(t.flags,-1)", "t.flags << -1")},
      // The bits are inserted unchecked.
      {"bits unchecked", flags.str_bit_and("x'y"),
       postgres_elsewhere("str_bit_and(t.flags,'x'y')", "t.flags & B'x'y'")},
  };
  for (const auto& k : cases) {
    for (int code : kDialects) {
      EXPECT_EQ(k.node.GetExpr(db(code)), k.expected.at(code)) << k.name << " @" << code;
    }
  }
}

TEST(StrBit, InsideAStatement) {
  const vexel::tab t("t");
  const PerDialect expected = postgres_elsewhere("SELECT id FROM t WHERE str_bit_not(t.flags)",
                                                 "SELECT id FROM t WHERE ~t.flags");
  for (int code : kDialects) {
    vexel::QueryBuilder q(fake(code));
    q.SELECT({vexel::col("id")}).FROM(t).WHERE(t.col("flags").str_bit_not());
    EXPECT_EQ(q.tosql(), expected.at(code)) << code;
  }
}

}  // namespace

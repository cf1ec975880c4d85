#include <gtest/gtest.h>

#include "support/CaptureLog.h"
#include "support/FakeConnect.h"
#include "vexel/vexel.h"

TEST(Smoke, Renders) {
  auto conn = std::make_shared<vexel_test::FakeConnect>(2);
  vexel::QueryBuilder q(conn);
  vexel::tab t = vexel::sch("s").tab("t");
  q.SELECT({t.col("a"), t.col("b")}).FROM(t);
  EXPECT_EQ(q.tosql(), "SELECT s.t.a , s.t.b FROM s.t");
  vexel_test::CaptureLog log;
  conn->FailOn("ExecuteQuery");
  EXPECT_FALSE(q.Execute());
  ASSERT_EQ(log.lines().size(), 1u);
  EXPECT_EQ(log.texts()[0],
            "5|[vexel::PGQuery::Execute]ExecuteQuery failed "
            "errorcode:42.error_info:boom,sql:SELECT s.t.a , s.t.b FROM s.t;.[");
}

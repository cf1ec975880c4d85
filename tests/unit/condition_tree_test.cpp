// Combining conditions: grouping, sharing of nodes, and the texts of empty
// holders that hosts rely on.
#include <gtest/gtest.h>

#include "support/Dialects.h"
#include "vexel/vexel.h"

namespace {

using vexel_test::db;
using vexel_test::kDialects;

vexel::Ptr_CommonExpr cond(const char* text) {
  return vexel::Ptr_CommonExpr(std::make_shared<vexel::SQLExpr>(text));
}

// A node whose text names the dialect it was asked for, to see the dialect
// travel down the tree.
class DialectNode : public vexel::CommonExpr {
 public:
  std::string GetExpr(const tessel::DBTYPE& d) const override {
    return "d" + std::to_string(static_cast<int>(d));
  }
  void set_table_name(const std::string& t) override { table_ = t; }
  std::string table_;
};

TEST(ConditionTree, Combinations) {
  const vexel::Ptr_CommonExpr a = cond("a = 1"), b = cond("b = 2"), c = cond("c = 3");
  const struct {
    const char* name;
    vexel::Ptr_CommonExpr tree;
    const char* want;
  } cases[] = {
      {"single predicate is bare", a, "a = 1"},
      {"AND", a.AND(b), "(a = 1 AND b = 2)"},
      {"OR", a.OR(b), "(a = 1 OR b = 2)"},
      {"nested", a.AND(b).OR(c), "((a = 1 AND b = 2) OR c = 3)"},
      {"flat connectors", vexel::Ptr_CommonExpr(a).AndCon(b).OrCon(c),
       "(a = 1 AND b = 2 OR c = 3)"},
      {"operators", (vexel::Ptr_CommonExpr(a) && b) | c, "(a = 1 AND b = 2 OR c = 3)"},
      {"AND of a chain", vexel::Ptr_CommonExpr(a).AndCon(b).AND(c),
       "((a = 1 AND b = 2) AND c = 3)"},
      {"empty holder", vexel::Ptr_CommonExpr(), ""},
      {"empty holder with pairs", vexel::Ptr_CommonExpr().AndCon(a), "()"},
      {"AND onto an empty holder", vexel::Ptr_CommonExpr().AND(a), "( AND a = 1)"},
      {"null node", vexel::Ptr_CommonExpr(nullptr), ""},
  };
  for (const auto& k : cases) {
    for (int code : kDialects) EXPECT_EQ(k.tree.GetExpr(db(code)), k.want) << k.name;
  }
}

TEST(ConditionTree, OperandsStayUnchanged) {
  vexel::Ptr_CommonExpr a = cond("a = 1"), b = cond("b = 2");
  vexel::Ptr_CommonExpr both = a.AND(b);
  EXPECT_EQ(a.GetExpr(tessel::DB_POSTGRESQL), "a = 1");
  EXPECT_EQ(b.GetExpr(tessel::DB_POSTGRESQL), "b = 2");
  a.AndCon(b);
  EXPECT_EQ(a.GetExpr(tessel::DB_POSTGRESQL), "(a = 1 AND b = 2)");
  EXPECT_EQ(b.GetExpr(tessel::DB_POSTGRESQL), "b = 2");
  EXPECT_EQ(both.GetExpr(tessel::DB_POSTGRESQL), "(a = 1 AND b = 2)");
}

TEST(ConditionTree, SnapshotsShareNodesNotHolders) {
  vexel::Ptr_CommonExpr a = cond("a = 1");
  std::shared_ptr<vexel::CommonExpr> before = a.get_ptr();
  vexel::Ptr_CommonExpr copy = a;
  a.AndCon(cond("b = 2"));
  EXPECT_EQ(before->GetExpr(tessel::DB_SQLITE), "a = 1");
  EXPECT_EQ(copy.GetExpr(tessel::DB_SQLITE), "a = 1");
  EXPECT_NE(a.get_ptr(), nullptr);
}

TEST(ConditionTree, DialectReachesEveryNode) {
  auto node = std::make_shared<DialectNode>();
  vexel::Ptr_CommonExpr tree(node);
  tree.AndCon(vexel::Ptr_CommonExpr(node));
  vexel::Ptr_CommonExpr both = tree.OR(vexel::Ptr_CommonExpr(node));
  for (int code : kDialects) {
    const std::string d = "d" + std::to_string(code);
    EXPECT_EQ(both.GetExpr(db(code)), "((" + d + " AND " + d + ") OR " + d + ")");
  }
  tree.set_table_name("t2");
  EXPECT_EQ(node->table_, "t2");
}

TEST(ConditionTree, TextConditions) {
  EXPECT_EQ((vexel::expr("a=1") | vexel::expr("b=2")).GetExpr(), "(a=1 OR b=2)");
  EXPECT_EQ((vexel::expr("a=1") && vexel::expr("b=2")).GetExpr(), "(a=1 AND b=2)");
  EXPECT_EQ(vexel::expr("a=1").GetExpr(), "a=1");
  vexel::expr e("a=1");
  e | vexel::expr("b=2") | vexel::expr("c=3");
  EXPECT_EQ(e.GetExpr(), "(a=1 OR b=2 OR c=3)");
  EXPECT_EQ(e.GetValue(), "a=1 OR b=2 OR c=3");
}

}  // namespace

namespace {

// A filter loop that nests instead of chaining (`w = w.AND(x)`) must render
// and be destroyed without running out of stack.
TEST(ConditionTree, DeepNestingIsSafe) {
  const int depth = 200000;
  vexel::Ptr_CommonExpr x = cond("x");
  vexel::Ptr_CommonExpr w = x;
  for (int i = 0; i < depth; ++i) w = (i % 2 == 0) ? w.AND(x) : w.OR(x);
  const std::string text = w.GetExpr(tessel::DB_POSTGRESQL);
  // Each level adds "(", " AND x" or " OR x", and ")".
  EXPECT_EQ(text.size(), static_cast<size_t>(depth / 2) * (8 + 7) + 1);
  EXPECT_EQ(text.substr(text.size() - 13), " AND x) OR x)");
  w = vexel::Ptr_CommonExpr();
  EXPECT_EQ(x.GetExpr(tessel::DB_SQLITE), "x");
}

}  // namespace

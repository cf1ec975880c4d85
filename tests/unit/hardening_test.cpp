// Deep trees on small stacks, numbers under a decimal-comma locale, WithBuilder
// copies, the MERGE exception, empty UPDATE/DELETE conditions, a racing sink.
#include <gtest/gtest.h>
#include <pthread.h>

#include <atomic>
#include <clocale>
#include <functional>
#include <thread>

#include "olk/Log.h"
#include "olk/LogSink.h"
#include "olk/StringUtil.h"
#include "support/CaptureLog.h"
#include "support/Dialects.h"
#include "vexel/vexel.h"

namespace {

using vexel_test::CaptureLog;
using vexel_test::db;
using vexel_test::fake;
using vexel_test::PerDialect;
using Node = std::shared_ptr<vexel::CommonExpr>;

void on_small_stack(std::function<void()> work) {
  pthread_attr_t attr;
  pthread_attr_init(&attr);
  ASSERT_EQ(pthread_attr_setstacksize(&attr, 256 * 1024), 0);
  pthread_t thread;
  auto run = [](void* arg) -> void* {
    (*static_cast<std::function<void()>*>(arg))();
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attr, run, &work), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attr);
}

// Level i wraps the tree below in open[i % 2] ... close[i % 2]; the leaf
// renders per dialect, so the dialect must reach the bottom.
struct Shape {
  std::function<Node(const Node&, int level)> wrap;
  const char* open[2];
  const char* close[2];
};

const vexel::Ptr_CommonExpr kX(std::make_shared<vexel::SQLExpr>("x"));
const Node kOne = std::make_shared<vexel::SQLValue>(1);

const Shape kShapes[] = {
    {[](const Node& n, int) { return std::make_shared<vexel::CASE>(vexel::CASE().ELSE(n)); },
     {"CASE  ELSE ", "CASE  ELSE "},
     {" END", " END"}},
    {[](const Node& n, int level) -> Node {
       if (level % 2 == 1) return std::make_shared<vexel::CASE>(vexel::CASE().WHEN(n).THEN(kOne));
       auto holder = std::make_shared<vexel::Ptr_CommonExpr>(n);
       holder->AndCon(kX);
       return holder;
     },
     {"(", "CASE  WHEN "},
     {" AND x)", " THEN 1 END"}},
};

TEST(Hardening, DeepTreesRenderAndAreDestroyedOnAnyStack) {
  const int depth = 1000000;
  const PerDialect leaf{"DATETIME('now')", "now() at time zone 'UTC'", "", ""};
  for (const Shape& shape : kShapes) {
    const auto build = [&] {
      Node n = std::make_shared<vexel::TimeExpr>(vexel::NOW(0));
      for (int level = 0; level < depth; ++level) n = shape.wrap(n, level);
      return n;
    };
    const auto expected = [&](int code) {
      std::string text;
      for (int level = depth; level-- > 0;) text += shape.open[level % 2];
      text += leaf.at(code);
      for (int level = 0; level < depth; ++level) text += shape.close[level % 2];
      return text;
    };
    Node tree = build();
    EXPECT_TRUE(tree->GetExpr(db(2)) == expected(2)) << shape.open[1];
    tree.reset();  // destroyed on the main stack
    tree = build();
    const std::string want = expected(1);
    on_small_stack([&] {
      EXPECT_TRUE(tree->GetExpr(db(1)) == want) << shape.open[1];
      tree.reset();
    });
    EXPECT_EQ(tree, nullptr);
  }
}

// Texts become SQL: a decimal comma would change the statement.
TEST(Hardening, NumbersIgnoreTheLocale) {
  const struct {
    std::function<std::string()> make;
    const char* want;
  } cases[] = {
      {[] { return vexel::SQLValue(3.5).GetValue(); }, "3.500000"},
      {[] { return vexel::SQLValue(0.1f, db(1)).GetValue(); }, "0.100000"},
      {[] { return (vexel::col("c") == 1.25).GetExpr(db(2)); }, "c = 1.250000"},
      {[] { return Olk::Base::StringUtil::str_fmt("%f|%.2f|%d", 2.5, 0.25, 1234567); },
       "2.500000|0.25|1234567"},
  };
  const std::string saved = std::setlocale(LC_ALL, nullptr);
  for (const char* locale : {"C", "de_DE.UTF-8"}) {
    if (std::setlocale(LC_ALL, locale) == nullptr) {
      std::setlocale(LC_ALL, saved.c_str());
      GTEST_SKIP() << locale << " is not installed (locale-gen de_DE.UTF-8)";
    }
    for (const auto& tc : cases) EXPECT_EQ(tc.make(), tc.want) << locale;
  }
  EXPECT_STREQ(std::localeconv()->decimal_point, ",") << "the locale writes a decimal comma";
  std::setlocale(LC_ALL, saved.c_str());
}

TEST(Hardening, CopiedWithBuilderKeepsItsConnectionAfterReset) {
  for (int code : vexel_test::kDialects) {
    auto conn = fake(code);
    vexel::WithBuilder original(conn);
    vexel::WithBuilder copy(original.WithDo("SELECT 1"));
    copy.Reset();
    EXPECT_EQ(copy.db_type(), db(code));
    EXPECT_TRUE(copy.WithDo("SELECT 2").Execute());
    EXPECT_EQ(conn->statements(), std::vector<std::string>{"ExecuteQuery:WITH  SELECT 2"}) << code;
  }
}

// The step's text, or "throw:" + the std::string it threw.
std::string outcome(const std::function<std::string()>& step) {
  try {
    return step();
  } catch (const std::string& thrown) {
    return "throw:" + thrown;
  }
}

TEST(Hardening, SqlServerMergeOfOtherThanOneRowThrows) {
  for (int rows : {0, 2}) {
    const std::string upsert = std::string("INSERT INTO t(a) VALUES") + (rows ? "(1),(2)" : "") +
                               " ON CONFLICT (a) DO NOTHING ";
    const std::string thrown = "throw:invaild param, values size = " + std::to_string(rows);
    const PerDialect text{upsert, upsert, thrown, upsert}, run{"ran", "ran", thrown, "ran"};
    for (int code : vexel_test::kDialects) {
      auto conn = fake(code);
      vexel::InsertBuilder b(conn);
      b.INSERT_INTO(vexel::tab("t")).COLUMNS({vexel::col("a")}).ON_CONFLICT({vexel::col("a")});
      for (int i = 1; i <= rows; ++i) b.VALUES({i});
      EXPECT_EQ(outcome([&] { return b.tosql(); }), text.at(code)) << rows;
      EXPECT_EQ(outcome([&] { return std::string(b.Execute() ? "ran" : "failed"); }), run.at(code));
      EXPECT_EQ(conn->count("ExecuteUpdate"), run.at(code) == "ran" ? 1 : 0);
    }
  }
}

// DELETE FROM t and UPDATE t SET a = 1 given `condition`, each executed
// through a copy (copies keep the mode): the level of each log line, an
// "X" per statement run, then a "-" per Execute that answered false.
std::string guarded(int code, const vexel::CommonExpr& condition, bool strict) {
  auto conn = fake(code);
  CaptureLog log;
  vexel::DeleteBuilder del(conn);
  vexel::UpdateBuilder up(conn);
  del.DELETE_FROM(vexel::tab("t")).set_strict_where(strict).WHERE(condition);
  up.UPDATE(vexel::tab("t")).SET(vexel::col("a"), 1).set_strict_where(strict).WHERE(condition);
  const int refused = !vexel::DeleteBuilder(del).Execute() + !vexel::UpdateBuilder(up).Execute();
  std::string seen;
  for (const std::string& line : log.texts()) seen += line.substr(0, 1);
  return seen + std::string(conn->statements().size(), 'X') + std::string(refused, '-');
}

TEST(Hardening, EmptyConditionWarnsAndStrictModeRefuses) {
  const vexel::TimeExpr now = vexel::NOW(0);  // no text on SQL Server
  const vexel::Ptr_CommonExpr holder;
  const vexel::SQLExpr blank("");
  const struct {
    const vexel::CommonExpr& condition;
    PerDialect lax, strict;
  } cases[] = {
      {holder, vexel_test::all("44XX"), vexel_test::all("4455--")},
      {blank, vexel_test::all("44XX"), vexel_test::all("4455--")},
      {now, {"XX", "XX", "44XX", "44XX"}, {"XX", "XX", "4455--", "4455--"}},
  };
  for (const auto& tc : cases) {
    for (int code : vexel_test::kDialects) {
      EXPECT_EQ(guarded(code, tc.condition, false), tc.lax.at(code)) << code;
      EXPECT_EQ(guarded(code, tc.condition, true), tc.strict.at(code)) << code;
    }
  }
  // The process-wide switch makes every builder strict.
  EXPECT_FALSE(vexel::set_strict_where_default(true));
  EXPECT_EQ(guarded(7, blank, false), "4455--");
  EXPECT_TRUE(vexel::set_strict_where_default(false));
}

// Names, SET lists, conditions and statements longer than the room kept
// for them in place render as short ones do; a column's copies and moves
// keep their texts.
TEST(Hardening, TextsPastTheirRoomInPlace) {
  const std::string s(30, 's'), t(30, 't'), n(30, 'n'), wide(80, 'w');
  vexel::col c = vexel::sch(s).tab(t).col(n);
  c.AS("a").DISTINCT().DESC();
  vexel::col copy = c, moved(std::move(copy)), assigned;
  assigned = moved;
  moved.set_table_name(wide);  // a middle part grows in place
  const std::string tail = ". DISTINCT " + n + " AS a";
  EXPECT_EQ(assigned.to_order() + "|" + moved.col_name(),
            s + "." + t + tail + " DESC |" + s + "." + wide + tail);
  EXPECT_EQ(assigned.only_schema_name() + assigned.only_table_name(), s + t);

  // Six SETs of ever longer names, one of them twice: the later value, in
  // name order.
  vexel::UpdateBuilder u(fake(2));
  u.UPDATE(vexel::tab("t"));
  const std::string order = "fedcbaf";
  auto name = [](char k) { return std::string(10 + 20 * ('f' - k), k); };
  for (std::size_t k = 0; k < order.size(); ++k) {
    u.SET(vexel::col(name(order[k])), vexel::SQLValue(static_cast<int>(k)));
  }
  std::string sets;
  for (char k : std::string("abcdef")) {
    sets +=
        (sets.empty() ? "" : ", ") + name(k) + " = " + std::to_string(k == 'f' ? 6 : order.find(k));
  }
  EXPECT_EQ(u.tosql(), "UPDATE t SET " + sets);

  // A statement, a table and a condition past the room their texts are put
  // together in on the stack.
  const std::string a(700, 'a'), b(700, 'b'), x(2000, 'x');
  vexel::tab far = vexel::sch(wide).tab(wide);
  far.AS(wide);
  const std::string named = wide + "." + wide + " AS " + wide;
  vexel::QueryBuilder q(fake(2));
  q.SELECT({vexel::col(a), vexel::col(b)}).FROM(far).JOIN(far);
  q.WHERE(vexel::col("c") == vexel::SQLValue(vexel::SafeValue(x)));
  EXPECT_EQ(q.tosql(), "SELECT " + a + " , " + b + " FROM " + named + " JOIN " + named +
                           " WHERE c = '" + x + "'");
  // A WHERE condition and INSERT rows that start in place and outgrow it.
  const std::string v(80, 'v');
  vexel::QueryBuilder grown(fake(2));
  grown.FROM(vexel::tab("t"))
      .WHERE(vexel::col("c") == 1)
      .AND(vexel::col("d") == vexel::SQLValue(v));
  EXPECT_EQ(grown.tosql(), "SELECT  FROM t WHERE c = 1 AND d = '" + v + "'");
  vexel::InsertBuilder rows(fake(2));
  rows.INSERT_INTO(vexel::tab("t")).COLUMNS({vexel::col("a")});
  std::string listed;
  for (int k = 0; k < 8; ++k) {
    rows.VALUES({vexel::SQLValue(std::string(10, static_cast<char>('a' + k)))});
    listed += (k > 0 ? ",('" : "('") + std::string(10, static_cast<char>('a' + k)) + "')";
  }
  EXPECT_EQ(rows.tosql(), "INSERT INTO t(a) VALUES" + listed);
  // UPDATE and DELETE past the room their table and their text have in place.
  const vexel::tab long_table = vexel::sch(wide).tab(wide);
  const std::string long_name = wide + "." + wide, quoted = "'" + x + "'";
  vexel::UpdateBuilder long_update(fake(2));
  long_update.UPDATE(long_table).SET(vexel::col("c"), vexel::SQLValue(x));
  EXPECT_EQ(long_update.tosql(), "UPDATE " + long_name + " SET c = " + quoted);
  vexel::DeleteBuilder long_delete(fake(2));
  long_delete.DELETE_FROM(long_table).WHERE(vexel::col("c") == x);
  EXPECT_EQ(long_delete.tosql(), "DELETE FROM " + long_name + " WHERE c = " + quoted);
  std::string sevens = "7";
  for (int k = 1; k < 20; ++k) sevens += ",7";
  EXPECT_EQ(vexel::col("k").in(std::vector<int>(20, 7)).GetExpr(tessel::DB_POSTGRESQL),
            "k IN (" + sevens + ")");
}

// Writers log while the sink is replaced again and again; every line
// reaches exactly one of the installed sinks.
TEST(Hardening, SinkReplacedWhileOtherThreadsLog) {
  const int writers = 3, lines = 20000, swaps = 2000;
  std::atomic<int> seen{0};
  const auto make_sink = [&seen] {
    auto state = std::make_shared<std::vector<int>>(64, 1);  // freed when replaced
    return Olk::Log::Sink(
        [state, &seen](int, const std::string&, const std::string&) { seen += (*state)[63]; });
  };
  const Olk::Log::Sink previous = Olk::Log::SetSink(make_sink());
  std::vector<std::thread> threads;
  for (int w = 0; w < writers; ++w) {
    threads.emplace_back([&] {
      for (int i = 0; i < lines; ++i) write_log(3, "Vexel", "[%s]line %d.[%s(%d)]", "t", i, "f", 1);
    });
  }
  threads.emplace_back([&] {
    for (int i = 0; i < swaps; ++i) Olk::Log::SetSink(make_sink());
  });
  for (std::thread& t : threads) t.join();
  Olk::Log::SetSink(previous);
  EXPECT_EQ(seen.load(), writers * lines);
}

}  // namespace

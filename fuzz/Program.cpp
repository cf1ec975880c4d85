#include "Program.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "Checks.h"
#include "vexel/vexel.h"

namespace vexel_fuzz {
namespace {

using vexel::col;
using vexel::CommonExpr;
using vexel::SQLValue;

// A sequence of calls ends after this many steps or with the input.
constexpr int kMaxSteps = 400;
// Nesting of expression nodes. Deeper CASE chains are known to exhaust the
// stack; staying well below keeps other findings visible.
constexpr int kMaxDepth = 200;
// Rendered size of one expression, counted with every shared node as often
// as it is rendered, so that `a = a.AND(a)` cannot double without end.
constexpr std::size_t kMaxWeight = 1 << 16;
// Text handed to builders over one input (subqueries count their text).
constexpr std::size_t kTextBudget = 1 << 18;
constexpr std::size_t kPoolSize = 8;

// An expression node with its nesting depth and rendered-size estimate.
struct Node {
  std::shared_ptr<CommonExpr> ptr;
  int depth = 1;
  std::size_t weight = 16;
};

struct Cond {
  vexel::Ptr_CommonExpr expr;
  int depth = 1;
  std::size_t weight = 16;
};

struct Case {
  vexel::CASE expr;
  int depth = 1;
  std::size_t weight = 16;
};

bool fits(int depth, std::size_t weight) { return depth <= kMaxDepth && weight <= kMaxWeight; }

std::size_t weight_of(const col& c) { return c.col_name().size() + 16; }
std::size_t weight_of(const SQLValue& v) { return v.GetValue().size() + 16; }

// The statement text, or nothing when rendering throws (the MERGE case).
template <typename Builder>
std::size_t text_size(const Builder& b) {
  try {
    return b.tosql().size();
  } catch (const std::string& thrown) {
    allowed_exception(thrown);
    return 0;
  }
}

// Rendering twice gives the same text: nothing is consumed or left over.
template <typename Render>
void render_twice(const char* what, Render&& render) {
  const std::string first = render();
  if (render() != first) finding(std::string(what) + " renders differently the second time");
}

class Program {
 public:
  Program(Input& in, ConnectionSource& source) : in_(in), source_(source) {}

  void run() {
    for (int step = 0; step < kMaxSteps && !in_.done(); ++step) {
      guarded("step", [this] { this->step(); });
    }
  }

 private:
  void step() {
    switch (in_.pick(20)) {
      case 0:
        references();
        break;
      case 1:
      case 2:
        columns();
        break;
      case 3:
        values();
        break;
      case 4:
      case 5:
        conditions();
        break;
      case 6:
        combine();
        break;
      case 7:
        nodes();
        break;
      case 8:
        cases();
        break;
      case 9:
        render();
        break;
      case 10:
      case 11:
        query();
        break;
      case 12:
        insert();
        break;
      case 13:
        update();
        break;
      case 14:
        remove();
        break;
      case 15:
        with();
        break;
      case 16:
        sequence();
        break;
      case 17:
        catalogue();
        break;
      case 18:
        source_.disturb(in_);
        break;
      default:
        texts();
        break;
    }
  }

  template <typename T>
  void keep(std::vector<T>& pool, T item) {
    if (pool.size() < kPoolSize) {
      pool.push_back(std::move(item));
    } else {
      pool[in_.pick(static_cast<int>(pool.size()))] = std::move(item);
    }
  }
  template <typename T>
  T& any(std::vector<T>& pool) {
    return pool[in_.pick(static_cast<int>(pool.size()))];
  }
  bool spend(std::size_t weight) {
    if (weight > budget_) return false;
    budget_ -= weight;
    return true;
  }

  // ---- pool access; each makes a first element when the pool is empty.

  vexel::sch& a_sch() {
    if (schs_.empty()) schs_.emplace_back(in_.name());
    return any(schs_);
  }
  vexel::tab& a_tab() {
    if (tabs_.empty()) tabs_.push_back(a_sch().tab(in_.name()));
    return any(tabs_);
  }
  vexel::view& a_view() {
    if (views_.empty()) views_.push_back(a_sch().view(in_.name()));
    return any(views_);
  }
  vexel::seq& a_seq() {
    if (seqs_.empty()) seqs_.emplace_back(in_.name());
    return any(seqs_);
  }
  col& a_col() {
    if (cols_.empty()) cols_.push_back(std::make_shared<col>(a_tab().col(in_.name())));
    return *any(cols_);
  }
  vexel::array_col& an_array() {
    if (arrays_.empty()) arrays_.push_back(a_tab().array_col(in_.name()));
    return any(arrays_);
  }
  SQLValue& a_value() {
    if (values_.empty()) values_.emplace_back(in_.number<int>());
    return any(values_);
  }
  Cond& a_cond() {
    if (conds_.empty()) conds_.push_back({a_col() == in_.number<int>(), 1, 32});
    return any(conds_);
  }
  Case& a_case() {
    if (cases_.empty()) cases_.emplace_back();
    return any(cases_);
  }
  // Any node, sometimes an empty pointer.
  Node a_node() {
    switch (in_.pick(6)) {
      case 0:
        return Node{};
      case 1: {
        const Cond& c = a_cond();
        return {c.expr.get_ptr(), c.depth + 1, c.weight};
      }
      case 2: {
        const Case& c = a_case();
        return {std::make_shared<vexel::CASE>(c.expr), c.depth + 1, c.weight};
      }
      case 3: {
        const SQLValue& v = a_value();
        return {std::make_shared<SQLValue>(v), 1, weight_of(v)};
      }
      default:
        if (nodes_.empty()) return Node{};
        return any(nodes_);
    }
  }
  // A node that is there, for the operations taking `const CommonExpr&`.
  const CommonExpr& an_expr(std::size_t* weight = nullptr) {
    std::size_t ignored = 0;
    std::size_t& w = weight != nullptr ? *weight : ignored;
    if (in_.flag() || nodes_.empty()) {
      const Cond& c = a_cond();
      w = c.weight;
      return c.expr;
    }
    for (const Node& n : nodes_) {
      if (n.ptr) {
        w = n.weight;
        return *n.ptr;
      }
    }
    w = weight_of(a_value());
    return a_value();
  }
  std::vector<col> some_cols(std::size_t* weight = nullptr) {
    std::vector<col> out;
    std::size_t w = 0;
    for (int i = in_.pick(5); i > 0; --i) {
      out.push_back(a_col());
      w += weight_of(out.back());
    }
    if (weight != nullptr) *weight = w;
    return out;
  }
  std::vector<SQLValue> some_values(std::size_t* weight = nullptr) {
    std::vector<SQLValue> out;
    std::size_t w = 0;
    for (int i = in_.pick(5); i > 0; --i) {
      out.push_back(a_value());
      w += weight_of(out.back());
    }
    if (weight != nullptr) *weight = w;
    return out;
  }
  std::vector<vexel::tab> some_tabs() {
    std::vector<vexel::tab> out;
    for (int i = in_.pick(4); i > 0; --i) out.push_back(a_tab());
    return out;
  }
  std::vector<int> some_ints() {
    std::vector<int> out;
    for (int i = in_.pick(5); i > 0; --i) out.push_back(in_.number<int>());
    return out;
  }
  std::vector<std::string> some_texts() {
    std::vector<std::string> out;
    for (int i = in_.pick(5); i > 0; --i) out.push_back(in_.short_text());
    return out;
  }
  std::map<std::string, int> some_offsets() {
    static const char* const kUnits[] = {"day", "hour", "minute", "second", "month", "year"};
    std::map<std::string, int> out;
    for (int i = in_.pick(4); i > 0; --i) {
      out[in_.flag() ? std::string(kUnits[in_.pick(6)]) : in_.short_text()] = in_.number<int>();
    }
    return out;
  }
  vexel::TimeType a_unit() {
    return static_cast<vexel::TimeType>(in_.flag() ? in_.small() : in_.number<int32_t>());
  }

  // ---- reference objects, columns and values.

  void references() {
    switch (in_.pick(11)) {
      case 0:
        keep(schs_, in_.flag() ? vexel::sch(in_.text()) : vexel::sch(in_.text().c_str()));
        break;
      case 1:
        a_sch().set_db_type(in_.dialect());
        break;
      case 2:
        keep(tabs_, a_sch().tab(in_.name()));
        break;
      case 3:
        keep(tabs_, vexel::tab(in_.text()));
        break;
      case 4:
        if (a_tab().table_name().size() < 1024) a_tab().AS(in_.short_text());
        break;
      case 5:
        a_tab().set_schema_name(in_.text());
        a_tab().set_db_type(in_.dialect());
        break;
      case 6:
        keep(tabs_, a_sch().tab(a_tab()));
        break;
      case 7:
        keep(views_, in_.flag() ? a_sch().view(in_.name()) : vexel::view(in_.text()));
        break;
      case 8: {
        vexel::view& v = a_view();
        if (v.view_name().size() < 1024) v.AS(in_.short_text());
        v.set_schema_name(in_.short_text());
        v.set_db_type(in_.dialect());
        keep(views_, a_sch().view(v));
        break;
      }
      case 9:
        keep(seqs_, vexel::seq(in_.text()));
        a_seq().set_db_type(in_.dialect());
        break;
      default: {
        const vexel::tab& t = a_tab();
        const vexel::view& v = a_view();
        render_twice("table", [&] { return t.table_name(); });
        render_twice("view", [&] { return v.view_name(); });
      } break;
    }
  }

  std::shared_ptr<col> aggregate() {
    const col& c = a_col();
    switch (in_.pick(8)) {
      case 0:
        return std::make_shared<vexel::aggr_func>(vexel::AVG(c));
      case 1:
        return std::make_shared<vexel::aggr_func>(vexel::COUNT(c));
      case 2:
        return std::make_shared<vexel::aggr_func>(vexel::MAX(c));
      case 3:
        return std::make_shared<vexel::aggr_func>(vexel::MIN(c));
      case 4:
        return std::make_shared<vexel::aggr_func>(vexel::SUM(c));
      case 5:
        return std::make_shared<vexel::aggr_func>(vexel::RANK());
      case 6:
        return std::make_shared<vexel::aggr_func>(vexel::ROW_NUMBER());
      default:
        return std::make_shared<vexel::aggr_func>(in_.text());
    }
  }

  void columns() {
    switch (in_.pick(15)) {
      case 0:
        keep(cols_, std::make_shared<col>(a_tab().col(in_.name())));
        break;
      case 1:
        keep(cols_, std::make_shared<col>(a_view().col(in_.name())));
        break;
      case 2:
        keep(cols_, in_.flag() ? std::make_shared<col>(in_.text())
                               : std::make_shared<col>(in_.text().c_str()));
        break;
      case 3:
        keep(cols_, std::static_pointer_cast<col>(
                        in_.flag() ? std::make_shared<vexel::func>(in_.text())
                                   : std::make_shared<vexel::func>(a_sch().func(in_.name()))));
        break;
      case 4:
        if (weight_of(a_col()) < kMaxWeight / 2) keep(cols_, aggregate());
        break;
      case 5:
        keep(cols_, std::make_shared<col>(a_col(), in_.dialect()));
        break;
      case 6: {
        std::size_t weight = 0;
        const CommonExpr& e = an_expr(&weight);
        if (weight < kMaxWeight) keep(cols_, std::make_shared<col>(e, in_.dialect()));
        break;
      }
      case 7:
        modify(a_col());
        break;
      case 8: {
        col& c = a_col();
        const col other = a_col();
        const SQLValue v = a_value();
        if (weight_of(c) + weight_of(other) + weight_of(v) > kMaxWeight) break;
        switch (in_.pick(6)) {
          case 0:
            c + other;
            break;
          case 1:
            c - other;
            break;
          case 2:
            c + v;
            break;
          case 3:
            c - v;
            break;
          case 4:
            c.increase(v);
            break;
          default:
            c.decrease(v);
            break;
        }
        break;
      }
      case 9: {
        col& c = a_col();
        switch (in_.pick(7)) {
          case 0:
            c.set_col_name(in_.text());
            break;
          case 1:
            c.set_col_type(static_cast<vexel::ColType>(in_.small()));
            break;
          case 2:
            c.set_db_type(in_.dialect());
            break;
          case 3:
            c.set_schema_name(in_.short_text());
            break;
          case 4:
            c.set_table_name(in_.short_text());
            break;
          case 5:
            c.set_view_name(in_.short_text());
            break;
          default:
            keep(arrays_,
                 in_.flag() ? a_view().array_col(in_.name()) : vexel::array_col(in_.text()));
            break;
        }
        break;
      }
      case 10:
        keep(arrays_, a_tab().array_col(in_.name()));
        break;
      case 11: {
        // Columns compared as map keys and rendered for any dialect.
        std::map<col, int> ordered;
        for (int i = in_.pick(5); i > 0; --i) ordered[a_col()] = i;
        const tessel::DBTYPE db = in_.dialect();
        const col& c = a_col();
        render_twice("column", [&] { return c.GetExpr(db) + c.to_order(); });
        break;
      }
      case 12:
        if (weight_of(a_col()) < kMaxWeight / 2) keep(cols_, std::make_shared<col>(an_array()));
        break;
      case 13:
        computed();
        break;
      default:
        over();
        break;
    }
  }

  // Computed values over any column, value or subquery, with enumerations
  // and amounts out of range too; comparisons become conditions.
  void computed() {
    const col& a = a_col();
    const col& b = a_col();
    if (weight_of(a) + weight_of(b) > kMaxWeight / 4) return;
    const vexel::calc x = in_.flag() ? vexel::calc(a) : vexel::calc(vexel::SafeValue(in_.text()));
    const vexel::calc y = in_.flag() ? vexel::calc(b) : vexel::calc(a_value());
    vexel::calc out = x;
    switch (in_.pick(12)) {
      case 0:
        out = vexel::calc::arithmetic(x, static_cast<vexel::calc::Op>(in_.small()), y);
        break;
      case 1:
        out = in_.flag() ? -x : vexel::calc(in_.number<int64_t>()) - y;
        break;
      case 2:
        out = vexel::CAST(x, static_cast<vexel::CastType>(in_.small()));
        break;
      case 3:
        out = vexel::DATE_FIELD(static_cast<vexel::DateField>(in_.small()), x);
        break;
      case 4:
        out = in_.flag() ? vexel::DATE_ADD(x, in_.number<long long>(), a_unit())
                         : vexel::TIMESTAMP_ADD(x, in_.number<long long>(), a_unit());
        break;
      case 5:
        out = in_.flag() ? vexel::SUBSTRING(x, in_.number<long long>(), in_.number<long long>())
                         : vexel::SUBSTRING(vexel::LENGTH(x), in_.number<long long>());
        break;
      case 6:
        out = vexel::CONCAT({x, vexel::LOWER(y), vexel::UPPER(x), vexel::TRIM(y)});
        break;
      case 7:
        out = in_.flag() ? vexel::COALESCE({x, y}) : vexel::NULLIF(x, y);
        break;
      case 8:
        out = x.for_dialect(in_.dialect()) * 2.5 / y % 3;
        break;
      case 9: {
        const vexel::QueryBuilder& q = a_query();
        if (q.tosql().size() > kMaxWeight / 4) return;
        out = vexel::calc(q) + x;
        break;
      }
      case 10: {
        const auto op = static_cast<vexel::calc::Comparison>(in_.small());
        keep(conds_, Cond{vexel::calc::compare(x, op, y), 1, out.col_name().size() + 16});
        return;
      }
      default: {
        const vexel::QueryBuilder& q = a_query();
        if (q.tosql().size() > kMaxWeight / 4) return;
        const vexel::quantified any = in_.flag() ? vexel::ANY_OF(q) : vexel::ALL_OF(q);
        keep(conds_, Cond{in_.flag() ? x > any : x != any, 1, q.tosql().size() + 32});
        return;
      }
    }
    keep(cols_, std::static_pointer_cast<col>(std::make_shared<vexel::calc>(out)));
  }

  void modify(col& c) {
    if (weight_of(c) > kMaxWeight / 2) return;
    switch (in_.pick(8)) {
      case 0:
        c.AS(in_.short_text());
        break;
      case 1:
        c.DISTINCT();
        break;
      case 2:
        c.EXCLUDED();
        break;
      case 3:
        c.ASC();
        break;
      case 4:
        c.DESC();
        break;
      case 5:
        c.NullsFirst();
        break;
      case 6:
        c.NullsLast();
        break;
      default:
        c.AS(in_.short_text().c_str());
        break;
    }
  }

  void over() {
    vexel::window_option w;
    std::size_t partition = 0;
    std::size_t order = 0;
    w.partition_by = some_cols(&partition);
    w.order_by = some_cols(&order);
    w.flags = std::bitset<3>(static_cast<unsigned long>(in_.pick(8)));
    std::shared_ptr<col> f = aggregate();
    if (weight_of(*f) + partition + order > kMaxWeight) return;
    std::static_pointer_cast<vexel::aggr_func>(f)->Over(w);
    keep(cols_, f);
  }

  void values() {
    const tessel::DBTYPE db = in_.dialect();
    const bool with_db = in_.flag();
    switch (in_.pick(16)) {
      case 0: {
        const short v = in_.number<short>();
        keep(values_, with_db ? SQLValue(v, db) : SQLValue(v));
        break;
      }
      case 1: {
        const unsigned short v = in_.number<unsigned short>();
        keep(values_, with_db ? SQLValue(v, db) : SQLValue(v));
        break;
      }
      case 2: {
        const int v = in_.number<int>();
        keep(values_, with_db ? SQLValue(v, db) : SQLValue(v));
        break;
      }
      case 3: {
        const unsigned int v = in_.number<unsigned int>();
        keep(values_, with_db ? SQLValue(v, db) : SQLValue(v));
        break;
      }
      case 4: {
        const long v = in_.number<long>();
        keep(values_, with_db ? SQLValue(v, db) : SQLValue(v));
        break;
      }
      case 5: {
        const unsigned long v = in_.number<unsigned long>();
        keep(values_, with_db ? SQLValue(v, db) : SQLValue(v));
        break;
      }
      case 6: {
        const long long v = in_.number<long long>();
        keep(values_, with_db ? SQLValue(v, db) : SQLValue(v));
        break;
      }
      case 7: {
        const unsigned long long v = in_.number<unsigned long long>();
        keep(values_, with_db ? SQLValue(v, db) : SQLValue(v));
        break;
      }
      case 8: {
        const float v = in_.floating<float>();
        keep(values_, with_db ? SQLValue(v, db) : SQLValue(v));
        break;
      }
      case 9: {
        const double v = in_.floating<double>();
        keep(values_, with_db ? SQLValue(v, db) : SQLValue(v));
        break;
      }
      case 10: {
        const std::string v = in_.text();
        keep(values_, with_db ? SQLValue(v, db) : SQLValue(v));
        break;
      }
      case 11: {
        const std::string v = in_.text();
        keep(values_, with_db ? SQLValue(v.c_str(), db) : SQLValue(v.c_str()));
        break;
      }
      case 12: {
        const vexel::SQLFunc f{in_.text()};
        keep(values_, with_db ? SQLValue(f, db) : SQLValue(f));
        break;
      }
      case 13: {
        std::size_t weight = 0;
        const CommonExpr& e = an_expr(&weight);
        if (weight < kMaxWeight) keep(values_, SQLValue(e, db));
        break;
      }
      case 14:
        keep(values_, in_.flag() ? SQLValue(a_value(), db) : SQLValue(vexel::SQLExpr(in_.text())));
        break;
      default:
        a_value().set_db_type(db);
        a_value().set_table_name(in_.short_text());
        if (in_.flag()) keep(values_, SQLValue());
        break;
    }
  }

  // ---- conditions and other nodes.

  void conditions() {
    col& c = a_col();
    const std::size_t w = weight_of(c);
    const SQLValue v = a_value();
    const std::size_t vw = w + weight_of(v);
    Cond out{{}, 1, w + 32};
    switch (in_.pick(44)) {
      case 0:
        out.expr = c == in_.number<short>();
        break;
      case 1:
        out.expr = c == in_.number<unsigned short>();
        break;
      case 2:
        out.expr = c == in_.number<int>();
        break;
      case 3:
        out.expr = c == in_.number<unsigned int>();
        break;
      case 4:
        out.expr = c == in_.number<long>();
        break;
      case 5:
        out.expr = c == in_.number<unsigned long>();
        break;
      case 6:
        out.expr = c == in_.number<long long>();
        break;
      case 7:
        out.expr = c == in_.number<unsigned long long>();
        break;
      case 8:
        out.expr = c == in_.floating<float>();
        break;
      case 9:
        out.expr = c == in_.floating<double>();
        break;
      case 10: {
        const std::string s = in_.text();
        out.expr = in_.flag() ? c == s : c == s.c_str();
        out.weight += s.size();
        break;
      }
      case 11: {
        const col other = a_col();
        out.weight += weight_of(other);
        switch (in_.pick(6)) {
          case 0:
            out.expr = c == other;
            break;
          case 1:
            out.expr = c != other;
            break;
          case 2:
            out.expr = c.lt(other);
            break;
          case 3:
            out.expr = c <= other;
            break;
          case 4:
            out.expr = c > other;
            break;
          default:
            out.expr = c >= other;
            break;
        }
        break;
      }
      case 12:
        out.expr = c == v;
        out.weight = vw;
        break;
      case 13:
        out.expr = c.eq(v);
        out.weight = vw;
        break;
      case 14:
        out.expr = in_.flag() ? c != v : c.neq(v);
        out.weight = vw;
        break;
      case 15:
        out.expr = in_.flag() ? c < v : c.lt(v);
        out.weight = vw;
        break;
      case 16:
        out.expr = c <= v;
        out.weight = vw;
        break;
      case 17:
        out.expr = in_.flag() ? c > v : c.gt(v);
        out.weight = vw;
        break;
      case 18:
        out.expr = c >= v;
        out.weight = vw;
        break;
      case 19:
        out.expr = in_.flag() ? c | v : c | vexel::SQLExpr(in_.text());
        out.weight = vw + 4096;
        break;
      case 20: {
        const std::string list = in_.text();
        out.expr = in_.flag() ? c.in(list) : c.notin(list);
        out.weight += list.size();
        break;
      }
      case 21: {
        const std::vector<int> list = some_ints();
        out.expr = in_.flag() ? c.in(list) : c.notin(list);
        out.weight += 12 * list.size();
        break;
      }
      case 22: {
        const std::vector<std::string> list = some_texts();
        out.expr = in_.flag() ? c.in(list) : c.notin(list);
        out.weight += 32 * list.size();
        break;
      }
      case 23: {
        const vexel::QueryBuilder& q = a_query();
        out.weight += text_size(q);
        if (out.weight > kMaxWeight) return;
        out.expr = in_.flag() ? c.in(q) : in_.flag() ? c.notin(q) : c == q;
        break;
      }
      case 24:
        out.expr = in_.flag() ? c.in({1, 2}) : c.notin({"a", "b"});
        break;
      case 25: {
        const SQLValue high = a_value();
        out.expr = c.BETWEEN(v, high);
        out.weight = vw + weight_of(high);
        break;
      }
      case 26:
        out.expr = in_.flag() ? c.is_null() : c.is_not_null();
        break;
      case 27:
      case 28:
      case 29: {
        const std::string pattern = in_.text();
        out.weight += pattern.size();
        switch (in_.pick(7)) {
          case 0:
            out.expr = c.like(pattern);
            break;
          case 1:
            out.expr = c.ilike(pattern);
            break;
          case 2:
            out.expr = c.regexp(pattern);
            break;
          case 3:
            out.expr = c.regexp_cap(pattern);
            break;
          case 4:
            out.expr = c.not_regexp(pattern);
            break;
          case 5:
            out.expr = c.not_regexp_cap(pattern);
            break;
          default:
            out.expr = c.full_text_search(pattern);
            break;
        }
        break;
      }
      case 30:
        out.expr = c.similar_to(v);
        out.weight = vw;
        break;
      case 31:
        out.expr = in_.flag() ? c.XOR(v) : c.XOR(vexel::SQLExpr(in_.text()));
        out.weight = vw + 4096;
        break;
      case 32: {
        const std::string bits = in_.text();
        out.weight += bits.size();
        switch (in_.pick(6)) {
          case 0:
            out.expr = c.str_bit_and(bits);
            break;
          case 1:
            out.expr = c.str_bit_or(bits);
            break;
          case 2:
            out.expr = c.str_bit_xor(bits);
            break;
          case 3:
            out.expr = c.str_bit_not();
            break;
          case 4:
            out.expr = c.str_bit_shift_left(in_.number<int>());
            break;
          default:
            out.expr = c.str_bit_shift_right(in_.number<int>());
            break;
        }
        break;
      }
      case 33:
      case 34: {
        const vexel::array_col& a = an_array();
        out.weight = weight_of(a) + 64;
        switch (in_.pick(6)) {
          case 0:
            out.expr = a.contains(some_ints());
            break;
          case 1:
            out.expr = a.contains(some_texts());
            break;
          case 2:
            out.expr = a & some_ints();
            break;
          case 3:
            out.expr = a & some_texts();
            break;
          case 4:
            out.expr =
                in_.flag() ? a.contains({1, 2}) : a & std::initializer_list<const char*>{"x"};
            break;
          default:
            out.expr = a[in_.number<int>()];
            break;
        }
        out.weight += 5 * 40;
        break;
      }
      case 35: {
        // A holder around any node, an empty one included.
        const Node n = a_node();
        out = {vexel::Ptr_CommonExpr(n.ptr), n.depth + 1, n.weight + 16};
        break;
      }
      case 36:
        out = {vexel::Ptr_CommonExpr(), 1, 16};
        break;
      default:
        out.expr = c == static_cast<int>(in_.small());
        break;
    }
    if (fits(out.depth, out.weight)) keep(conds_, std::move(out));
  }

  void combine() {
    const Cond other = a_cond();
    Cond& c = a_cond();
    const int depth = std::max(c.depth, other.depth) + 1;
    const std::size_t weight = c.weight + other.weight + 16;
    if (!fits(depth, weight)) return;
    switch (in_.pick(6)) {
      case 0:
        keep(conds_, Cond{c.expr.AND(other.expr), depth, weight});
        return;
      case 1:
        keep(conds_, Cond{c.expr.OR(other.expr), depth, weight});
        return;
      case 2:
        c.expr.AndCon(other.expr);
        break;
      case 3:
        c.expr.OrCon(other.expr);
        break;
      case 4:
        c.expr&& other.expr;
        break;
      default:
        c.expr | other.expr;
        break;
    }
    c.depth = depth;
    c.weight = weight;
  }

  void nodes() {
    Node out;
    const std::string value = in_.text();
    out.weight = value.size() + 64;
    switch (in_.pick(26)) {
      case 0:
        out.ptr = std::make_shared<vexel::TimeExpr>(
            in_.flag() ? vexel::NOW(in_.small()) : vexel::CURRENT_TIMESTAMP(in_.small()));
        break;
      case 1:
        out.ptr =
            std::make_shared<vexel::TimeExpr>(in_.flag() ? vexel::DATE(value) : vexel::TIME(value));
        break;
      case 2:
        out.ptr = std::make_shared<vexel::TimeExpr>(vexel::EXTRACT(value));
        break;
      case 3:
        out.ptr = std::make_shared<vexel::TimeExpr>(
            in_.flag() ? vexel::DATE_PART(a_unit(), value) : vexel::DATE_TRUNC(a_unit(), value));
        break;
      case 4: {
        const col& a = a_col();
        const col& b = a_col();
        out.weight += weight_of(a) + weight_of(b);
        switch (in_.pick(4)) {
          case 0:
            out.ptr = std::make_shared<vexel::TimeExpr>(vexel::TIMEDIFF(value, in_.text()));
            break;
          case 1:
            out.ptr = std::make_shared<vexel::TimeExpr>(vexel::TIMEDIFF(a, b));
            break;
          case 2:
            out.ptr = std::make_shared<vexel::TimeExpr>(vexel::TIMEDIFF(a, value));
            break;
          default:
            out.ptr = std::make_shared<vexel::TimeExpr>(
                vexel::TIMEDIFF(value.c_str(), in_.text().c_str()));
            break;
        }
        break;
      }
      case 5: {
        const std::map<std::string, int> offsets = some_offsets();
        const col& a = a_col();
        out.weight += weight_of(a) + 4 * 40;
        out.ptr = std::make_shared<vexel::TimeExpr>(
            in_.flag() ? vexel::TIME_ALGORITHM(value, offsets) : vexel::TIME_ALGORITHM(a, offsets));
        break;
      }
      case 6: {
        const auto kind = static_cast<vexel::TimeExpr::Kind>(in_.small() + 4);
        out.ptr = std::make_shared<vexel::TimeExpr>(
            in_.flag() ? vexel::TimeExpr(kind, value) : vexel::TimeExpr(kind, a_unit(), value));
        break;
      }
      case 7: {
        const col& a = a_col();
        out.weight += 2 * weight_of(a) + 160;
        out.ptr = std::make_shared<vexel::TimeExpr>(
            in_.flag() ? vexel::TimeExpr(a, a_col()) : vexel::TimeExpr(a, some_offsets()));
        break;
      }
      case 8: {
        const col& a = a_col();
        out.weight += weight_of(a);
        auto group = std::make_shared<vexel::GroupConcatExpr>(a, in_.byte());
        if (in_.flag()) group->AS(in_.short_text());
        out.ptr = group;
        break;
      }
      case 9:
        out.ptr = in_.flag() ? std::make_shared<vexel::ArrayValue>(some_ints())
                             : std::make_shared<vexel::ArrayValue>(some_texts());
        out.weight += 5 * 40;
        break;
      case 10:
        out.ptr = std::make_shared<vexel::string_to_array>(
            static_cast<vexel::array_type>(in_.small()), value, in_.byte());
        out.weight += value.size() * 4;
        break;
      case 11:
        out.ptr = std::make_shared<vexel::sub_array_col>(value, in_.number<int>());
        break;
      case 12:
        out.ptr = std::make_shared<vexel::ColAnyColExpr>(in_.short_text(), value, in_.short_text());
        break;
      case 13:
        out.ptr = std::make_shared<vexel::ColAnyColExpr>(a_value() == vexel::ANY(an_array()));
        out.weight += weight_of(a_value()) + weight_of(an_array());
        break;
      case 14: {
        const vexel::seq& s = a_seq();
        const vexel::tab& t = a_tab();
        out.weight += s.seq_name().size() + t.table_name().size();
        switch (in_.pick(3)) {
          case 0:
            out.ptr = std::make_shared<vexel::SeqenceExpr>(vexel::CURRVAL(s, t));
            break;
          case 1:
            out.ptr = std::make_shared<vexel::SeqenceExpr>(vexel::SETVAL(s, in_.number<int>(), t));
            break;
          default:
            out.ptr = std::make_shared<vexel::SeqenceExpr>(
                static_cast<vexel::SeqenceExpr::Kind>(in_.small()), value, in_.short_text(),
                in_.number<int32_t>());
            break;
        }
        break;
      }
      case 15: {
        std::string sub = value;
        if (in_.flag()) {
          const vexel::QueryBuilder& q = a_query();
          if (text_size(q) > kMaxWeight) return;
          sub = q.tosql();
        }
        out.weight = sub.size() + 32;
        out.ptr = std::make_shared<vexel::SQLExpr>(in_.flag() ? vexel::EXISTS(sub)
                                                              : vexel::NOT_EXISTS(sub));
        break;
      }
      case 16:
        out.ptr = std::make_shared<vexel::SQLExpr>(in_.flag() ? vexel::SQLExpr(value)
                                                              : vexel::SQLExpr(value.c_str()));
        break;
      case 17: {
        const SQLValue& v = a_value();
        out.weight = weight_of(v);
        out.ptr = std::make_shared<vexel::SQLExpr>(in_.flag() ? vexel::SQLExpr(v)
                                                              : vexel::SQLExpr(v, in_.dialect()));
        break;
      }
      case 18: {
        const Node n = a_node();
        out.weight = n.weight;
        if (n.ptr && in_.flag()) {
          out.ptr = std::make_shared<vexel::SQLExpr>(*n.ptr, in_.dialect());
        } else {
          out.ptr = std::make_shared<vexel::SQLExpr>(n.ptr, in_.dialect());
        }
        break;
      }
      case 19:
        out.weight = weight_of(a_col());
        out.ptr = std::make_shared<vexel::SQLExpr>(a_col(), in_.dialect());
        break;
      case 20:
        out = a_node();
        break;
      default: {
        const Cond& c = a_cond();
        out = {std::make_shared<vexel::Ptr_CommonExpr>(c.expr), c.depth + 1, c.weight};
        break;
      }
    }
    if (fits(out.depth, out.weight)) keep(nodes_, std::move(out));
  }

  void cases() {
    if (in_.pick(8) == 0) {
      keep(cases_, in_.flag() ? Case{} : Case{vexel::CASE(vexel::SQLExpr(in_.text())), 1, 4096});
      return;
    }
    const Node n = a_node();
    const Cond cond = a_cond();
    const SQLValue v = a_value();
    const col c = a_col();
    const vexel::SQLExpr text(in_.text());
    Case& k = a_case();
    const int depth = std::max({k.depth, n.depth + 1, cond.depth + 1});
    const std::size_t weight =
        k.weight + n.weight + cond.weight + weight_of(v) + weight_of(c) + 4096 + 32;
    if (!fits(depth, weight)) return;
    k.depth = depth;
    k.weight = weight;
    const int which = in_.pick(3);
    switch (in_.pick(5)) {
      case 0:
        which == 0   ? k.expr.WHEN(cond.expr)
        : which == 1 ? k.expr.THEN(cond.expr)
                     : k.expr.ELSE(cond.expr);
        break;
      case 1:
        which == 0 ? k.expr.WHEN(text) : which == 1 ? k.expr.THEN(text) : k.expr.ELSE(text);
        break;
      case 2:
        which == 0 ? k.expr.WHEN(n.ptr) : which == 1 ? k.expr.THEN(n.ptr) : k.expr.ELSE(n.ptr);
        break;
      case 3:
        which == 0 ? k.expr.WHEN(v) : which == 1 ? k.expr.THEN(v) : k.expr.ELSE(v);
        break;
      default:
        which == 0 ? k.expr.WHEN(c) : which == 1 ? k.expr.THEN(c) : k.expr.ELSE(c).END();
        break;
    }
  }

  void render() {
    const tessel::DBTYPE db = in_.dialect();
    switch (in_.pick(5)) {
      case 0: {
        const Node n = a_node();
        if (n.ptr) render_twice("node", [&] { return n.ptr->GetExpr(db); });
        break;
      }
      case 1: {
        const Cond& c = a_cond();
        render_twice("condition", [&] { return c.expr.GetExpr(db); });
        break;
      }
      case 2: {
        const Case& c = a_case();
        render_twice("case", [&] { return c.expr.GetExpr(db); });
        break;
      }
      case 3: {
        // Re-qualifying reaches nodes shared with other expressions.
        const std::string table = in_.short_text();
        if (in_.flag()) {
          a_cond().expr.set_table_name(table);
        } else {
          const Node n = a_node();
          if (n.ptr) n.ptr->set_table_name(table);
        }
        break;
      }
      default: {
        const SQLValue& v = a_value();
        render_twice("value", [&] { return v.GetExpr(db); });
        break;
      }
    }
  }

  void texts() {
    switch (in_.pick(3)) {
      case 0: {
        vexel::expr a(in_.text());
        const vexel::expr b(in_.text());
        static_cast<void>(in_.flag() ? a | b : a && b);
        render_twice("expr", [&] { return a.GetExpr(); });
        break;
      }
      default: {
        const col& c = a_col();
        const std::string path = in_.text();
        const auto map =
            in_.flag() ? vexel::JSON_SET(c, path, in_.text()) : vexel::JSON_KEY_DELETE(c, path);
        for (const auto& entry : map) {
          render_twice("json", [&] { return entry.second.GetExpr(entry.first); });
        }
        if (!map.empty()) keep(values_, map.begin()->second);
        break;
      }
    }
  }

  // ---- builders.

  template <typename Builder>
  Builder& a_builder(std::vector<std::unique_ptr<Builder>>& pool) {
    if (pool.empty()) pool.push_back(std::make_unique<Builder>(source_.connection(in_)));
    return *any(pool);
  }
  vexel::QueryBuilder& a_query() { return a_builder(queries_); }
  vexel::InsertBuilder& an_insert() { return a_builder(inserts_); }
  vexel::UpdateBuilder& an_update() { return a_builder(updates_); }
  vexel::DeleteBuilder& a_delete() { return a_builder(deletes_); }
  vexel::WithBuilder& a_with() { return a_builder(withs_); }

  // Construction from a connection, copy construction and assignment
  // (self-assignment included), common to every builder.
  template <typename Builder>
  bool life_cycle(std::vector<std::unique_ptr<Builder>>& pool, int what) {
    switch (what) {
      case 0:
        keep(pool, std::make_unique<Builder>(source_.connection(in_)));
        return true;
      case 1:
        keep(pool, std::make_unique<Builder>(a_builder(pool)));
        return true;
      case 2: {
        Builder& from = a_builder(pool);
        a_builder(pool) = from;
        return true;
      }
      default:
        return false;
    }
  }

  // The condition clauses every data-change builder has.
  template <typename Builder>
  void condition_clause(Builder& b) {
    std::size_t weight = 0;
    const CommonExpr& e = an_expr(&weight);
    if (!spend(weight)) return;
    switch (in_.pick(3)) {
      case 0:
        b.WHERE(e);
        break;
      case 1:
        b.AND(e);
        break;
      default:
        b.OR(e);
        break;
    }
  }

  template <typename Builder>
  void check_text(const Builder& b) {
    render_twice("statement", [&] { return b.tosql(); });
  }

  void query() {
    if (life_cycle(queries_, in_.pick(40))) return;
    vexel::QueryBuilder& q = a_query();
    std::size_t weight = 0;
    switch (in_.pick(24)) {
      case 0: {
        const std::vector<col> cols = some_cols(&weight);
        if (spend(weight)) q.SELECT(cols);
        break;
      }
      case 1: {
        const CommonExpr& e = an_expr(&weight);
        if (spend(weight)) q.SELECT(e);
        break;
      }
      case 2:
        if (spend(weight_of(a_value()))) q.SELECT(a_value());
        break;
      case 3:
      case 4:
      case 5:
      case 6: {
        const int kind = in_.pick(3);
        const vexel::tab& t = a_tab();
        const vexel::view& v = a_view();
        const vexel::QueryBuilder& sub = a_query();
        const std::string alias = in_.short_text();
        const std::size_t size = kind == 2 ? text_size(sub) : 64;
        if (!spend(size + t.table_name().size() + v.view_name().size())) break;
        using Tab = vexel::QueryBuilder& (vexel::QueryBuilder::*)(const vexel::tab&);
        using View = vexel::QueryBuilder& (vexel::QueryBuilder::*)(const vexel::view&);
        using Sub = vexel::QueryBuilder& (vexel::QueryBuilder::*)(const vexel::QueryBuilder&,
                                                                  const std::string&);
        static const Tab kTab[] = {&vexel::QueryBuilder::FROM, &vexel::QueryBuilder::JOIN,
                                   &vexel::QueryBuilder::LEFT_JOIN,
                                   &vexel::QueryBuilder::RIGHT_JOIN};
        static const View kView[] = {&vexel::QueryBuilder::FROM, &vexel::QueryBuilder::JOIN,
                                     &vexel::QueryBuilder::LEFT_JOIN,
                                     &vexel::QueryBuilder::RIGHT_JOIN};
        static const Sub kSub[] = {&vexel::QueryBuilder::FROM, &vexel::QueryBuilder::JOIN,
                                   &vexel::QueryBuilder::LEFT_JOIN,
                                   &vexel::QueryBuilder::RIGHT_JOIN};
        const int clause = in_.pick(4);
        if (kind == 0) (q.*kTab[clause])(t);
        if (kind == 1) (q.*kView[clause])(v);
        if (kind == 2) (q.*kSub[clause])(sub, alias);
        break;
      }
      case 7:
      case 8:
      case 9: {
        const CommonExpr& e = an_expr(&weight);
        if (!spend(weight)) break;
        switch (in_.pick(5)) {
          case 0:
            q.ON(e);
            break;
          case 1:
            q.WHERE(e);
            break;
          case 2:
            q.HAVING(e);
            break;
          case 3:
            q.AND(e);
            break;
          default:
            q.OR(e);
            break;
        }
        break;
      }
      case 10: {
        const std::vector<col> cols = some_cols(&weight);
        if (spend(weight)) in_.flag() ? q.GROUP_BY(cols) : q.ORDER_BY(cols);
        break;
      }
      case 11:
        in_.flag() ? q.LIMIT(in_.number<int>()) : q.OFFSET(in_.number<int>());
        break;
      case 12: {
        const vexel::QueryBuilder& other = a_query();
        if (!spend(text_size(other))) break;
        switch (in_.pick(4)) {
          case 0:
            q.UNION(other);
            break;
          case 1:
            q.UNION_ALL(other);
            break;
          case 2:
            q.EXCEPT(other);
            break;
          default:
            q.INTERSECT(other);
            break;
        }
        break;
      }
      case 13:
        q.Reset();
        break;
      case 14:
      case 15:
        check_text(q);
        break;
      default:
        execute_query(q);
        break;
    }
  }

  void execute_query(vexel::QueryBuilder& q) {
    switch (in_.pick(4)) {
      case 0:
        checked_execute("QueryBuilder::Execute", [&] { return q.Execute(); });
        break;
      case 1: {
        const int time_out = in_.small();
        checked_execute("QueryBuilder::ExecuteQueryUDT",
                        [&] { return q.ExecuteQueryUDT(time_out); });
        break;
      }
      case 2: {
        const std::string collation = in_.short_text();
        checked_execute("QueryBuilder::ExecuteSortByCollate",
                        [&] { return q.ExecuteSortByCollate(collation); });
        break;
      }
      default:
        checked_execute("QueryBuilder::ExecuteLoop", [&] { return q.ExecuteLoop(); });
        break;
    }
  }

  void insert() {
    if (life_cycle(inserts_, in_.pick(30))) return;
    vexel::InsertBuilder& b = an_insert();
    std::size_t weight = 0;
    switch (in_.pick(18)) {
      case 0:
        b.INSERT_INTO(a_tab());
        break;
      case 1:
      case 2: {
        const std::vector<col> cols = some_cols(&weight);
        if (!spend(weight)) break;
        in_.pick(3) == 0 ? b.ON_CONFLICT(cols) : in_.flag() ? b.COLUMNS(cols) : b.RETURNING(cols);
        break;
      }
      case 3:
      case 4: {
        const std::vector<SQLValue> row = some_values(&weight);
        if (spend(weight)) b.VALUES(row);
        break;
      }
      case 5:
      case 6: {
        const col& c = a_col();
        const col& other = a_col();
        const SQLValue& v = a_value();
        const CommonExpr& e = an_expr(&weight);
        if (!spend(weight + weight_of(c) + weight_of(other) + weight_of(v))) break;
        switch (in_.pick(3)) {
          case 0:
            b.SET(c, v);
            break;
          case 1:
            b.SET(c, other);
            break;
          default:
            b.SET(c, e);
            break;
        }
        break;
      }
      case 7:
        in_.flag() ? b.DO_NOTHING() : b.DO_UPDATE();
        break;
      case 8:
        b.EXCLUDE(in_.flag() ? vexel::CURRVAL(a_seq(), a_tab())
                             : vexel::SETVAL(a_seq(), in_.number<int>(), a_tab()));
        break;
      case 9:
      case 10:
        condition_clause(b);
        break;
      case 11:
        b.Reset();
        break;
      case 12:
        check_text(b);
        break;
      default:
        checked_execute("InsertBuilder::Execute", [&] { return b.Execute(); });
        break;
    }
  }

  void update() {
    if (life_cycle(updates_, in_.pick(40))) return;
    vexel::UpdateBuilder& b = an_update();
    std::size_t weight = 0;
    switch (in_.pick(22)) {
      case 0:
        in_.flag() ? b.UPDATE(a_tab()) : b.UPDATE(a_col());
        break;
      case 1:
      case 2:
      case 3: {
        const col& c = a_col();
        if (!spend(weight_of(c))) break;
        set(b, c);
        break;
      }
      case 4:
      case 5:
        condition_clause(b);
        break;
      case 6: {
        const std::vector<col> cols = some_cols(&weight);
        if (spend(weight)) b.RETURNING(cols);
        break;
      }
      case 7:
        b.VACUUM(some_tabs());
        break;
      case 8: {
        const col& target = a_col();
        const col& source = a_col();
        if (!spend(weight_of(target) + weight_of(source))) break;
        in_.flag() ? b.UNION_SET(target, source) : b.UNION_CONDITION(target, source);
        break;
      }
      case 9:
        b.UNION_FROM(some_tabs());
        break;
      case 10: {
        const std::vector<col> cols = some_cols(&weight);
        if (spend(weight)) in_.flag() ? b.BATCH_SET(cols) : b.BATCH_CONDITION(cols);
        break;
      }
      case 11: {
        const std::vector<col> cols = some_cols(&weight);
        std::vector<std::vector<SQLValue>> rows;
        for (int i = in_.pick(4); i > 0; --i) {
          std::size_t row_weight = 0;
          rows.push_back(some_values(&row_weight));
          weight += row_weight;
        }
        if (spend(weight)) b.BATCH_VALUES(cols, rows);
        break;
      }
      case 12:
        b.Reset();
        break;
      case 13:
        check_text(b);
        break;
      default:
        checked_execute("UpdateBuilder::Execute", [&] { return b.Execute(); });
        break;
    }
  }

  void set(vexel::UpdateBuilder& b, const col& c) {
    std::size_t weight = 0;
    switch (in_.pick(8)) {
      case 0:
        if (spend(weight_of(a_value()))) b.SET(c, a_value());
        break;
      case 1:
        if (spend(weight_of(a_col()))) b.SET(c, a_col());
        break;
      case 2: {
        const CommonExpr& e = an_expr(&weight);
        if (spend(weight)) b.SET(c, e);
        break;
      }
      case 3: {
        const vexel::QueryBuilder& q = a_query();
        if (spend(text_size(q))) b.SET(c, q);
        break;
      }
      case 4:
        b.SET(c, some_ints());
        break;
      case 5:
        b.SET(c, some_texts());
        break;
      case 6: {
        const std::string path = in_.text();
        b.SET(c,
              in_.flag() ? vexel::JSON_SET(c, path, in_.text()) : vexel::JSON_KEY_DELETE(c, path));
        break;
      }
      default: {
        // A host's own per-dialect values, possibly without the builder's.
        std::map<tessel::DBTYPE, SQLValue> per_dialect;
        for (int i = in_.pick(4); i > 0; --i) per_dialect[in_.dialect()] = a_value();
        b.SET(c, per_dialect);
        break;
      }
    }
  }

  void remove() {
    switch (in_.pick(30)) {
      case 0:
      case 1:
      case 2:
        life_cycle(deletes_, in_.pick(3));
        return;
      case 3:
        // The moved-from builder stays in the pool: it must still answer.
        keep(deletes_, std::make_unique<vexel::DeleteBuilder>(std::move(a_delete())));
        return;
      case 4: {
        vexel::DeleteBuilder& from = a_delete();
        vexel::DeleteBuilder& to = a_delete();
        if (&from != &to) to = std::move(from);
        return;
      }
      default:
        break;
    }
    vexel::DeleteBuilder& b = a_delete();
    std::size_t weight = 0;
    switch (in_.pick(8)) {
      case 0:
        b.DELETE_FROM(a_tab());
        break;
      case 1:
      case 2:
        condition_clause(b);
        break;
      case 3: {
        const std::vector<col> cols = some_cols(&weight);
        if (spend(weight)) b.RETURNING(cols);
        break;
      }
      case 4:
        check_text(b);
        break;
      default:
        checked_execute("DeleteBuilder::Execute", [&] { return b.Execute(); });
        break;
    }
  }

  void with() {
    switch (in_.pick(40)) {
      case 0:
      case 1:
      case 2:
        life_cycle(withs_, in_.pick(3));
        return;
      case 3:
      case 4: {
        // A moved-from builder must not be used again: it is replaced.
        a_with();
        const std::size_t from =
            static_cast<std::size_t>(in_.pick(static_cast<int>(withs_.size())));
        const std::size_t to = static_cast<std::size_t>(in_.pick(static_cast<int>(withs_.size())));
        if (in_.flag()) {
          auto moved = std::make_unique<vexel::WithBuilder>(std::move(*withs_[from]));
          if (withs_[from]->GetImpl() != nullptr)
            finding("a moved-from WithBuilder kept its statement");
          withs_[from] = std::move(moved);
        } else if (from != to) {
          *withs_[to] = std::move(*withs_[from]);
          withs_[from] = std::make_unique<vexel::WithBuilder>(source_.connection(in_));
        }
        return;
      }
      default:
        break;
    }
    vexel::WithBuilder& w = a_with();
    switch (in_.pick(16)) {
      case 0:
      case 1:
      case 2:
      case 3: {
        const std::string name = in_.short_text();
        const int kind = in_.pick(4);
        if (kind == 0 && spend(text_size(a_query()))) w.AS(name, a_query());
        if (kind == 1 && spend(text_size(an_insert()))) w.AS(name, an_insert());
        if (kind == 2 && spend(text_size(an_update()))) w.AS(name, an_update());
        if (kind == 3 && spend(text_size(a_delete()))) w.AS(name, a_delete());
        break;
      }
      case 4:
        w.RECURSIVE();
        break;
      case 5:
      case 6:
      case 7: {
        const int kind = in_.pick(5);
        if (kind == 0) {
          const std::string text = in_.text();
          if (spend(text.size())) w.WithDo(text);
        }
        if (kind == 1 && spend(text_size(a_query()))) w.WithDo(a_query());
        if (kind == 2 && spend(text_size(an_insert()))) w.WithDo(an_insert());
        if (kind == 3 && spend(text_size(an_update()))) w.WithDo(an_update());
        if (kind == 4 && spend(text_size(a_delete()))) w.WithDo(a_delete());
        break;
      }
      case 8:
        w.Reset();
        break;
      case 9:
        check_text(w);
        break;
      default:
        switch (in_.pick(4)) {
          case 0:
            checked_execute("WithBuilder::Execute", [&] { return w.Execute(); });
            break;
          case 1: {
            const int time_out = in_.small();
            checked_execute("WithBuilder::ExecuteQueryUDT",
                            [&] { return w.ExecuteQueryUDT(time_out); });
            break;
          }
          case 2: {
            const std::string collation = in_.short_text();
            checked_execute("WithBuilder::ExecuteSortByCollate",
                            [&] { return w.ExecuteSortByCollate(collation); });
            break;
          }
          default:
            checked_execute("WithBuilder::ExecuteLoop", [&] { return w.ExecuteLoop(); });
            break;
        }
        break;
    }
  }

  void sequence() {
    if (life_cycle(seq_builders_, in_.pick(20))) return;
    vexel::SeqenceBuilder& b = a_builder(seq_builders_);
    switch (in_.pick(9)) {
      case 0:
        b.NEXT_VAL(a_seq(), a_tab());
        break;
      case 1:
        b.MANUAL_NEXT_VAL(a_seq(), a_tab(), a_col());
        break;
      case 2:
        b.SET_VAL(a_seq(), in_.number<int>(), a_tab());
        break;
      case 3: {
        std::shared_ptr<col> f = aggregate();
        b.SET_VAL(a_seq(), static_cast<const vexel::aggr_func&>(*f), a_tab());
        break;
      }
      case 4:
        b.Reset();
        break;
      case 5:
        render_twice("sequence", [&] { return b.tosql_next() + "|" + b.tosql_set(); });
        break;
      default:
        checked_execute("SeqenceBuilder::Execute", [&] { return b.Execute(); });
        break;
    }
  }

  void catalogue() {
    if (infos_.empty() || in_.pick(10) == 0) {
      keep(infos_, std::make_unique<vexel::CDBSystemInfo>(source_.connection(in_)));
      return;
    }
    vexel::CDBSystemInfo& info = *any(infos_);
    std::vector<std::string> out;
    switch (in_.pick(9)) {
      case 0:
        keep(infos_, std::make_unique<vexel::CDBSystemInfo>(info));
        break;
      case 1:
        // The moved-from object stays: it answers false from now on.
        keep(infos_, std::make_unique<vexel::CDBSystemInfo>(std::move(info)));
        break;
      case 2: {
        vexel::CDBSystemInfo& other = *any(infos_);
        if (in_.flag()) {
          info = other;
        } else if (&other != &info) {
          info = std::move(other);
        }
        break;
      }
      case 3: {
        bool exists = false;
        const std::string schema = in_.text();
        const std::string table = in_.text();
        checked_execute("CDBSystemInfo::IsExistsInDB",
                        [&] { return info.IsExistsInDB(schema, table, exists); });
        break;
      }
      case 4:
        checked_execute(
            "CDBSystemInfo::SequenceReset", [&] { return info.SequenceReset(); },
            FailureLines::kOneOrTwo);
        break;
      case 5: {
        const std::string schema = in_.text();
        checked_execute("CDBSystemInfo::GetAllTablesBySchema",
                        [&] { return info.GetAllTablesBySchema(schema, out); });
        break;
      }
      case 6: {
        const std::string parent = in_.text();
        checked_execute("CDBSystemInfo::GetAllChiledTableByParentTable",
                        [&] { return info.GetAllChiledTableByParentTable(parent, out); });
        break;
      }
      default:
        checked_execute("CDBSystemInfo::GetAllSchemaName",
                        [&] { return info.GetAllSchemaName(out); });
        break;
    }
  }

  Input& in_;
  ConnectionSource& source_;
  std::size_t budget_ = kTextBudget;

  std::vector<vexel::sch> schs_;
  std::vector<vexel::tab> tabs_;
  std::vector<vexel::view> views_;
  std::vector<vexel::seq> seqs_;
  // Plain columns, functions and aggregates, used through col&.
  std::vector<std::shared_ptr<col>> cols_;
  std::vector<vexel::array_col> arrays_;
  std::vector<SQLValue> values_;
  std::vector<Cond> conds_;
  std::vector<Node> nodes_;
  std::vector<Case> cases_;

  std::vector<std::unique_ptr<vexel::QueryBuilder>> queries_;
  std::vector<std::unique_ptr<vexel::InsertBuilder>> inserts_;
  std::vector<std::unique_ptr<vexel::UpdateBuilder>> updates_;
  std::vector<std::unique_ptr<vexel::DeleteBuilder>> deletes_;
  std::vector<std::unique_ptr<vexel::WithBuilder>> withs_;
  std::vector<std::unique_ptr<vexel::SeqenceBuilder>> seq_builders_;
  std::vector<std::unique_ptr<vexel::CDBSystemInfo>> infos_;
};

}  // namespace

void run_program(Input& input, ConnectionSource& source) {
  install_checking_sink();
  Program(input, source).run();
}

}  // namespace vexel_fuzz

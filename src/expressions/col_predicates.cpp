// The condition-building members of col. Dialect-independent conditions are
// finished text as soon as they are built; the others are nodes
// that render with the statement's dialect.
#include <charconv>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "expressions/ColXorExpr.h"
#include "expressions/ListText.h"
#include "expressions/PatternExpr.h"
#include "expressions/StrBitExpr.h"
#include "internal/ExprTree.h"
#include "internal/Text.h"
#include "vexel/QueryBuilder.h"
#include "vexel/SQLExpr.h"
#include "vexel/SQLValue.h"
#include "vexel/SafeValue.h"
#include "vexel/col.h"

namespace vexel {
namespace {

template <typename Node, typename... Args>
Ptr_CommonExpr node(Args&&... args) {
  return Ptr_CommonExpr(std::make_shared<Node>(std::forward<Args>(args)...));
}

// A column's own text (col_name) and a value's text, written straight into
// the condition instead of through a string of their own.
struct Name {
  const col& c;
};
struct Value {
  const SQLValue& v;
  tessel::DBTYPE db;
};
// An integer's digits, as SQLValue writes them, without a SQLValue.
struct Digits {
  template <typename T>
  explicit Digits(T v)
      : n(static_cast<std::size_t>(std::to_chars(buf, buf + sizeof buf, v).ptr - buf)) {}
  char buf[24];
  std::size_t n;
};

void put(internal::Fill& f, std::string_view s) { f.put(s.data(), s.size()); }
template <std::size_t N>
void put(internal::Fill& f, const char (&s)[N]) {
  f.put(s, N - 1);
}
void put(internal::Fill& f, const Name& n) { internal::ColumnText::put_name(f, n.c); }
void put(internal::Fill& f, const Value& v) { internal::ValueText::put(f, v.v, v.db); }
void put(internal::Fill& f, const Digits& d) { f.put(d.buf, d.n); }

// The exact length of a part, or kUnknown when only writing it tells: a
// subclass may name or render itself otherwise.
constexpr std::size_t kUnknown = static_cast<std::size_t>(-1);
std::size_t exact_size(std::string_view s) { return s.size(); }
template <std::size_t N>
constexpr std::size_t exact_size(const char (&)[N]) {
  return N - 1;
}
std::size_t exact_size(const Name& n) {
  return internal::ColumnText::own(n.c) ? internal::ColumnText::own_name_size(n.c) : kUnknown;
}
std::size_t exact_size(const Value& v) {
  const std::string* text = internal::ValueText::fixed(v.v);
  return text != nullptr ? text->size() : kUnknown;
}
std::size_t exact_size(const Digits& d) { return d.n; }

// Parts whose exact length is known, written without a check per piece.
void write(internal::Into& to, std::string_view s) { to.put(s.data(), s.size()); }
template <std::size_t N>
void write(internal::Into& to, const char (&s)[N]) {
  to.put(s, N - 1);
}
void write(internal::Into& to, const Name& n) { internal::ColumnText::put_own_name(to, n.c); }
void write(internal::Into& to, const Value& v) {
  const std::string* text = internal::ValueText::fixed(v.v);
  to.put(text->data(), text->size());
}
void write(internal::Into& to, const Digits& d) { to.put(d.buf, d.n); }

// A finished condition: its parts appended once into one text, kept in the
// holder without a node. A short one is put together on the stack and
// copied once.
template <typename... Parts>
Ptr_CommonExpr text(const Parts&... parts) {
  Ptr_CommonExpr holder;
  std::string& out = internal::ExprTree::finished_text(holder);
  char small[256];
  // The known lengths; a part only writing tells grows the text as it goes.
  std::size_t total = 0;
  bool known = true;
  for (const std::size_t n : {exact_size(parts)...}) {
    if (n == kUnknown) {
      known = false;
    } else {
      total += n;
    }
  }
  if (known && total <= sizeof small) {
    internal::Into into{small};
    (write(into, parts), ...);
    out.append(small, total);  // `out` is a new holder's, empty
    return holder;
  }
  {
    internal::Fill f(out, total);
    (put(f, parts), ...);
  }
  return holder;
}

std::string quoted(const std::string& s) { return "'" + s + "'"; }

// "c IN (1,2,3)": the numbers written straight into the condition.
Ptr_CommonExpr int_condition(const col& c, std::string_view op, internal::Span<int> values) {
  Ptr_CommonExpr holder;
  std::string& out = internal::ExprTree::finished_text(holder);
  const auto write = [&](auto& sink) {
    internal::ColumnText::put_name(sink, c);
    sink.put(op.data(), op.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (i > 0) sink.put(',');
      sink.put_number(values[i]);
    }
    sink.put(')');
  };
  // An int takes at most 11 characters, and one more for the comma.
  const std::size_t bound = op.size() + 12 * values.size() + 1;
  if (internal::ColumnText::own(c)) {
    internal::append_bounded(out, internal::ColumnText::own_name_size(c) + bound, write);
  } else {
    internal::Fill f(out, bound);
    write(f);
  }
  return holder;
}

std::string quoted_list(const std::vector<std::string>& values) {
  return internal::quoted_list(values, ",", '\'');
}

constexpr std::string_view kIn = " IN (";
constexpr std::string_view kNotIn = " NOT IN (";

}  // namespace

// Numbers are formatted exactly as SQLValue formats them.
// Narrow values widen to int, as in SQLValue.
Ptr_CommonExpr col::operator==(const short& v) const {
  return text(Name{*this}, " = ", Digits(static_cast<int>(v)));
}
Ptr_CommonExpr col::operator==(const unsigned short& v) const {
  return text(Name{*this}, " = ", Digits(static_cast<int>(v)));
}
Ptr_CommonExpr col::operator==(const int& v) const { return text(Name{*this}, " = ", Digits(v)); }
Ptr_CommonExpr col::operator==(const unsigned int& v) const {
  return text(Name{*this}, " = ", Digits(v));
}
Ptr_CommonExpr col::operator==(const long& v) const { return text(Name{*this}, " = ", Digits(v)); }
Ptr_CommonExpr col::operator==(const unsigned long& v) const {
  return text(Name{*this}, " = ", Digits(v));
}
Ptr_CommonExpr col::operator==(const long long& v) const {
  return text(Name{*this}, " = ", Digits(v));
}
Ptr_CommonExpr col::operator==(const unsigned long long& v) const {
  return text(Name{*this}, " = ", Digits(v));
}
Ptr_CommonExpr col::operator==(const float& v) const { return eq(SQLValue(v)); }
Ptr_CommonExpr col::operator==(const double& v) const { return eq(SQLValue(v)); }
Ptr_CommonExpr col::operator==(const std::string& s) const { return eq(SQLValue(s)); }
Ptr_CommonExpr col::operator==(const char* s) const { return eq(SQLValue(s)); }
Ptr_CommonExpr col::operator==(const col& other) const {
  return text(Name{*this}, " = ", Name{other});
}
Ptr_CommonExpr col::operator==(const SQLValue& v) const { return eq(v); }
Ptr_CommonExpr col::operator==(const QueryBuilder& q) const {
  return text(Name{*this}, " = (", q.tosql(), ")");
}
Ptr_CommonExpr col::operator!=(const QueryBuilder& q) const {
  return text(Name{*this}, " != (", q.tosql(), ")");
}
Ptr_CommonExpr col::operator<(const QueryBuilder& q) const {
  return text(Name{*this}, " < (", q.tosql(), ")");
}
Ptr_CommonExpr col::operator<=(const QueryBuilder& q) const {
  return text(Name{*this}, " <= (", q.tosql(), ")");
}
Ptr_CommonExpr col::operator>(const QueryBuilder& q) const {
  return text(Name{*this}, " > (", q.tosql(), ")");
}
Ptr_CommonExpr col::operator>=(const QueryBuilder& q) const {
  return text(Name{*this}, " >= (", q.tosql(), ")");
}
Ptr_CommonExpr col::eq(const SQLValue& v) const {
  return text(Name{*this}, " = ", Value{v, db_type_});
}

Ptr_CommonExpr col::operator!=(const col& other) const {
  return text(Name{*this}, " != ", Name{other});
}
Ptr_CommonExpr col::operator!=(const SQLValue& v) const { return neq(v); }
Ptr_CommonExpr col::neq(const SQLValue& v) const {
  return text(Name{*this}, " != ", Value{v, db_type_});
}

Ptr_CommonExpr col::operator<(const SQLValue& v) const { return lt(v); }
Ptr_CommonExpr col::lt(const SQLValue& v) const {
  return text(Name{*this}, " < ", Value{v, db_type_});
}
Ptr_CommonExpr col::lt(const col& other) const { return text(Name{*this}, " < ", Name{other}); }
Ptr_CommonExpr col::operator<=(const col& other) const {
  return text(Name{*this}, " <= ", Name{other});
}
Ptr_CommonExpr col::operator<=(const SQLValue& v) const {
  return text(Name{*this}, " <= ", Value{v, db_type_});
}
Ptr_CommonExpr col::operator>(const col& other) const {
  return text(Name{*this}, " > ", Name{other});
}
Ptr_CommonExpr col::operator>(const SQLValue& v) const { return gt(v); }
Ptr_CommonExpr col::gt(const SQLValue& v) const {
  return text(Name{*this}, " > ", Value{v, db_type_});
}
Ptr_CommonExpr col::operator>=(const col& other) const {
  return text(Name{*this}, " >= ", Name{other});
}
Ptr_CommonExpr col::operator>=(const SQLValue& v) const {
  return text(Name{*this}, " >= ", Value{v, db_type_});
}

Ptr_CommonExpr col::operator|(const SQLValue& v) const {
  return text(Name{*this}, " | ", Value{v, db_type_});
}
Ptr_CommonExpr col::operator|(const SQLExpr& e) const {
  return text(Name{*this}, " | ", e.ToExpr());
}

Ptr_CommonExpr col::in(const std::string& list) const { return text(Name{*this}, kIn, list, ")"); }
Ptr_CommonExpr col::in(const std::vector<int>& values) const {
  return int_condition(*this, kIn, values);
}
Ptr_CommonExpr col::in(const std::vector<std::string>& values) const {
  return in(quoted_list(values));
}
Ptr_CommonExpr col::in(const QueryBuilder& q) const { return in(q.tosql()); }
Ptr_CommonExpr col::in(std::initializer_list<int> values) const {
  return int_condition(*this, kIn, values);
}
Ptr_CommonExpr col::in(std::initializer_list<const char*> values) const {
  return in(internal::string_items(values));
}

Ptr_CommonExpr col::notin(const std::string& list) const {
  return text(Name{*this}, kNotIn, list, ")");
}
Ptr_CommonExpr col::notin(const std::vector<int>& values) const {
  return int_condition(*this, kNotIn, values);
}
Ptr_CommonExpr col::notin(const std::vector<std::string>& values) const {
  return notin(quoted_list(values));
}
Ptr_CommonExpr col::notin(const QueryBuilder& q) const { return notin(q.tosql()); }
Ptr_CommonExpr col::notin(std::initializer_list<int> values) const {
  return int_condition(*this, kNotIn, values);
}
Ptr_CommonExpr col::notin(std::initializer_list<const char*> values) const {
  return notin(internal::string_items(values));
}

Ptr_CommonExpr col::BETWEEN(const SQLValue& low, const SQLValue& high) const {
  return text(Name{*this}, " BETWEEN ", Value{low, db_type_}, " AND ", Value{high, db_type_});
}

// The trailing blank is part of the text hosts match.
Ptr_CommonExpr col::is_null() const { return text(Name{*this}, " IS NULL "); }
Ptr_CommonExpr col::is_not_null() const { return text(Name{*this}, " IS NOT NULL "); }

Ptr_CommonExpr col::like(const std::string& pattern) const {
  return node<LikeExpr>(col_name(), pattern);
}
Ptr_CommonExpr col::ilike(const std::string& pattern) const {
  return node<ILikeExpr>(col_name(), pattern);
}
Ptr_CommonExpr col::not_like(const std::string& pattern) const {
  return node<LikeExpr>(col_name(), pattern, true);
}
Ptr_CommonExpr col::not_ilike(const std::string& pattern) const {
  return node<ILikeExpr>(col_name(), pattern, true);
}
Ptr_CommonExpr col::similar_to(const SQLValue& v) const {
  return node<ColRegexpExpr>(kSimilarTo, col_name(), internal::ValueText::of(v, db_type_));
}
Ptr_CommonExpr col::regexp(const std::string& pattern) const {
  return node<ColRegexpExpr>(kRegexp, col_name(), quoted(pattern));
}
Ptr_CommonExpr col::regexp_cap(const std::string& pattern) const {
  return node<ColRegexpExpr>(kRegexpCap, col_name(), quoted(pattern));
}
Ptr_CommonExpr col::not_regexp(const std::string& pattern) const {
  return node<ColRegexpExpr>(kNotRegexp, col_name(), quoted(pattern));
}
Ptr_CommonExpr col::not_regexp_cap(const std::string& pattern) const {
  return node<ColRegexpExpr>(kNotRegexpCap, col_name(), quoted(pattern));
}
Ptr_CommonExpr col::full_text_search(const std::string& words) const {
  return node<FullTextExpr>(only_col_name(), words);
}
Ptr_CommonExpr col::XOR(const SQLValue& v) const {
  return node<ColXorExpr>(col_name(), internal::ValueText::of(v, db_type_));
}
Ptr_CommonExpr col::XOR(const SQLExpr& e) const {
  return node<ColXorExpr>(col_name(), SQLValue(e).GetValue());
}

Ptr_CommonExpr col::str_bit_and(const std::string& bits) const {
  return node<StrBitAndExpr>(col_name(), bits);
}
Ptr_CommonExpr col::str_bit_or(const std::string& bits) const {
  return node<StrBitOrExpr>(col_name(), bits);
}
Ptr_CommonExpr col::str_bit_xor(const std::string& bits) const {
  return node<StrBitXorExpr>(col_name(), bits);
}
Ptr_CommonExpr col::str_bit_not() const { return node<StrBitNotExpr>(col_name()); }
Ptr_CommonExpr col::str_bit_shift_left(int n) const {
  return node<StrBitShiftLeftExpr>(col_name(), n);
}
Ptr_CommonExpr col::str_bit_shift_right(int n) const {
  return node<StrBitShiftRightExpr>(col_name(), n);
}

namespace {

std::string value_list(const std::vector<SafeValue>& values, tessel::DBTYPE db) {
  std::string list;
  for (const SafeValue& v : values) {
    if (!list.empty()) list += ',';
    list += v.GetExpr(db);
  }
  return list;
}

}  // namespace

// No engine takes an empty list: the empty forms say what it means.
Ptr_CommonExpr col::in_values(const std::vector<SafeValue>& values) const {
  if (values.empty()) return text("1 = 0");
  return text(Name{*this}, kIn, value_list(values, db_type_), ")");
}

Ptr_CommonExpr col::not_in_values(const std::vector<SafeValue>& values) const {
  if (values.empty()) return text("1 = 1");
  return text(Name{*this}, kNotIn, value_list(values, db_type_), ")");
}

Ptr_CommonExpr col::like_escaped(const SafeValue& pattern, char escape) const {
  return text(Name{*this}, " LIKE ", pattern.GetExpr(db_type_), " ESCAPE ",
              SafeValue(std::string(1, escape)).GetExpr(db_type_));
}

}  // namespace vexel

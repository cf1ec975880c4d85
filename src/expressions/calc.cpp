// Computed values: the text of each operation is written once, when the
// operation is built, in the dialect of its first operand that has one.
#include "vexel/calc.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "internal/ExprTree.h"
#include "vexel/QueryBuilder.h"
#include "vexel/SQLValue.h"

namespace vexel {
namespace {

// Expressions of literals alone are written again when they meet a dialect;
// past this depth one is fixed in PostgreSQL's forms instead, so that writing
// it again never recurses deeply.
constexpr int kMaxWaitingDepth = 64;

// Atom when nothing outside brackets and quotes could bind to a neighbour
// (a column, a call, a literal); otherwise the lowest level, so that a
// column extended in place ("t.a + t.b") is bracketed as an operand.
calc::Level level_of_text(const std::string& text) {
  int depth = 0;
  char quote = 0;
  for (char c : text) {
    if (quote != 0) {
      if (c == quote) quote = 0;
    } else if (c == '\'' || c == '"' || c == '`') {
      quote = c;
    } else if (c == '[') {
      quote = ']';
    } else if (c == '(') {
      ++depth;
    } else if (c == ')') {
      --depth;
    } else if (depth == 0 && (c == ' ' || std::strchr("+-*/%|<>=!~&^", c) != nullptr)) {
      return calc::kLowest;
    }
  }
  return text.empty() ? calc::kLowest : calc::kAtom;
}

// A text that starts with a minus binds no tighter than a unary minus, and
// must not follow another minus: "--" starts a comment.
std::string operand_text(std::string text, calc::Level level, calc::Level at_least) {
  if (!text.empty() && text[0] == '-' && level > calc::kUnary) level = calc::kUnary;
  if (level >= at_least) return text;
  text.insert(text.begin(), '(');
  text.push_back(')');
  return text;
}

// Writes "a op b" between two operand texts.
calc::Render infix(const char* sign) {
  return [sign](tessel::DBTYPE, const std::vector<std::string>& t) { return t[0] + sign + t[1]; };
}

// A literal waits for a dialect: its text is the value's form in it.
template <typename Value>
calc waiting_literal(const Value& v) {
  return calc::make({}, calc::kAtom, [v](tessel::DBTYPE db, const std::vector<std::string>&) {
    return v.GetExpr(db);
  });
}

}  // namespace

struct calc::Recipe {
  // Copies of the operands, so that the expression can be written again.
  struct Held {
    calc value;
    Level at_least;
  };
  std::vector<Held> operands;
  Render render;
  int depth = 0;
};

template <typename List>
std::string calc::write(const List& operands, tessel::DBTYPE db, const Render& render) {
  std::vector<std::string> texts;
  texts.reserve(operands.size());
  for (const auto& o : operands) {
    texts.push_back(operand_text(o.value.text_in(db), o.value.level_, o.at_least));
  }
  return render(db, texts);
}

calc::calc(std::string text, Level level, tessel::DBTYPE db, std::shared_ptr<const Recipe> render)
    : col(std::move(text)), level_(level), render_(std::move(render)) {
  set_db_type(db);
}

calc::calc(const col& c) : calc(c.col_name(), kAtom, c.db_type(), nullptr) {
  level_ = level_of_text(only_col_name());
}

calc::calc(const SafeValue& v) : calc(waiting_literal(v)) {}

calc::calc(const SQLValue& v) : calc(waiting_literal(v)) {
  level_ = level_of_text(only_col_name());
}

calc::calc(const QueryBuilder& subquery)
    : calc("(" + subquery.tosql() + ")", kAtom, subquery.db_type(), nullptr) {}

calc::calc(const CommonExpr& e, tessel::DBTYPE db)
    : calc(internal::ExprTree::render(e, db), kAtom, db, nullptr) {
  level_ = level_of_text(only_col_name());
}

std::string calc::text_in(tessel::DBTYPE db) const {
  // Unknown codes take PostgreSQL's forms, which the text already has.
  if (!render_ || (db != tessel::DB_SQLITE && db != tessel::DB_SQLSERVER)) return col_name();
  return write(render_->operands, db, render_->render);
}

calc calc::for_dialect(tessel::DBTYPE db) const {
  if (!render_) return *this;
  return calc(text_in(db), level_, db, nullptr);
}

calc calc::make(const std::vector<Operand>& operands, Level level, Render render) {
  const calc* with_dialect = nullptr;
  for (const Operand& o : operands) {
    if (!o.value.render_) {
      with_dialect = &o.value;
      break;
    }
  }
  const tessel::DBTYPE db = with_dialect ? with_dialect->db_type() : tessel::DB_POSTGRESQL;
  std::string text = write(operands, db, render);
  if (with_dialect != nullptr) return calc(std::move(text), level, db, nullptr);
  auto recipe = std::make_shared<Recipe>();
  for (const Operand& o : operands) {
    recipe->operands.push_back({o.value, o.at_least});
    recipe->depth = std::max(recipe->depth, o.value.render_->depth + 1);
  }
  if (recipe->depth > kMaxWaitingDepth) return calc(std::move(text), level, db, nullptr);
  recipe->render = std::move(render);
  return calc(std::move(text), level, db, std::move(recipe));
}

// "a op b": the left operand bracketed below the operator's level, the right
// one also at it, so that a - (b - c) keeps its brackets.
calc calc::arithmetic(const calc& a, Op op, const calc& b) {
  static constexpr const char* kSigns[] = {" + ", " - ", " * ", " / ", " % "};
  if (op < kAdd || op > kModulo) return a;
  const Level level = op <= kSubtract ? kAdditive : kMultiplicative;
  return make({{a, level}, {b, static_cast<Level>(level + 1)}}, level, infix(kSigns[op]));
}

// Comparisons bind less tightly than any operator a calc holds.
Ptr_CommonExpr calc::compare(const calc& a, Comparison op, const calc& b) {
  static constexpr const char* kSigns[] = {" = ", " != ", " < ", " <= ", " > ", " >= "};
  if (op < kEqual || op > kGreaterOrEqual) return Ptr_CommonExpr();
  const calc c = make({{a, kLowest}, {b, kLowest}}, kLowest, infix(kSigns[op]));
  return internal::ExprTree::finished(c.only_col_name());
}

calc operator-(const calc& a) {
  return calc::make({{a, calc::kAtom}}, calc::kUnary,
                    [](tessel::DBTYPE, const std::vector<std::string>& t) { return "-" + t[0]; });
}

}  // namespace vexel

// Implementation base of QueryBuilder: holds the SELECT statement's clauses
// as text, already rendered in the implementation's dialect, and renders the
// statement through one shared renderer. Dialect classes only say how their
// text and execution differ (SelectForm, ExecForm).
#ifndef VEXEL_SQLQUERY_H
#define VEXEL_SQLQUERY_H

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "internal/Execution.h"
#include "internal/Rare.h"
#include "internal/ShortText.h"
#include "internal/Text.h"
#include "tessel/CConnect.h"
#include "vexel/QueryBuilder.h"
#include "vexel/col.h"

namespace vexel {

class CommonExpr;
class SQLValue;

class SQLQuery {
 public:
  // How a dialect's SELECT text differs.
  struct SelectForm {
    bool select_expression;  // the SELECT(expr) text stands after "SELECT "
    bool always_from;        // " FROM " is written even with no FROM text
    bool fetch_paging;       // OFFSET n ROWS FETCH NEXT m ROWS ONLY
  };
  // How a dialect's execution differs.
  using ExecForm = internal::QueryRoutes;
  using Variant = internal::QueryVariant;

  explicit SQLQuery(const std::shared_ptr<tessel::CConnect>& conn);
  SQLQuery(const SQLQuery&) = default;
  SQLQuery& operator=(const SQLQuery&) = delete;

  virtual std::string tosql() const = 0;
  virtual bool Execute() = 0;
  virtual bool ExecuteQueryContainView() = 0;
  virtual bool ExecuteQueryUDT(const int& time_out) = 0;
  virtual bool ExecuteSortByCollate(const std::string& collate_name) = 0;
  virtual bool ExecuteLoop() = 0;

  tessel::DBTYPE db_type() const { return db_type_; }

  // Clauses. Texts are rendered now, in this implementation's dialect.
  void SELECT(internal::Span<col> cols);
  void SELECT(const CommonExpr& e);
  void FROM(std::string from_text) { from_ = std::move(from_text); }
  // The table's text, written in place.
  std::string& FROM() { return from_; }
  void JOIN(std::string_view keyword, std::string target);
  void join_table(std::string_view keyword, const tab& t);
  void ON(const CommonExpr& condition);
  void WHERE(const CommonExpr& condition);
  void HAVING(const CommonExpr& condition);
  void ON(Ptr_CommonExpr&& condition);
  void WHERE(Ptr_CommonExpr&& condition);
  void HAVING(Ptr_CommonExpr&& condition);
  void AND(const CommonExpr& condition);
  void OR(const CommonExpr& condition);
  void GROUP_BY(internal::Span<col> cols);
  void ORDER_BY(internal::Span<col> cols);
  void LIMIT(int limit) { limit_ = limit; }
  void OFFSET(int offset) { offset_ = offset; }
  void UNION(const std::string& text) { extra_.get().union_ = text; }
  void UNION_ALL(const std::string& text) { extra_.get().union_all = text; }
  void EXCEPT(const std::string& text) { extra_.get().except = text; }
  void INTERSECT(const std::string& text) { extra_.get().intersect = text; }

 protected:
  ~SQLQuery() = default;

  std::string render(const SelectForm& form) const;
  // Writes the statement into a Fill or an Into.
  template <typename Sink>
  void write(Sink& f, const SelectForm& form) const;
  bool run(const ExecForm& form, Variant variant, const internal::Site& site, int time_out = 0,
           const std::string& collate_name = std::string());

 private:
  // Replaces `target` by the condition's text in this dialect.
  void assign(std::string& target, const CommonExpr& condition) const;
  void assign(std::string& target, Ptr_CommonExpr&& condition) const;
  void assign(internal::ShortText<64>& target, const CommonExpr& condition) const;
  void extend(std::string_view connector, const CommonExpr& condition);
  // The n-th JOIN and the n-th ON form entry n, whatever order they came
  // in; an ON beyond the joins renders nowhere, but AND/OR still extend it.
  struct Join {
    std::string_view keyword;  // a literal; empty until the entry's JOIN came
    std::string target;
    std::string on;
  };
  Join& entry(std::size_t n);
  const Join& entry(std::size_t n) const {
    return n < kJoinsInPlace ? joins_[n] : more_joins_[n - kJoinsInPlace];
  }

  // Column lists are kept as their text in this dialect; a list that was
  // given still writes its keyword when every column renders empty.
  std::string from_;
  std::string select_text_;
  std::string order_text_;
  std::string group_text_;
  bool has_order_ = false;
  bool has_group_ = false;
  internal::ShortText<64> where_;
  int limit_ = 0;
  int offset_ = 0;
  // The first entries in place: few statements have more joins.
  static constexpr std::size_t kJoinsInPlace = 3;
  Join joins_[kJoinsInPlace];
  std::vector<Join> more_joins_;
  std::size_t join_count_ = 0;
  std::size_t on_count_ = 0;
  // The clauses few statements have.
  struct Extra {
    std::string having;
    std::string union_;
    std::string union_all;
    std::string except;
    std::string intersect;
    std::string select_expression;
  };
  internal::Rare<Extra> extra_;
  std::shared_ptr<tessel::CConnect> db_conn_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
};

// The implementation for `db` (see internal::place_dialect) built in a
// builder's slot, from a connection or as a copy of `other`.
void place(detail::QuerySlot& slot, tessel::DBTYPE db,
           const std::shared_ptr<tessel::CConnect>& conn);
void place(detail::QuerySlot& slot, tessel::DBTYPE db, const SQLQuery& other);
// A copy of `other` on the heap, for builders that share it; null if
// allocation fails.
std::shared_ptr<SQLQuery> copy_query(tessel::DBTYPE db, const SQLQuery& other);

}  // namespace vexel

#endif  // VEXEL_SQLQUERY_H

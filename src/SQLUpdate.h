// Implementation base of UpdateBuilder: assignments keyed by column name,
// the condition, returned columns, VACUUM tables, and the multi-table and
// batch pieces, with the one renderer of the three dialect forms.
#ifndef VEXEL_SQLUPDATE_H
#define VEXEL_SQLUPDATE_H

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "internal/Execution.h"
#include "internal/Rare.h"
#include "internal/ShortText.h"
#include "internal/Text.h"
#include "internal/TextMap.h"
#include "internal/WhereClause.h"
#include "tessel/CConnect.h"
#include "vexel/SQLValue.h"
#include "vexel/UpdateBuilder.h"
#include "vexel/col.h"

namespace vexel {

class SQLUpdate : public internal::WhereClause {
 public:
  explicit SQLUpdate(const std::shared_ptr<tessel::CConnect>& conn);
  SQLUpdate(const SQLUpdate&) = default;
  SQLUpdate& operator=(const SQLUpdate&) = delete;

  virtual std::string tosql() const = 0;
  virtual bool Execute() = 0;
  virtual bool ExecuteQuery() = 0;
  virtual bool ExecuteReturning() = 0;

  tessel::DBTYPE db_type() const { return db_type_; }

  // The table's text, written in place.
  internal::ShortText<48>& UPDATE() { return table_name_; }
  void UPDATE_COLUMN(const std::string& name) { extra_.get().update_column = name; }
  // Keyed by name: a later SET of a column replaces it, and the list
  // renders in name order.
  // Keyed by the column's text in dialect `db`.
  void SET(const col& c, tessel::DBTYPE db, std::string_view value) {
    set_values_.set(c, db, value);
  }
  void RETURNING(internal::Span<col> cols, tessel::DBTYPE db) { returned_.add(cols, db); }
  void VACUUM(const std::vector<std::string>& tables) {
    append(extra_.get().vacuum_tables, tables);
  }

  void UNION_SET(const std::string& target, const std::string& source) {
    extra_.get().union_sets.emplace_back(target, source);
  }
  void UNION_FROM(const std::vector<std::string>& tables) {
    append(extra_.get().union_tables, tables);
  }
  void UNION_CONDITION(const std::string& left, const std::string& right) {
    extra_.get().union_conditions.emplace_back(left, right);
  }
  void BATCH_SET(const std::vector<col>& cols) { append(extra_.get().batch_sets, cols); }
  void BATCH_CONDITION(const std::vector<col>& cols) {
    append(extra_.get().batch_conditions, cols);
  }
  // Adds the columns and replaces the rows; logs and keeps everything when
  // the rows are empty or do not fit the columns.
  void BATCH_VALUES(const std::vector<col>& cols, const std::vector<std::vector<SQLValue>>& rows);

  enum class Vacuum { kStatements, kEmpty, kIgnored };
  enum class Batch { kJoinValues, kCase, kIgnored };

  // How one dialect writes the statement.
  struct Form {
    Vacuum vacuum;
    bool column_form;          // UPDATE(col) makes the whole statement
    Batch batch;               // also decides whether the multi-table piece renders
    const char* union_joiner;  // between multi-table conditions
    const char* output_ref;    // non-null: " OUTPUT " + ref + name before WHERE
  };

 protected:
  ~SQLUpdate() = default;

  std::string render(const Form& form) const;
  bool run(const Form& form, internal::ConnOp op, const internal::Site& site);

 private:
  template <typename T>
  static void append(std::vector<T>& to, const std::vector<T>& from) {
    to.insert(to.end(), from.begin(), from.end());
  }
  std::string union_piece(const Form& form) const;
  std::string join_values_piece() const;
  std::string case_piece() const;

  internal::ShortText<48> table_name_;
  internal::ColumnTexts returned_;
  internal::TextMap set_values_;
  // The clauses few statements have.
  struct Extra {
    std::string update_column;
    std::vector<std::string> vacuum_tables;
    std::vector<std::pair<std::string, std::string>> union_sets;
    std::vector<std::pair<std::string, std::string>> union_conditions;
    std::vector<std::string> union_tables;
    std::vector<col> batch_conditions;
    std::vector<col> batch_sets;
    std::vector<col> tmp_cols;
    std::vector<std::vector<SQLValue>> tmp_values;
  };
  internal::Rare<Extra> extra_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
  std::shared_ptr<tessel::CConnect> db_conn_;
};

// The implementation for `db` (see internal::place_dialect) built in a
// builder's slot, from a connection or as a copy of `other`.
void place(detail::UpdateSlot& slot, tessel::DBTYPE db,
           const std::shared_ptr<tessel::CConnect>& conn);
void place(detail::UpdateSlot& slot, tessel::DBTYPE db, const SQLUpdate& other);
// A copy of `other` on the heap, for builders that share it; null if
// allocation fails.
std::shared_ptr<SQLUpdate> copy_update(tessel::DBTYPE db, const SQLUpdate& other);

}  // namespace vexel

#endif  // VEXEL_SQLUPDATE_H

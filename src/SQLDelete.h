// Implementation base of DeleteBuilder: the target table, the condition and
// the returned columns as rendered text, and the one renderer of the three
// dialect forms.
#ifndef VEXEL_SQLDELETE_H
#define VEXEL_SQLDELETE_H

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "internal/Execution.h"
#include "internal/ShortText.h"
#include "internal/Text.h"
#include "internal/WhereClause.h"
#include "tessel/CConnect.h"
#include "vexel/DeleteBuilder.h"
#include "vexel/col.h"

namespace vexel {

class SQLDelete : public internal::WhereClause {
 public:
  explicit SQLDelete(const std::shared_ptr<tessel::CConnect>& conn);
  SQLDelete(const SQLDelete&) = default;
  SQLDelete& operator=(const SQLDelete&) = delete;

  virtual std::string tosql() const = 0;
  virtual bool Execute() = 0;
  virtual bool ExecuteQuery() = 0;
  virtual bool ExecuteReturning() = 0;

  tessel::DBTYPE db_type() const { return db_type_; }

  // The table's text, written in place.
  internal::ShortText<48>& DELETE_FROM() { return table_name_; }
  void RETURNING(internal::Span<col> cols, tessel::DBTYPE db) { returned_.add(cols, db); }

  // How one dialect writes the statement.
  struct Form {
    bool drop_schema;        // the table name loses everything up to its first "."
    const char* output_ref;  // non-null: " OUTPUT " + ref + name before WHERE
    bool semicolon;          // ";" after the text in Execute and ExecuteQuery
  };

 protected:
  ~SQLDelete() = default;

  std::string render(const Form& form) const;
  bool run(const Form& form, internal::ConnOp op, const internal::Site& site);

 private:
  internal::ShortText<48> table_name_;
  internal::ColumnTexts returned_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
  std::shared_ptr<tessel::CConnect> db_conn_;
};

// The implementation for `db` (see internal::place_dialect) built in a
// builder's slot, from a connection or as a copy of `other`.
void place(detail::DeleteSlot& slot, tessel::DBTYPE db,
           const std::shared_ptr<tessel::CConnect>& conn);
void place(detail::DeleteSlot& slot, tessel::DBTYPE db, const SQLDelete& other);
// A copy of `other` on the heap, for builders that share it; null if
// allocation fails.
std::shared_ptr<SQLDelete> copy_delete(tessel::DBTYPE db, const SQLDelete& other);

}  // namespace vexel

#endif  // VEXEL_SQLDELETE_H

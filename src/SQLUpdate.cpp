#include "SQLUpdate.h"

#include <map>

#include "internal/Facade.h"
#include "internal/Text.h"
#include "postgres/PGUpdate.h"
#include "sqlite/SQLiteUpdate.h"
#include "sqlserver/SQLServerUpdate.h"
#include "vexel/SQLExpr.h"

namespace vexel {
namespace {

// Removes a trailing `tail` when present.
void drop_tail(std::string& text, const std::string& tail) {
  if (text.size() >= tail.size() &&
      text.compare(text.size() - tail.size(), tail.size(), tail) == 0) {
    text.resize(text.size() - tail.size());
  }
}

std::string value_text(const std::vector<SQLValue>& row, std::size_t at, tessel::DBTYPE db) {
  // A row shorter than the columns renders nothing for the missing place.
  return at < row.size() ? internal::ValueText::of(row[at], db) : std::string();
}

}  // namespace

SQLUpdate::SQLUpdate(const std::shared_ptr<tessel::CConnect>& conn) : db_conn_(conn) {
  if (db_conn_) db_type_ = db_conn_->GetDBType();
}

void SQLUpdate::BATCH_VALUES(const std::vector<col>& cols,
                             const std::vector<std::vector<SQLValue>>& rows) {
  if (rows.empty()) {
    VEXEL_LOG(5, "[%s]tmp_values is empty.[%s(%d)]");
    return;
  }
  if (cols.empty()) {
    VEXEL_LOG(5, "[%s]tmp_cols is empty.[%s(%d)]");
    return;
  }
  // Only the first row is checked; hosts build the rows from one source.
  if (cols.size() != rows.front().size()) {
    VEXEL_LOG(5, "[%s]tmp_cols.size() is not equal to tmp_values[0].size().[%s(%d)]");
    return;
  }
  append(extra_.get().tmp_cols, cols);
  extra_.get().tmp_values = rows;
}

std::string SQLUpdate::union_piece(const Form& form) const {
  const Extra& e = *extra_.find();
  std::string sets;
  for (const auto& pair : e.union_sets) {
    if (!sets.empty()) sets += ",";
    sets += pair.first + "=" + pair.second;
  }
  std::string tables;
  for (const std::string& t : e.union_tables) {
    if (!tables.empty()) tables += ",";
    tables += t;
  }
  std::string conditions;
  for (std::size_t i = 0; i < e.union_conditions.size(); ++i) {
    if (i > 0) conditions += form.union_joiner;
    conditions += e.union_conditions[i].first + "=" + e.union_conditions[i].second;
  }
  return sets + " FROM " + tables + " WHERE " + conditions + ", ";
}

std::string SQLUpdate::join_values_piece() const {
  const Extra& e = *extra_.find();
  std::string sets;
  for (const col& c : e.batch_sets) {
    if (!sets.empty()) sets += ",";
    sets += c.col_name() + "=tmp." + c.col_name();
  }
  // Rows are written "(1, 'a') , (2, 'b') ) ": the blanks are part of the
  // text hosts compare.
  std::string values;
  if (!e.tmp_values.empty()) {
    values = "(VALUES ";
    for (const auto& row : e.tmp_values) {
      std::string one = "(";
      for (const SQLValue& v : row) one += internal::ValueText::of(v, db_type_) + ", ";
      drop_tail(one, ", ");
      values += one + ") " + ", ";
    }
    drop_tail(values, ", ");
    values += ") ";
  }
  std::string alias = "tmp(";
  for (std::size_t i = 0; i < e.tmp_cols.size(); ++i) {
    if (i > 0) alias += ",";
    alias += e.tmp_cols[i].col_name();
  }
  alias += ")";
  std::string condition;
  for (std::size_t i = 0; i < e.batch_conditions.size(); ++i) {
    if (i > 0) condition += " AND ";
    const std::string name = e.batch_conditions[i].col_name();
    condition.append(table_name_.view()).append(".").append(name).append("=tmp.").append(name);
  }
  return sets + " FROM " + values + " AS " + alias + " WHERE " + condition + ", ";
}

std::string SQLUpdate::case_piece() const {
  const Extra& e = *extra_.find();
  // Unknown names fall back to the first position, as the rows dictate.
  std::map<std::string, std::size_t> position;
  for (std::size_t i = 0; i < e.tmp_cols.size(); ++i) position[e.tmp_cols[i].col_name()] = i;
  auto at = [&position](const col& c) {
    const auto it = position.find(c.col_name());
    return it != position.end() ? it->second : std::size_t{0};
  };
  std::vector<std::string> branches(e.batch_sets.size());
  std::vector<std::string> row_conditions;
  for (const auto& row : e.tmp_values) {
    std::string condition;
    for (std::size_t k = 0; k < e.batch_conditions.size(); ++k) {
      if (k > 0) condition += " AND ";
      condition += e.batch_conditions[k].col_name() + "=" +
                   value_text(row, at(e.batch_conditions[k]), db_type_);
    }
    row_conditions.push_back(condition);
    for (std::size_t s = 0; s < e.batch_sets.size(); ++s) {
      branches[s] +=
          " WHEN " + condition + " THEN " + value_text(row, at(e.batch_sets[s]), db_type_);
    }
  }
  // " CASE " then " WHEN " and " END " then " WHERE " double the blanks;
  // hosts compare the text as it stands.
  std::string cases;
  for (std::size_t s = 0; s < e.batch_sets.size(); ++s) {
    if (s > 0) cases += ",";
    cases += e.batch_sets[s].col_name() + "=" + " CASE " + branches[s] + " END ";
  }
  std::string filter;
  if (e.batch_conditions.size() == 1) {
    const col& key = e.batch_conditions.front();
    filter = key.col_name() + " IN (";
    for (std::size_t r = 0; r < e.tmp_values.size(); ++r) {
      if (r > 0) filter += ",";
      filter += value_text(e.tmp_values[r], at(key), db_type_);
    }
    filter += ")";
  } else {
    for (std::size_t r = 0; r < row_conditions.size(); ++r) {
      if (r > 0) filter += " OR ";
      filter += "(" + row_conditions[r] + ")";
    }
  }
  return cases + " WHERE " + filter + ", ";
}

std::string SQLUpdate::render(const Form& form) const {
  const Extra* e = extra_.find();
  if (e != nullptr && !e->vacuum_tables.empty()) {
    if (form.vacuum == Vacuum::kEmpty) return std::string();
    if (form.vacuum == Vacuum::kStatements) {
      std::string sql;
      for (const std::string& t : e->vacuum_tables) sql += "VACUUM " + t + ";";
      return sql;
    }
  }
  // "UPDATE t" + the column name with no blank: the short form hosts use.
  if (form.column_form && e != nullptr && !e->update_column.empty()) {
    return "UPDATE " + std::string(table_name_.view()) + e->update_column;
  }

  // At least what is written without the rare pieces: the keywords, " = "
  // and ", " per assignment, and the returned columns with a reference.
  std::size_t size = 48 + table_name_.size() + where_size();
  size += set_values_.text_size() + 5 * set_values_.size();
  size += returned_.size();
  auto write = [&](auto& sql) {
    sql.append("UPDATE ").append(table_name_.view()).append(" SET ");
    for (const auto& entry : set_values_) {
      sql.append(entry.first).append(" = ").append(entry.second).append(", ");
    }
    if (form.batch != Batch::kIgnored && e != nullptr) {
      if (!e->union_sets.empty()) sql += union_piece(form);
      if (!e->batch_sets.empty()) {
        sql += form.batch == Batch::kJoinValues ? join_values_piece() : case_piece();
      }
    }
    // Drops the last ", ", or "T " of " SET " when nothing was assigned: the
    // database then reports the empty assignment.
    sql.drop(2);

    put_where_returning(sql, returned_, form.output_ref);
  };
  if (e == nullptr) return internal::bounded_text(size, write);
  // The rare pieces are not counted: only a Fill makes room as it goes.
  std::string text;
  {
    internal::Fill sql(text, size);
    write(sql);
  }
  return text;
}

bool SQLUpdate::run(const Form& form, internal::ConnOp op, const internal::Site& site) {
  internal::ExecRequest request;
  request.site = site;
  request.op = op;
  return internal::Execute(db_conn_, request, [&] { return render(form); });
}

void place(detail::UpdateSlot& slot, tessel::DBTYPE db,
           const std::shared_ptr<tessel::CConnect>& conn) {
  internal::place_dialect<PGUpdate, SQLiteUpdate, SQLServerUpdate>(slot, db, conn);
}

void place(detail::UpdateSlot& slot, tessel::DBTYPE db, const SQLUpdate& other) {
  internal::place_dialect<PGUpdate, SQLiteUpdate, SQLServerUpdate>(slot, db, other);
}

std::shared_ptr<SQLUpdate> copy_update(tessel::DBTYPE db, const SQLUpdate& other) {
  return internal::make_dialect<PGUpdate, SQLiteUpdate, SQLServerUpdate, SQLUpdate>(db, other);
}

}  // namespace vexel

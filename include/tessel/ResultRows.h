// The rows of a connection's last result and the cursor over them, shared by
// the SQLite and PostgreSQL connections. Values are kept as text; a NULL is
// kept as "" (so it reads as "" and as 0).
#ifndef TESSEL_RESULTROWS_H
#define TESSEL_RESULTROWS_H

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace tessel {

class ResultRows {
 public:
  // Forgets columns and rows; the cursor is then at the end.
  void Clear();
  void SetColumns(std::vector<std::string> names) { columns_ = std::move(names); }
  // One row, one text per column in column order.
  void AddRow(std::vector<std::string> values) { rows_.push_back(std::move(values)); }

  const std::vector<std::string>& columns() const { return columns_; }
  size_t size() const { return rows_.size(); }

  bool IsEOF() const { return current_ >= rows_.size(); }
  // Moves to the next row; false once past the last one.
  bool MoveNext();
  // The current row's value; "" for an unknown column, out of rows or NULL.
  // Names match exactly first, then ignoring ASCII case (engines differ in
  // how they case the names of unquoted expressions).
  std::string Field(const std::string& column_name) const;
  std::string Field(int column_index) const;
  // The value's leading integer, 0 when it has none; clamped to int.
  int IntField(const std::string& column_name) const;
  int IntField(int column_index) const;

 private:
  int index_of(const std::string& column_name) const;

  std::vector<std::string> columns_;
  std::vector<std::vector<std::string>> rows_;
  size_t current_ = 0;
};

}  // namespace tessel

#endif  // TESSEL_RESULTROWS_H

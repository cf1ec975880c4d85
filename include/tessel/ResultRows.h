/// \file
/// A result held whole, as text: the rows of a statement that had to run to
/// its end before the connection went on (SQLite keeps the rows of an
/// earlier statement of a text when no later one returns columns), and the
/// empty result a connection starts with and a failure leaves.
#ifndef TESSEL_RESULTROWS_H
#define TESSEL_RESULTROWS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tessel/ResultSource.h"

namespace tessel {

/// A result held whole as text and numbers, for connections that must run a statement to its end.
class ResultRows : public ResultSource {
 public:
  /// An empty result with the given column names.
  explicit ResultRows(std::vector<std::string> names = {}) : ResultSource(std::move(names)) {}

  /// One value: its text, and the number the engine kept where it had one.
  struct Value {
    /// What the value holds.
    ValueKind kind = ValueKind::kText;
    /// The value as text.
    std::string text;
    /// The integer, for ValueKind::kInt.
    int64_t whole = 0;
    /// The floating value, for ValueKind::kDouble.
    double real = 0;
  };
  /// One row, one value per column in column order.
  void AddRow(std::vector<Value> values) { rows_.push_back(std::move(values)); }
  /// Number of rows held.
  size_t size() const { return rows_.size(); }

  /// True while a current row is there.
  bool AtRow() const override { return current_ < rows_.size(); }
  bool Next() override;
  ValueKind Kind(int column) const override { return value(column).kind; }
  ///@{
  /// The current row's value as text, integer or double.
  std::string_view Text(int column) const override { return value(column).text; }
  int64_t Int(int column) const override { return value(column).whole; }
  double Double(int column) const override { return value(column).real; }
  ///@}

 private:
  const Value& value(int column) const { return rows_[current_][static_cast<size_t>(column)]; }

  std::vector<std::vector<Value>> rows_;
  size_t current_ = 0;
};

}  // namespace tessel

#endif  // TESSEL_RESULTROWS_H

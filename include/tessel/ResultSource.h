/// \file
/// One result of a shipped connection as its cursor reads it: the column
/// names, copied once per result, and the current row's values as text or
/// NULL. A connection holds one at a time; the engine-specific kinds read
/// each value where the engine's client keeps it, so nothing is copied
/// ahead of the reader.
#ifndef TESSEL_RESULTSOURCE_H
#define TESSEL_RESULTSOURCE_H

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessel {

/// What a value of the current row holds: the engine's own integer or
/// floating value, or text.
enum class ValueKind { kNull, kInt, kDouble, kText };

/// One result as a connection's cursor reads it; connections derive a kind
/// per engine (a host implementing its own connection need not use it).
class ResultSource {
 public:
  virtual ~ResultSource() = default;
  ResultSource(const ResultSource&) = delete;
  ResultSource& operator=(const ResultSource&) = delete;

  /// The column names, in order.
  const std::vector<std::string>& names() const { return names_; }
  /// Number of columns.
  int ColumnCount() const { return static_cast<int>(names_.size()); }
  /// The named column's index, -1 when there is none. Names match exactly
  /// first, then ignoring ASCII case (engines differ in how they case the
  /// names of unquoted expressions). Each name asked for is resolved once
  /// per result; a row loop asking for the same names costs a comparison.
  int IndexOf(const std::string& name) const;

  /// True while a current row is there.
  virtual bool AtRow() const = 0;
  /// Moves to the next row; false at the end. A source whose engine fails on
  /// the way reports that to its connection before it returns false.
  virtual bool Next() = 0;
  /// Ends the result early, releasing what the engine holds for it.
  virtual void Close() {}
  /// The current row's value. Callers check AtRow and the index first, and
  /// ask Int and Double only of a value of that kind.
  virtual ValueKind Kind(int column) const = 0;
  ///@{
  /// The current row's value as text; Int and Double for values of those kinds.
  virtual std::string_view Text(int column) const = 0;
  virtual int64_t Int(int /*column*/) const { return 0; }
  virtual double Double(int /*column*/) const { return 0; }
  ///@}

 protected:
  /// A result with the given column names.
  explicit ResultSource(std::vector<std::string> names) : names_(std::move(names)) {}

 private:
  int resolve(const std::string& name) const;

  std::vector<std::string> names_;
  /// The names asked for in this result and their columns, in asking order;
  /// `next_asked_` is where the next question most likely stands.
  mutable std::vector<std::pair<std::string, int>> asked_;
  mutable size_t next_asked_ = 0;
};

}  // namespace tessel

#endif  // TESSEL_RESULTSOURCE_H

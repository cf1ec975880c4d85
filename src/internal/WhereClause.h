// The condition of an INSERT, UPDATE or DELETE, kept as text in the
// builder's dialect; the implementation classes take their WHERE, AND and
// OR from here.
#ifndef VEXEL_INTERNAL_WHERECLAUSE_H
#define VEXEL_INTERNAL_WHERECLAUSE_H

#include <string>
#include <utility>

#include "internal/Text.h"

namespace vexel {
namespace internal {

class WhereClause {
 public:
  void WHERE(std::string text) {
    where_ = std::move(text);
    where_given_ = true;
  }
  // The condition's text, given in place.
  std::string& WHERE() {
    where_given_ = true;
    return where_;
  }
  // No brackets and no check that a condition was set: callers rely on it.
  void AND(const std::string& text) { where_.append(" AND ").append(text); }
  void OR(const std::string& text) { where_.append(" OR ").append(text); }
  // A WHERE was given, and nothing of it renders: the statement would
  // change every row.
  bool where_renders_empty() const { return where_given_ && where_.empty(); }

 protected:
  // " WHERE " and the condition, when there is one.
  template <typename Sink>
  void put_where(Sink& out) const {
    if (!where_.empty()) out.append(" WHERE ").append(where_);
  }
  std::size_t where_size() const { return where_.size(); }
  // The condition with the returned columns around it: " OUTPUT " and the
  // list before it when `output_ref` is set (SQL Server), else " RETURNING "
  // and the list after it; no keyword for a list without text.
  // Writes into a Fill or an Into.
  template <typename Sink>
  void put_where_returning(Sink& out, const ColumnTexts& returned, const char* output_ref) const;

 private:
  std::string where_;
  bool where_given_ = false;
};

}  // namespace internal
}  // namespace vexel

#endif  // VEXEL_INTERNAL_WHERECLAUSE_H

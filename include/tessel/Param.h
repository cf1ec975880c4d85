/// \file
/// A value bound to a numbered placeholder of a statement ($1 on PostgreSQL,
/// ?1 on SQLite): the engine receives it apart from the text, so nothing in
/// it can change the statement.
#ifndef TESSEL_PARAM_H
#define TESSEL_PARAM_H

#include <string>

namespace tessel {

/// One value bound to a numbered placeholder (see vexel::Params and RowsConnect::BindNext).
struct Param {
  /// What the value is; the engine receives it typed.
  enum class Kind { kNull, kBool, kInteger, kReal, kText };
  /// The value's kind.
  Kind kind = Kind::kNull;
  /// "true"/"false", the integer's digits, the double's shortest exact text,
  /// or the text itself (valid UTF-8 without NUL bytes).
  std::string text;
};

}  // namespace tessel

#endif  // TESSEL_PARAM_H

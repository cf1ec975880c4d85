/// \file
/// A literal that is safe to build from user input: it renders, for the
/// statement's dialect, a text that the engine reads back as exactly the
/// value given.
///
/// \code
/// vexel::SafeValue("O'Brien's")   'O''Brien''s'          (N'…' on SQL Server
///                                                        when not ASCII)
/// vexel::SafeValue(true)          TRUE on PostgreSQL, 1 elsewhere
/// vexel::SafeValue(1e-7)          1e-07                  (shortest exact form)
/// vexel::SafeValue(nullptr)       NULL
/// \endcode
///
/// A SafeValue goes wherever an SQLValue goes (it converts to one that keeps
/// its per-dialect forms), and wherever a node goes. A value that cannot be
/// written safely (a NUL byte, invalid UTF-8, NaN or an infinity, a date that
/// does not exist) is refused: ok() is false, and a statement that contains
/// it renders an unusable text, is never sent to the connection, and its
/// Execute logs the reason once and returns false.
#ifndef VEXEL_SAFEVALUE_H
#define VEXEL_SAFEVALUE_H

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>

#include "tessel/Param.h"
#include "vexel/CommonExpr.h"
#include "vexel/SQLValue.h"
#include "vexel/export.h"

namespace vexel {

/// A literal that is safe for any input: quoted and checked for the dialect
/// that renders it, or refused.
///
/// \code
/// vexel::SafeValue v("O'Brien");
/// // PostgreSQL, SQLite: 'O''Brien'; SQL Server: 'O''Brien' (N'...' when not ASCII)
/// vexel::SafeValue(true);     // TRUE on PostgreSQL, 1 elsewhere
/// vexel::SafeValue(nullptr);  // NULL
/// \endcode
/// It stands wherever an SQLValue or a node goes. A refused value (a NUL
/// byte, invalid UTF-8, NaN, an infinity, a date that does not exist) has
/// ok() false; a statement holding it is never executed.
class VEXEL_API SafeValue : public CommonExpr {
 public:
  /// NULL.
  SafeValue();
  /// NULL.
  SafeValue(std::nullptr_t);
  /// TRUE/FALSE on PostgreSQL, 1/0 elsewhere.
  SafeValue(bool v);
  /// Every integer type, exact.
  template <typename T,
            std::enable_if_t<std::is_integral<T>::value && !std::is_same<T, bool>::value &&
                                 !std::is_same<T, char>::value,
                             int> = 0>
  SafeValue(T v) : SafeValue(negative(v), magnitude(v)) {}
  /// The shortest text that reads back as the same double (or float).
  SafeValue(double v);
  /// The shortest text that reads back as the same float.
  SafeValue(float v);
  ///@{
  /// A text, single quotes doubled ('it''s'); N'...' on SQL Server when not ASCII.
  SafeValue(const std::string& text);
  SafeValue(const char* text);
  ///@}
  /// A UTC timestamp, 'YYYY-MM-DD HH:MM:SS[.ffffff]'.
  SafeValue(std::chrono::system_clock::time_point at);
  /// A calendar date, 'YYYY-MM-DD'; refused when the day does not exist.
  static SafeValue date(int year, int month, int day);
  /// `text` with the LIKE wildcards % and _ and `escape` itself escaped by
  /// `escape`, for a pattern that must match the text literally; pair it
  /// with col::like_escaped.
  static std::string escape_like(const std::string& text, char escape = '\\');

  ///@{
  /// Plain value.
  SafeValue(const SafeValue&) = default;
  SafeValue(SafeValue&&) = default;
  SafeValue& operator=(const SafeValue&) = default;
  SafeValue& operator=(SafeValue&&) = default;
  ///@}
  ~SafeValue() override = default;

  /// False when the value was refused.
  bool ok() const { return kind_ != Kind::kRefused; }
  /// True for NULL.
  bool is_null() const { return kind_ == Kind::kNull; }

  /// The literal in the given dialect (PostgreSQL's for unknown codes).
  std::string GetExpr(const tessel::DBTYPE& db_type) const override;
  void set_table_name(const std::string& table_name) override;

  /// The value for binding to a placeholder (see vexel::Params); a refused
  /// value gives a NULL.
  tessel::Param param() const;

  /// An SQLValue that renders this literal in whatever dialect takes it;
  /// its GetValue() is the PostgreSQL form.
  operator SQLValue() const;

 private:
  enum class Kind { kNull, kBool, kNumber, kText, kRefused };
  /// Integers arrive as a sign and a magnitude (of -(v + 1) when negative),
  /// so that the most negative value of every width is exact.
  SafeValue(bool negative, std::uint64_t magnitude);
  static SafeValue refused(const char* why);
  template <typename T>
  static constexpr bool negative(T v) {
    if constexpr (std::is_signed<T>::value) {
      return v < 0;
    } else {
      return false;
    }
  }
  template <typename T>
  static constexpr std::uint64_t magnitude(T v) {
    if constexpr (std::is_signed<T>::value) {
      return static_cast<std::uint64_t>(v < 0 ? -(v + 1) : v);
    } else {
      return static_cast<std::uint64_t>(v);
    }
  }

  Kind kind_ = Kind::kNull;
  /// The boolean; for a number, whether it is floating; for text, whether
  /// any byte is not ASCII.
  bool flag_ = false;
  std::string text_;  ///< a number's digits, or the text before quoting
};

}  // namespace vexel

#endif  // VEXEL_SAFEVALUE_H

/// \file
/// A function name used where a column stands ("s..f" in PostgreSQL and SQL
/// Server, "f" in SQLite).
#ifndef VEXEL_FUNC_H
#define VEXEL_FUNC_H

#include <string>

#include "vexel/col.h"

namespace vexel {

/// A function name that stands where a column stands (made by sch::func).
class VEXEL_API func : public col {
 public:
  ///@{
  /// A function named `name` (empty by default).
  func();
  func(const std::string& name);
  func(const char* name);
  ///@}
  /// Copies everything but the EXCLUDED mark.
  func(const func& other);
  /// Functions are plain values.
  func& operator=(const func& other) = default;

  /// The function's text.
  std::string col_name() const override;
};

}  // namespace vexel

#endif  // VEXEL_FUNC_H

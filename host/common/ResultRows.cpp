#include "tessel/ResultRows.h"

namespace tessel {

bool ResultRows::Next() {
  if (current_ < rows_.size()) ++current_;
  return current_ < rows_.size();
}

bool ResultRows::NativeInt(int column, int64_t& value) const {
  if (this->value(column).kind != Value::kInt) return false;
  value = this->value(column).whole;
  return true;
}

bool ResultRows::NativeDouble(int column, double& value) const {
  if (this->value(column).kind != Value::kDouble) return false;
  value = this->value(column).real;
  return true;
}

}  // namespace tessel

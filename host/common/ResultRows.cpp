#include "tessel/ResultRows.h"

namespace tessel {

bool ResultRows::Next() {
  if (current_ < rows_.size()) ++current_;
  return current_ < rows_.size();
}

}  // namespace tessel

// The guard of UPDATE and DELETE against a condition that renders empty:
// the warning when such a condition is given and the refusal in strict mode.
#ifndef VEXEL_INTERNAL_STRICTWHERE_H
#define VEXEL_INTERNAL_STRICTWHERE_H

#include <string>

#include "internal/Log.h"

namespace vexel {
namespace internal {

// Logs the level-4 warning on behalf of `site` when `condition` is empty.
void warn_if_unfiltered(const std::string& condition, const Site& site);

// True, after one level-5 line on behalf of `site`, when a statement whose
// condition renders empty must not run: the builder or the process is
// strict.
bool refuse_unfiltered(bool builder_strict, bool renders_empty, const Site& site);

}  // namespace internal
}  // namespace vexel

#endif  // VEXEL_INTERNAL_STRICTWHERE_H

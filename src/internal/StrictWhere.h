// The guard of UPDATE and DELETE against a condition that renders empty:
// the warning when such a condition is given and the refusal in strict mode.
#ifndef VEXEL_INTERNAL_STRICTWHERE_H
#define VEXEL_INTERNAL_STRICTWHERE_H

#include <string>

#include "internal/Log.h"
#include "tessel/DBType.h"
#include "vexel/Ptr_CommonExpr.h"

namespace vexel {
namespace internal {

// The text of an UPDATE's or DELETE's WHERE condition in dialect `db`, with
// the level-4 warning on behalf of `site` when it is empty. A temporary
// with a finished text hands it over instead of having it copied.
std::string where_text(const CommonExpr& condition, tessel::DBTYPE db, const Site& site);
// The same, put straight into `out`.
void where_text(Ptr_CommonExpr&& condition, tessel::DBTYPE db, const Site& site, std::string& out);

// True, after one level-5 line on behalf of `site`, when a statement whose
// condition renders empty must not run: the builder or the process is
// strict.
bool refuse_unfiltered(bool builder_strict, bool renders_empty, const Site& site);

}  // namespace internal
}  // namespace vexel

#endif  // VEXEL_INTERNAL_STRICTWHERE_H

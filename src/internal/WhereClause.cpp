#include "internal/WhereClause.h"

namespace vexel {
namespace internal {

template <typename Sink>
void WhereClause::put_where_returning(Sink& out, const ColumnTexts& returned,
                                      const char* output_ref) const {
  const char* ref = output_ref != nullptr ? output_ref : "";
  const bool listed = returned.listed(ref);
  if (output_ref != nullptr && listed) {
    out += " OUTPUT ";
    returned.put(out, ref);
  }
  put_where(out);
  if (output_ref == nullptr && listed) {
    out += " RETURNING ";
    returned.put(out, ref);
  }
}
template void WhereClause::put_where_returning(Fill&, const ColumnTexts&, const char*) const;
template void WhereClause::put_where_returning(Into&, const ColumnTexts&, const char*) const;

}  // namespace internal
}  // namespace vexel

/// \file
/// Aggregate and ranking functions. An aggr_func is a column whose name is
/// the whole call ("COUNT(t.c)"), so it stands wherever a column stands; the
/// text is the same in every dialect.
///
/// \code
/// vexel::window_option w;
/// w.partition_by = {t.col("a")};
/// w.flags.set(vexel::window_option::kPartitionBy);
/// q.SELECT({vexel::ROW_NUMBER().Over(w)});
/// \endcode
#ifndef VEXEL_AGGR_FUNC_H
#define VEXEL_AGGR_FUNC_H

#include <bitset>
#include <cstddef>
#include <string>
#include <vector>

#include "vexel/col.h"
#include "vexel/export.h"

namespace vexel {

/// The window of Over(). A list is written only when its flag is set,
/// whatever the vector holds.
struct window_option {
  /// Bit of `flags` that writes PARTITION BY.
  static constexpr std::size_t kPartitionBy = 0;
  /// Bit of `flags` that writes ORDER BY.
  static constexpr std::size_t kOrderBy = 1;

  /// Columns of PARTITION BY.
  std::vector<col> partition_by;
  /// Rendered through col::to_order(), so sort directions come along.
  std::vector<col> order_by;
  /// Bit 0: PARTITION BY; bit 1: ORDER BY; bit 2 is not read.
  std::bitset<3> flags;
};

/// A function call that stands wherever a column stands (SELECT lists,
/// HAVING, ORDER BY): `vexel::SUM(c).AS("units")` renders "SUM(shop.items.qty) AS units".
class VEXEL_API aggr_func : public col {
 public:
  aggr_func() = default;
  /// Any function text.
  explicit aggr_func(const std::string& text);
  ///@{
  /// Plain value.
  aggr_func(const aggr_func&) = default;
  aggr_func(aggr_func&&) = default;
  aggr_func& operator=(const aggr_func&) = default;
  aggr_func& operator=(aggr_func&&) = default;
  ///@}

  /// Appends " OVER (...)"; each call appends another clause.
  aggr_func& Over(const window_option& option);
};

///@{
/// Aggregates over a column: "AVG(shop.items.qty)", "COUNT(...)", "MAX(...)",
/// "MIN(...)", "SUM(...)".
VEXEL_API aggr_func AVG(const col& c);
VEXEL_API aggr_func COUNT(const col& c);
VEXEL_API aggr_func MAX(const col& c);
VEXEL_API aggr_func MIN(const col& c);
VEXEL_API aggr_func SUM(const col& c);
///@}
/// "COUNT(DISTINCT shop.items.cat)": the distinct values of a column or
/// calc (DISTINCT() on a qualified column writes it inside the qualifier).
VEXEL_API aggr_func COUNT_DISTINCT(const col& c);
/// The window function "RANK()", for Over().
VEXEL_API aggr_func RANK();
/// The window function "ROW_NUMBER()", for Over():
/// \code
/// vexel::window_option w;
/// w.partition_by = {items.col("cat")};
/// w.order_by = {items.col("qty").DESC()};
/// w.flags.set(vexel::window_option::kPartitionBy).set(vexel::window_option::kOrderBy);
/// vexel::ROW_NUMBER().Over(w).col_name();
/// // "ROW_NUMBER() OVER (PARTITION BY  shop.items.cat ORDER BY  shop.items.qty DESC )"
/// \endcode
VEXEL_API aggr_func ROW_NUMBER();

}  // namespace vexel

#endif  // VEXEL_AGGR_FUNC_H

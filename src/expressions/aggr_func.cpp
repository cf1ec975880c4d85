#include "vexel/aggr_func.h"

namespace vexel {
namespace {

// " a,b": a blank before the first item and "," before each later one, so
// "PARTITION BY " is followed by two blanks; hosts match the text.
template <typename Render>
std::string window_list(const std::vector<col>& cols, Render render) {
  std::string out;
  char separator = ' ';
  for (const col& c : cols) {
    out += separator;
    out += render(c);
    separator = ',';
  }
  return out;
}

aggr_func call(const char* function, const col& c) {
  return aggr_func(std::string(function) + "(" + c.col_name() + ")");
}

}  // namespace

aggr_func::aggr_func(const std::string& text) : col(text) {}

aggr_func& aggr_func::Over(const window_option& option) {
  std::string text = " OVER (";
  if (option.flags.test(window_option::kPartitionBy)) {
    text += "PARTITION BY ";
    text += window_list(option.partition_by, [](const col& c) { return c.col_name(); });
  }
  if (option.flags.test(window_option::kOrderBy)) {
    text += " ORDER BY ";
    text += window_list(option.order_by, [](const col& c) { return c.to_order(); });
  }
  text += ")";
  append_name(text);
  return *this;
}

aggr_func AVG(const col& c) { return call("AVG", c); }
aggr_func COUNT(const col& c) { return call("COUNT", c); }
aggr_func COUNT_DISTINCT(const col& c) { return aggr_func("COUNT(DISTINCT " + c.col_name() + ")"); }
aggr_func MAX(const col& c) { return call("MAX", c); }
aggr_func MIN(const col& c) { return call("MIN", c); }
aggr_func SUM(const col& c) { return call("SUM", c); }
aggr_func RANK() { return aggr_func("RANK()"); }
aggr_func ROW_NUMBER() { return aggr_func("ROW_NUMBER()"); }

}  // namespace vexel

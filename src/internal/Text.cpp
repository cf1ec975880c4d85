#include "internal/Text.h"

#include <charconv>
#include <system_error>

namespace vexel {
namespace internal {
namespace {

template <typename Append>
std::string join(const std::vector<col>& cols, tessel::DBTYPE db, Append append) {
  std::string out;
  std::size_t size = 0;
  for (const col& c : cols) {
    size += c.only_schema_name().size() + c.only_table_name().size() + c.only_col_name().size() +
            c.only_order_sql().size() + 15;
  }
  out.reserve(size);
  for (const col& c : cols) {
    if (!out.empty()) out += " , ";
    append(out, c, db);
  }
  return out;
}

}  // namespace

col with_dialect(const col& c, tessel::DBTYPE db) { return col(c, db); }

std::string fixed_six(double value) {
  // The largest double has 309 integer digits; sign, point and decimals
  // add 8.
  char buffer[330];
  const std::to_chars_result result =
      std::to_chars(buffer, buffer + sizeof(buffer), value, std::chars_format::fixed, 6);
  if (result.ec != std::errc()) return std::string();
  return std::string(buffer, result.ptr);
}

std::vector<col> with_dialect(const std::vector<col>& cols, tessel::DBTYPE db) {
  std::vector<col> out;
  out.reserve(cols.size());
  for (const col& c : cols) out.emplace_back(c, db);
  return out;
}

std::string table_text(const tab& t, tessel::DBTYPE db) {
  tab copy(t);
  copy.set_db_type(db);
  return copy.table_name();
}

std::string view_text(const view& v, tessel::DBTYPE db) {
  view copy(v);
  copy.set_db_type(db);
  return copy.view_name();
}

std::string column_text(const col& c, tessel::DBTYPE db) {
  std::string out;
  ColumnText::append(out, c, db);
  return out;
}

std::string join_names(const std::vector<col>& cols, tessel::DBTYPE db) {
  return join(cols, db, &ColumnText::append);
}

std::string join_orders(const std::vector<col>& cols, tessel::DBTYPE db) {
  return join(cols, db, &ColumnText::append_order);
}

}  // namespace internal
}  // namespace vexel

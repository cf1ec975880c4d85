#include "vexel/SeqenceExpr.h"

namespace vexel {

SeqenceExpr::SeqenceExpr(Kind kind, const std::string& seq_name, const std::string& table_name,
                         int32_t value)
    : kind_(kind), seq_name_(seq_name), table_name_(table_name), value_(value) {}

std::string SeqenceExpr::GetExpr(const tessel::DBTYPE& db_type) const {
  const std::string value = std::to_string(value_);
  if (db_type == tessel::DB_SQLITE) {
    // SQLite keeps AUTOINCREMENT counters in sqlite_sequence, one row per table.
    if (kind_ == kCurrent) return "seq FROM sqlite_sequence WHERE name = '" + table_name_ + "'";
    if (kind_ == kSet) {
      return "sqlite_sequence SET seq = " + value + " WHERE name = '" + table_name_ + "'";
    }
  } else if (db_type == tessel::DB_POSTGRESQL) {
    if (kind_ == kCurrent) return "last_value FROM " + seq_name_;
    // Hosts match this exact call, blanks after the commas included.
    if (kind_ == kSet) return "setval('" + seq_name_ + "'::regclass, " + value + ", true)";
  }
  return std::string();
}

SeqenceExpr CURRVAL(const seq& s, const tab& t) {
  return SeqenceExpr(SeqenceExpr::kCurrent, s.seq_name(), t.table_name(), 0);
}

SeqenceExpr SETVAL(const seq& s, const int& value, const tab& t) {
  return SeqenceExpr(SeqenceExpr::kSet, s.seq_name(), t.table_name(), value);
}

}  // namespace vexel

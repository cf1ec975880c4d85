#include "sqlite/SQLiteSeq.h"

#include "internal/Execution.h"

namespace vexel {

std::string SQLiteSeq::bare_name() const {
  const std::size_t dot = table_name_.find('.');
  return dot == std::string::npos ? table_name_ : table_name_.substr(dot + 1);
}

std::string SQLiteSeq::tosql_set() const {
  const std::string where = "WHERE name = '" + bare_name() + "'";
  if (value_ >= 0 && aggregate_.empty()) {
    return "UPDATE sqlite_sequence SET seq = " + std::to_string(value_) + " " + where;
  }
  if (!aggregate_.empty() && value_ < 0) {
    return "UPDATE sqlite_sequence SET seq = (SELECT " + aggregate_ + " FROM " + table_name_ +
           ") " + where;
  }
  return std::string();
}

std::string SQLiteSeq::tosql_next() const {
  if (!manual_column_.empty()) return "SELECT max(" + manual_column_ + ") FROM " + table_name_;
  const std::size_t dot = table_name_.find('.');
  if (dot == std::string::npos) {
    return "SELECT seq FROM sqlite_sequence WHERE name = '" + table_name_ + "'";
  }
  // An attached database keeps its own sequence table.
  return "SELECT seq FROM " + table_name_.substr(0, dot) + ".sqlite_sequence WHERE name = '" +
         bare_name() + "'";
}

bool SQLiteSeq::Execute() {
  internal::ExecRequest request;
  request.site = VEXEL_SITE;
  if (!db_conn_) {
    VEXEL_LOG(5, "[%s]db_conn_ is nullptr.[%s(%d)]");
    return false;
  }
  const std::string set = tosql_set();
  if (!set.empty()) {
    request.op = internal::ConnOp::kUpdate;
    request.failure = internal::Failure::kExecute;
    if (!internal::Run(*db_conn_, request, set + ";")) return false;
    request.op = internal::ConnOp::kQuery;
    request.failure = internal::Failure::kExecuteQuery;
    // Hosts match the read-back text, two blanks after "seq" included.
    return internal::Run(*db_conn_, request,
                         "SELECT seq  FROM sqlite_sequence WHERE name = '" + bare_name() + "';");
  }
  const std::string next = tosql_next();
  // Nothing to run: there is no value to read.
  if (next.empty()) return false;
  const bool manual = !manual_column_.empty();
  request.op = manual ? internal::ConnOp::kSeqenceManual : internal::ConnOp::kSeqence;
  request.failure = manual ? internal::Failure::kSeqenceManual : internal::Failure::kSeqence;
  return internal::Run(*db_conn_, request, next + ";");
}

}  // namespace vexel

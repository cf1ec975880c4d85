#include "postgres/PGSeq.h"

#include "internal/Execution.h"

namespace vexel {

std::string PGSeq::schema_prefix(const internal::Site& site) const {
  const std::size_t dot = table_name_.find('.');
  if (dot == std::string::npos) {
    VEXEL_LOG_AT(site, 4, "[%s]No found schema name.[%s(%d)]");
    return std::string();
  }
  return table_name_.substr(0, dot + 1);
}

std::string PGSeq::tosql_next() const {
  if (next_seq_name_.empty()) return std::string();
  // A qualified sequence name is used as given.
  if (next_seq_name_.find('.') != std::string::npos) {
    return "SELECT nextval('" + next_seq_name_ + "') AS seq";
  }
  return "SELECT nextval('" + schema_prefix(VEXEL_SITE) + next_seq_name_ + "') AS seq";
}

std::string PGSeq::tosql_set() const {
  if (!set_seq_name_.empty() && value_ >= 0 && aggregate_.empty()) {
    // Hosts match this exact call, blanks after the commas included.
    return "SELECT setval('" + schema_prefix(VEXEL_SITE) + set_seq_name_ + "'::regclass, " +
           std::to_string(value_) + ", true)";
  }
  if (!aggregate_.empty() && value_ < 0) {
    return "SELECT setval('" + schema_prefix(VEXEL_SITE) + set_seq_name_ + "', " + aggregate_ +
           ") FROM " + table_name_;
  }
  return std::string();
}

bool PGSeq::Execute() {
  internal::ExecRequest request;
  request.site = VEXEL_SITE;
  request.op = internal::ConnOp::kQuery;
  return internal::Execute(db_conn_, request, [this] {
    std::string sql = tosql_set();
    if (sql.empty()) sql = tosql_next();
    // An empty statement is passed on as it is, without ";".
    if (!sql.empty()) sql += ";";
    return sql;
  });
}

}  // namespace vexel

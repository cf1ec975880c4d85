#include "vexel/Params.h"

#include <string>

namespace vexel {

Params::Params(tessel::DBTYPE db) : db_(db) {}

SQLValue Params::operator()(const SafeValue& value) {
  if (!value.ok()) return value;
  values_.push_back(value.param());
  const std::string n = std::to_string(values_.size());
  switch (db_) {
    case tessel::DB_SQLITE:
      return SQLValue(SQLFunc{"?" + n});
    case tessel::DB_SQLSERVER:
      return SQLValue(SQLFunc{"@p" + n});
    default:
      return SQLValue(SQLFunc{"$" + n});
  }
}

}  // namespace vexel

// Implementation base of WithBuilder: the named statements and the main
// statement as text, rendered the same in every dialect.
#ifndef VEXEL_SQLWITH_H
#define VEXEL_SQLWITH_H

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "internal/Execution.h"
#include "tessel/CConnect.h"

namespace vexel {

class SQLWith {
 public:
  explicit SQLWith(const std::shared_ptr<tessel::CConnect>& conn);
  SQLWith(const SQLWith&) = default;
  SQLWith& operator=(const SQLWith&) = delete;

  virtual std::string tosql() const = 0;
  virtual bool Execute() = 0;
  virtual bool ExecuteQueryUDT(const int& time_out) = 0;
  virtual bool ExecuteSortByCollate(const std::string& collate_name) = 0;
  virtual bool ExecuteLoop() = 0;

  void AS(const std::string& name, const std::string& statement) {
    named_.emplace_back(name, statement);
  }
  void RECURSIVE() { recursive_ = true; }
  void WithDo(const std::string& statement) { main_ = statement; }

 protected:
  ~SQLWith() = default;

  std::string render() const;
  bool run(const internal::QueryRoutes& routes, internal::QueryVariant variant,
           const internal::Site& site, int time_out = 0,
           const std::string& collate_name = std::string());

 private:
  std::vector<std::pair<std::string, std::string>> named_;
  std::string main_;
  bool recursive_ = false;
  std::shared_ptr<tessel::CConnect> db_conn_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
};

// The class chosen for a dialect, as for queries; null if allocation fails.
std::shared_ptr<SQLWith> make_with(tessel::DBTYPE db,
                                   const std::shared_ptr<tessel::CConnect>& conn);
std::shared_ptr<SQLWith> copy_with(tessel::DBTYPE db, const SQLWith& other);

}  // namespace vexel

#endif  // VEXEL_SQLWITH_H

// Implementation base of SeqenceBuilder: the statement's parts as rendered
// text. PGSeq (every dialect but SQLite) and SQLiteSeq render and run them.
#ifndef VEXEL_SQLSEQ_H
#define VEXEL_SQLSEQ_H

#include <cstdint>
#include <memory>
#include <string>

#include "tessel/CConnect.h"

namespace vexel {

class SQLSeq {
 public:
  explicit SQLSeq(const std::shared_ptr<tessel::CConnect>& conn);
  SQLSeq(const SQLSeq&) = default;
  SQLSeq& operator=(const SQLSeq&) = delete;

  virtual std::string tosql_set() const = 0;
  virtual bool Execute() = 0;
  virtual std::string tosql_next() const = 0;

  tessel::DBTYPE db_type() const { return db_type_; }

  void NEXT_VAL(const std::string& seq_name, const std::string& table_name);
  void MANUAL_NEXT_VAL(const std::string& seq_name, const std::string& table_name,
                       const std::string& column);
  void SET_VAL(const std::string& seq_name, int32_t value, const std::string& table_name);
  void SET_VAL(const std::string& seq_name, const std::string& aggregate,
               const std::string& table_name);

 protected:
  ~SQLSeq() = default;

  std::string table_name_;
  std::string set_seq_name_;
  std::string next_seq_name_;
  std::string aggregate_;
  int32_t value_ = -1;  // negative: the aggregate form
  std::string manual_column_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
  std::shared_ptr<tessel::CConnect> db_conn_;
};

// SQLiteSeq for SQLite, PGSeq for every other code.
std::shared_ptr<SQLSeq> make_seq(tessel::DBTYPE db, const std::shared_ptr<tessel::CConnect>& conn);
std::shared_ptr<SQLSeq> copy_seq(tessel::DBTYPE db, const SQLSeq& other);

}  // namespace vexel

#endif  // VEXEL_SQLSEQ_H

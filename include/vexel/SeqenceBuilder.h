/// \file
/// Stand-alone next-value and set-value statements for a table's sequence.
/// PostgreSQL uses real sequences; SQLite emulates them through
/// sqlite_sequence (AUTOINCREMENT tables). SQL Server and unknown codes get
/// the PostgreSQL forms. The values are read from the connection afterwards.
///
/// \code
/// vexel::SeqenceBuilder b(conn);
/// b.SET_VAL(vexel::seq("t_id_seq"), vexel::MAX(vexel::col("id")), t);
/// b.Execute();
/// \endcode
#ifndef VEXEL_SEQENCEBUILDER_H
#define VEXEL_SEQENCEBUILDER_H

#include <memory>
#include <string>

#include "tessel/CConnect.h"
#include "vexel/aggr_func.h"
#include "vexel/col.h"
#include "vexel/export.h"
#include "vexel/seq.h"
#include "vexel/tab.h"

namespace vexel {

class SQLSeq;

class VEXEL_API SeqenceBuilder {
 public:
  explicit SeqenceBuilder(const std::shared_ptr<tessel::CConnect>& conn);
  SeqenceBuilder(const SeqenceBuilder& other);
  /// Both builders then share one statement.
  SeqenceBuilder& operator=(const SeqenceBuilder& other);
  ~SeqenceBuilder();

  void Reset();
  tessel::DBTYPE db_type() const { return db_type_; }

  SeqenceBuilder& NEXT_VAL(const seq& s, const tab& t);
  /// On SQLite the column's maximum stands in for the sequence.
  SeqenceBuilder& MANUAL_NEXT_VAL(const seq& s, const tab& t, const col& c);
  SeqenceBuilder& SET_VAL(const seq& s, const int& value, const tab& t);
  SeqenceBuilder& SET_VAL(const seq& s, const aggr_func& aggregate, const tab& t);

  std::string tosql_next() const;
  std::string tosql_set() const;
  /// Runs the set statement if one was given, else the next-value one.
  bool Execute();

 private:
  std::shared_ptr<SQLSeq> ptr_builder_;
  std::shared_ptr<tessel::CConnect> db_conn_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
};

}  // namespace vexel

#endif  // VEXEL_SEQENCEBUILDER_H

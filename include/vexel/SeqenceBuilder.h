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

/// Reads or sets a sequence (SQL Server uses the PostgreSQL texts).
///
/// \code
/// vexel::seq s("items_id_seq");
/// b.NEXT_VAL(s, items).SET_VAL(s, 10, items);
/// // tosql_next(), PostgreSQL: "SELECT nextval('shop.items_id_seq') AS seq"
/// //               SQLite:     "SELECT seq FROM shop.sqlite_sequence WHERE name = 'items'"
/// // tosql_set(),  PostgreSQL: "SELECT setval('shop.items_id_seq'::regclass, 10, true)"
/// //               SQLite:     "UPDATE sqlite_sequence SET seq = 10 WHERE name = 'items'"
/// \endcode
///
/// The value is read through the connection's cursor (column "seq").
class VEXEL_API SeqenceBuilder {
 public:
  /// A builder in the dialect `conn` reports.
  explicit SeqenceBuilder(const std::shared_ptr<tessel::CConnect>& conn);
  /// An independent copy.
  SeqenceBuilder(const SeqenceBuilder& other);
  /// Both builders then share one statement.
  SeqenceBuilder& operator=(const SeqenceBuilder& other);
  ~SeqenceBuilder();

  /// Starts an empty statement.
  void Reset();
  /// The dialect the builder renders.
  tessel::DBTYPE db_type() const { return db_type_; }

  /// The next value of sequence `s` of table `t`.
  SeqenceBuilder& NEXT_VAL(const seq& s, const tab& t);
  /// On SQLite the column's maximum stands in for the sequence.
  /// SQLite "SELECT max(id) FROM t"; PostgreSQL "SELECT nextval('s') AS seq".
  SeqenceBuilder& MANUAL_NEXT_VAL(const seq& s, const tab& t, const col& c);
  ///@{
  /// Sets the sequence to a number or to an aggregate's value (`MAX(t.col("id"))`).
  SeqenceBuilder& SET_VAL(const seq& s, const int& value, const tab& t);
  SeqenceBuilder& SET_VAL(const seq& s, const aggr_func& aggregate, const tab& t);
  ///@}

  ///@{
  /// The next-value and set texts.
  std::string tosql_next() const;
  std::string tosql_set() const;
  ///@}
  /// Runs the set statement if one was given, else the next-value one.
  bool Execute();

 private:
  std::shared_ptr<SQLSeq> ptr_builder_;
  std::shared_ptr<tessel::CConnect> db_conn_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
};

}  // namespace vexel

#endif  // VEXEL_SEQENCEBUILDER_H

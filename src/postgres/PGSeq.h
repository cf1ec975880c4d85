// Real sequences: nextval / setval, qualified with the table's schema.
#ifndef VEXEL_PGSEQ_H
#define VEXEL_PGSEQ_H

#include <memory>
#include <string>

#include "SQLSeq.h"
#include "internal/Log.h"

namespace vexel {

class PGSeq final : public SQLSeq {
 public:
  explicit PGSeq(const std::shared_ptr<tessel::CConnect>& conn) : SQLSeq(conn) {}
  explicit PGSeq(const SQLSeq& other) : SQLSeq(other) {}

  std::string tosql_set() const override;
  bool Execute() override;
  std::string tosql_next() const override;

 private:
  // The table's schema + ".", or "" after a warning under `site`.
  std::string schema_prefix(const internal::Site& site) const;
};

}  // namespace vexel

#endif  // VEXEL_PGSEQ_H

// The reference workload: each case builds and renders one statement the way
// a host does per request (reference objects, values and the builder made
// afresh), once through Vexel and once by hand-written appends into a
// reserved string (the floor). Both must produce the same bytes.
#ifndef VEXEL_BENCH_WORKLOAD_H
#define VEXEL_BENCH_WORKLOAD_H

#include <memory>
#include <string>
#include <vector>

#include <tessel/CConnect.h>

namespace bench {

// What one build produces. A statement that a dialect splits in two (the
// two one-row MERGEs of SQL Server's upsert) fills `second` as well.
struct Texts {
  std::string first;
  std::string second;
};

// Everything a host holds before it builds a statement: names and values as
// plain strings and numbers, read from its own model.
struct Model;

struct Case {
  std::string name;   // "S1/pg", "insert_1000/mssql", ...
  std::string group;  // "S1" ... "S5", or the scaling family
  tessel::DBTYPE db;
  // Through the library, on a builder constructed over `conn`.
  void (*vexel)(const Model& m, const std::shared_ptr<tessel::CConnect>& conn, Texts& out);
  // By hand; `reserve` holds the sizes to reserve for first and second.
  void (*floor)(const Model& m, tessel::DBTYPE db, const size_t reserve[2], Texts& out);
  // Iterations worth running for an instruction count of this case.
  int count_iterations;
};

// The model shared by all cases (built once, outside any timing).
const Model& model();
// Every case, in report order: S1-S5 for the three dialects, then scaling.
const std::vector<Case>& cases();
// "pg", "sqlite" or "mssql".
const char* dialect_tag(tessel::DBTYPE db);

}  // namespace bench

#endif  // VEXEL_BENCH_WORKLOAD_H

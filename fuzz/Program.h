// Turns a fuzz input into a sequence of calls on every builder, clause and
// expression kind of the library, with copies and assignments of builders,
// and renders and executes what it built. Objects are kept in small pools
// so that later calls reuse (and share) earlier results. Trees are kept
// shallow and texts short enough that one input runs in milliseconds.
#ifndef VEXEL_FUZZ_PROGRAM_H
#define VEXEL_FUZZ_PROGRAM_H

#include <memory>

#include "Input.h"
#include "tessel/CConnect.h"

namespace vexel_fuzz {

// Where builders get their connections.
class ConnectionSource {
 public:
  virtual ~ConnectionSource() = default;
  // A connection for a new builder or catalogue object; may be empty.
  virtual std::shared_ptr<tessel::CConnect> connection(Input& input) = 0;
  // Changes the connections between calls (dialect, failures), if it can.
  virtual void disturb(Input& input) = 0;
};

void run_program(Input& input, ConnectionSource& source);

}  // namespace vexel_fuzz

#endif  // VEXEL_FUZZ_PROGRAM_H

// What the fuzz targets hold the library to, besides the sanitizers: every
// execute operation that answers false writes exactly one error line (level
// 5) and one that answers true writes none; every line has the library's
// shape; and the only exception that leaves the library is the string
// thrown for a SQL Server MERGE whose VALUES do not hold exactly one row.
// A broken rule aborts, so libFuzzer keeps the input as a reproducer.
#ifndef VEXEL_FUZZ_CHECKS_H
#define VEXEL_FUZZ_CHECKS_H

#include <array>
#include <exception>
#include <string>

namespace vexel_fuzz {

// Prints `what` and aborts.
[[noreturn]] void finding(const std::string& what);

// Lines seen by the checking sink, per level (0 for levels out of range).
struct LogCounts {
  std::array<long, 8> by_level{};
  long errors() const { return by_level[5]; }
};

// Installs the checking sink once per process; later calls do nothing.
void install_checking_sink();
LogCounts log_counts();

// The exception a caller may see, or a finding.
void allowed_exception(const std::string& thrown);

// How many error lines an execute operation may write when it fails. The
// catalogue's sequence reset reports a failed query and then the sequence
// it could not set.
enum class FailureLines { kOne, kOneOrTwo };

// Runs `call` (an operation answering bool) and checks its lines; an
// escaping exception is checked with allowed_exception.
template <typename Call>
void checked_execute(const char* what, Call&& call, FailureLines lines = FailureLines::kOne) {
  const LogCounts before = log_counts();
  bool ok = false;
  try {
    ok = call();
  } catch (const std::string& thrown) {
    allowed_exception(thrown);
    return;
  } catch (const std::exception& e) {
    finding(std::string(what) + " threw " + e.what());
  } catch (...) {
    finding(std::string(what) + " threw a non-standard exception");
  }
  const LogCounts after = log_counts();
  const long errors = after.errors() - before.errors();
  if (after.by_level[6] != before.by_level[6]) {
    finding(std::string(what) + " wrote a construction line (level 6)");
  }
  if (ok && errors != 0) {
    finding(std::string(what) + " answered true but wrote " + std::to_string(errors) +
            " error lines");
  }
  const long most = lines == FailureLines::kOne ? 1 : 2;
  if (!ok && (errors < 1 || errors > most)) {
    finding(std::string(what) + " answered false with " + std::to_string(errors) + " error lines");
  }
}

// Runs `call` (anything else: clauses, constructors, rendering) and allows
// only the MERGE exception to escape.
template <typename Call>
void guarded(const char* what, Call&& call) {
  try {
    call();
  } catch (const std::string& thrown) {
    allowed_exception(thrown);
  } catch (const std::exception& e) {
    finding(std::string(what) + " threw " + e.what());
  } catch (...) {
    finding(std::string(what) + " threw a non-standard exception");
  }
}

}  // namespace vexel_fuzz

#endif  // VEXEL_FUZZ_CHECKS_H

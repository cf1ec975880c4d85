// Runs SQLite statements under a time limit. The limit counts the time
// spent inside sqlite3_step only, so a cursor whose reader is slow between
// rows is not stopped for the reader's time.
#ifndef TESSEL_HOST_STEPCLOCK_H
#define TESSEL_HOST_STEPCLOCK_H

#include <chrono>

struct sqlite3;
struct sqlite3_stmt;

namespace tessel {

class StepClock {
 public:
  explicit StepClock(sqlite3* db) : db_(db) {}
  ~StepClock() { Start(0); }
  StepClock(const StepClock&) = delete;
  StepClock& operator=(const StepClock&) = delete;

  // Gives the next steps `seconds` in all (0 or less: no limit).
  void Start(int seconds);
  // sqlite3_step, stopped with SQLITE_INTERRUPT once the time is used up.
  int Step(sqlite3_stmt* stmt);
  // The limit, when the last failed step ran out of it; 0 otherwise.
  int ExpiredLimit() const { return expired_ ? seconds_ : 0; }

 private:
  using Clock = std::chrono::steady_clock;
  static int check(void* self);

  sqlite3* db_;
  int seconds_ = 0;
  bool expired_ = false;
  Clock::duration left_{};
  Clock::time_point at_{};
};

}  // namespace tessel

#endif  // TESSEL_HOST_STEPCLOCK_H

#include "sqlite/StepClock.h"

#include <sqlite3.h>

namespace tessel {
namespace {

// Virtual-machine instructions between two deadline checks: often enough to
// stop within milliseconds, rarely enough to cost nothing measurable.
constexpr int kProgressInterval = 1000;

}  // namespace

void StepClock::Start(int seconds) {
  if (seconds_ > 0 && seconds <= 0) sqlite3_progress_handler(db_, 0, nullptr, nullptr);
  if (seconds_ <= 0 && seconds > 0) sqlite3_progress_handler(db_, kProgressInterval, check, this);
  seconds_ = seconds > 0 ? seconds : 0;
  expired_ = false;
  left_ = std::chrono::seconds(seconds_);
}

int StepClock::Step(sqlite3_stmt* stmt) {
  if (seconds_ == 0) return sqlite3_step(stmt);
  const Clock::time_point start = Clock::now();
  at_ = start + left_;
  const int rc = sqlite3_step(stmt);
  left_ -= Clock::now() - start;
  return rc;
}

int StepClock::check(void* self) {
  auto* clock = static_cast<StepClock*>(self);
  if (Clock::now() < clock->at_) return 0;
  clock->expired_ = true;
  return 1;  // non-zero interrupts the statement
}

}  // namespace tessel

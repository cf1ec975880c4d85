#include "FuzzConnect.h"

#include "Checks.h"

namespace vexel_fuzz {

FuzzConnect::FuzzConnect(Input& input, int32_t db_type, Failing failing)
    : input_(input), db_type_(db_type), failing_(failing) {}

FuzzConnect::~FuzzConnect() {
  if (unread_failure_) finding("a failure's error was never read");
}

bool FuzzConnect::run(const std::string&) {
  if (unread_failure_) finding("a statement ran before the last failure's error was read");
  bool ok = failing_ == Failing::kNever;
  if (failing_ == Failing::kAtRandom) ok = input_.flag();
  rows_ = ok ? input_.pick(4) : 0;
  unread_failure_ = !ok;
  return ok;
}

int FuzzConnect::read_error(std::string& error_info) {
  if (!unread_failure_) finding("an error was read without a failure before it");
  unread_failure_ = false;
  error_info = input_.text();
  return input_.number<int>();
}

bool FuzzConnect::MoveNext() {
  if (rows_ > 0) --rows_;
  return rows_ > 0;
}

std::string FuzzConnect::GetFieldString(const std::string&) {
  // Numbers, NULL (read as "") and names, as a catalogue would answer.
  switch (input_.pick(3)) {
    case 0:
      return std::to_string(input_.number<int>());
    case 1:
      return std::string();
    default:
      return input_.text();
  }
}

int FuzzConnect::GetFieldInt(int) { return input_.number<int>(); }
int FuzzConnect::GetFieldInt(const std::string&) { return input_.number<int>(); }

}  // namespace vexel_fuzz

// Random call sequences on every builder and expression, executed through
// scripted connections of any dialect code that fail when the input says.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "FuzzConnect.h"
#include "Program.h"

namespace {

using vexel_fuzz::FuzzConnect;
using vexel_fuzz::Input;

class ScriptedConnections : public vexel_fuzz::ConnectionSource {
 public:
  std::shared_ptr<tessel::CConnect> connection(Input& input) override {
    const int which = input.pick(5);
    // Builders without a connection are part of the interface too.
    if (which == 0) return nullptr;
    const std::size_t slot = static_cast<std::size_t>(which - 1) % 3;
    if (slot >= connections_.size()) {
      connections_.push_back(std::make_shared<FuzzConnect>(input, input.dialect(), failing(input)));
      return connections_.back();
    }
    return connections_[slot];
  }

  void disturb(Input& input) override {
    if (connections_.empty()) return;
    FuzzConnect& conn =
        *connections_[static_cast<std::size_t>(input.pick(static_cast<int>(connections_.size())))];
    if (input.flag()) {
      conn.set_db_type(input.dialect());
    } else {
      conn.set_failing(failing(input));
    }
  }

 private:
  static FuzzConnect::Failing failing(Input& input) {
    static constexpr FuzzConnect::Failing kModes[] = {
        FuzzConnect::Failing::kNever, FuzzConnect::Failing::kAlways,
        FuzzConnect::Failing::kAtRandom, FuzzConnect::Failing::kAtRandom};
    return kModes[input.pick(4)];
  }

  std::vector<std::shared_ptr<FuzzConnect>> connections_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  Input input(data, size);
  ScriptedConnections connections;
  vexel_fuzz::run_program(input, connections);
  return 0;
}

#include "util/process_state.h"

namespace zel {

ProcessState& Process() {
  static ProcessState state;
  return state;
}

void ResetProcessState() { Process() = ProcessState{}; }

}  // namespace zel

#pragma once
// Every utility test starts from a fresh process state and the default
// platform hooks, as a newly loaded module would.
#include <gtest/gtest.h>

#include "util/platform_hooks.h"
#include "util/process_state.h"

namespace zel {

class UtilTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ResetProcessState();
    InstallPlatformHooks({});
  }
  void TearDown() override {
    ResetProcessState();
    InstallPlatformHooks({});
  }
};

}  // namespace zel

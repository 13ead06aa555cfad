// The main of every test executable. Each test runs as a process of its own, and
// tests run side by side; each process therefore keeps its settings, library and
// recent files in a home folder of its own, so that no test sees what another
// one wrote a moment ago.
#include <gtest/gtest.h>

#include "support/test_support.h"

int main(int argc, char **argv) {
  testing::InitGoogleTest(&argc, argv);
  tabulon::test::PrivateHome home;
  return RUN_ALL_TESTS();
}

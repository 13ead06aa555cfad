// The widget tests run on Qt's offscreen platform unless told otherwise, with one
// application object for the whole run and a home folder of the process's own (tests
// run side by side and would otherwise see each other's recent files and settings).
#include <QApplication>

#include <gtest/gtest.h>

#include <cstdlib>

#include "support/test_support.h"

int main(int argc, char **argv) {
  if (std::getenv("QT_QPA_PLATFORM") == nullptr) setenv("QT_QPA_PLATFORM", "offscreen", 0);
  testing::InitGoogleTest(&argc, argv);
  tabulon::test::PrivateHome home;
  QApplication app(argc, argv);
  return RUN_ALL_TESTS();
}

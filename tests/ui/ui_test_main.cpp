// The widget tests run on Qt's offscreen platform unless told otherwise, with one
// application object for the whole run.
#include <QApplication>

#include <gtest/gtest.h>

#include <cstdlib>

int main(int argc, char **argv) {
  if (std::getenv("QT_QPA_PLATFORM") == nullptr) setenv("QT_QPA_PLATFORM", "offscreen", 0);
  testing::InitGoogleTest(&argc, argv);
  QApplication app(argc, argv);
  return RUN_ALL_TESTS();
}

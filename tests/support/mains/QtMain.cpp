#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  // Also when a test is only listed, where nobody has prepared the environment.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication app(argc, argv);
  return RUN_ALL_TESTS();
}

#include <gtest/gtest.h>

#include <QApplication>

/// Runs without a display unless QT_QPA_PLATFORM names one.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  // Successive clicks of tests are not double clicks.
  QApplication::setDoubleClickInterval(0);
  return RUN_ALL_TESTS();
}

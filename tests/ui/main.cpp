#include <gtest/gtest.h>

#include <QApplication>

/// Runs on a screen that nobody sees, unless QT_QPA_PLATFORM names another.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  // Nobody here is too quick for a double click.
  QApplication::setDoubleClickInterval(0);
  return RUN_ALL_TESTS();
}

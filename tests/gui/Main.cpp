#include <QApplication>

#include <gtest/gtest.h>

#include "appearance/Appearance.h"

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  corvane::qt::dressApplication(application);
  return RUN_ALL_TESTS();
}

#include <QApplication>

#include <gtest/gtest.h>

#include "appearance/Appearance.h"
#include "support/TemporaryFolder.h"

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  // The toolkit's open panel writes down what it looked like and begins so the next time.
  const corvane::test::TemporaryFolder toolkitSettings;
  qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(toolkitSettings.path()));
  QApplication application(argc, argv);
  corvane::qt::dressApplication(application);
  return RUN_ALL_TESTS();
}

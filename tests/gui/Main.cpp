#include <QApplication>
#include <QFont>

#include <gtest/gtest.h>

#include "appearance/Appearance.h"
#include "support/PinnedEnvironment.h"

int main(int argc, char** argv) {
  const corvane::test::PinnedEnvironment environment;
  ::testing::InitGoogleTest(&argc, argv);
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("FONTCONFIG_FILE", CORVANE_FONTS_CONFIGURATION);
  // What the toolkit is told by its own variables, where somebody wants it otherwise for once.
  for (const auto& [ours, theirs] : {std::pair("CORVANE_TEST_SCALE", "QT_SCALE_FACTOR"),
                                     std::pair("CORVANE_TEST_DESKTOP", "XDG_CURRENT_DESKTOP")}) {
    if (qEnvironmentVariableIsSet(ours)) qputenv(theirs, qgetenv(ours));
  }
  if (qEnvironmentVariable("XDG_CURRENT_DESKTOP") == QLatin1String("KDE"))
    qputenv("KDE_SESSION_VERSION", "5");
  QApplication application(argc, argv);
  QFont desktop(QStringLiteral("DejaVu Sans"));
  desktop.setPixelSize(13);  // a pixel is a point of the core
  if (const QString font = qEnvironmentVariable("CORVANE_TEST_FONT"); !font.isEmpty())
    desktop.fromString(font);
  QApplication::setFont(desktop);
  corvane::qt::dressApplication(application);
  return RUN_ALL_TESTS();
}

// The program itself, as it is started.
#include <QProcess>
#include <QProcessEnvironment>

#include <gtest/gtest.h>

#include "support/Patience.h"

namespace corvane::test {
namespace {

TEST(Start, WithoutADisplayItSaysSoAndExitsWithOne) {
  struct Case {
    const char* platform;
    const char* variable;
  };
  for (const Case& given : {Case{"xcb", "DISPLAY"}, Case{"missing", "DISPLAY"}}) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QString::fromLatin1(given.variable));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QString::fromLatin1(given.platform));
    QProcess pane;
    pane.setProcessEnvironment(environment);
    pane.start(QStringLiteral(CORVANE_PANE_PATH), {});
    ASSERT_TRUE(pane.waitForFinished(kHangMilliseconds));
    EXPECT_EQ(pane.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(pane.exitCode(), 1);
    const QByteArray said = pane.readAllStandardError();
    EXPECT_TRUE(said.endsWith("corvane-pane: there is no display to show the window on\n"))
        << said.toStdString();
  }
}

}  // namespace
}  // namespace corvane::test

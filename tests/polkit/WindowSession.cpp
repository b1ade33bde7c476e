// The administrator's part in a session with the real window, in a program of its own: it is started as an
// ordinary user, with the helper tool beside it as in an installed pane. Its argument is the root prefix.
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QTableView>
#include <cstdio>

#include <gtest/gtest.h>

#include "LinuxPane.h"
#include "PolkitMachine.h"
#include "appearance/Appearance.h"
#include "gui/Events.h"
#include "widgets/LockButton.h"
#include "widgets/TabPane.h"

namespace corvane::test {
namespace {

std::string rootPrefix;

class WindowSession : public testing::Test {
 protected:
  void SetUp() override {
    pane.open();
    showActive(pane.window());
  }
  template <typename Widget = QWidget>
  [[nodiscard]] Widget& widget(const char* name) {
    return find<Widget>(pane.window(), name);
  }
  void enter(const char* field, const char* text) {
    auto& line = widget<QLineEdit>(field);
    line.setFocus();
    line.selectAll();
    type(line, text);
    press(pane.window(), Qt::Key_Tab);
    EXPECT_EQ(line.text(), QString::fromUtf8(text)) << field;
  }
  void openTab(int index) {
    auto& bar = widget<QTabBar>("tabBar");
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.tabRect(index).center());
    ASSERT_EQ(bar.currentIndex(), index);
  }
  void clickVolume(int row) {
    auto& table = widget<QTableView>("volumesTable");
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {},
                      table.visualRect(table.model()->index(row, 0)).center());
  }
  [[nodiscard]] bool isOpen() { return widget<qt::LockButton>("authView").isOpen(); }

  qt::LinuxPane pane{rootPrefix};
};

TEST_F(WindowSession, ChangesSettingsBetweenOpeningAndClosingTheLock) {
  EXPECT_FALSE(pane.isDirect());
  EXPECT_FALSE(widget("clientGroupTextField").isEnabled());
  click(widget("authView"));
  ASSERT_TRUE(eventually([&] { return isOpen(); }));

  enter("clientGroupTextField", "R&D <lab>");
  enter("runIntervalTextField", "4");
  openTab(1);
  clickVolume(0);
  click(widget<QCheckBox>("monitorPresenceCheckbox"));
  enter("monitorPresenceThresholdTextField", "15");
  click(widget<QCheckBox>("monitorUsageCheckbox"));
  enter("monitorUsageThresholdTextField", "80");
  enter("bootVolumeFullTextField", "85");
  click(widget<QCheckBox>("automountCheckbox"));

  const auto helperEnds = watchProcess(onlyChild());
  ASSERT_TRUE(helperEnds);
  click(widget("authView"));
  EXPECT_FALSE(isOpen());
  EXPECT_TRUE(readableSoon(helperEnds.get())) << "the helper outlives the lock";
  EXPECT_TRUE(eventually(hasNoChild));
  EXPECT_FALSE(widget("automountCheckbox").isEnabled());
}

}  // namespace
}  // namespace corvane::test

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (argc != 2) {
    std::fputs("usage: window_session ROOT\n", stderr);
    return 2;
  }
  corvane::test::rootPrefix = argv[1];
  QApplication application(argc, argv);
  corvane::qt::dressApplication(application);
  return RUN_ALL_TESTS();
}

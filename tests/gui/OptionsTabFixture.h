// The page of the Options tab in the pane's window, over a client in a temporary folder.
#pragma once

#include <QAbstractItemModel>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <memory>

#include "WindowFixture.h"
#include "options/OptionsTabViewController.h"
#include "support/FakePane.h"
#include "support/Values.h"
#include "tabs/OptionsTabPage.h"

namespace corvane::test {

class OptionsPageTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    platform.layOutFolders();
    platform.writeText(platform.paths.diskJournalPid, "4711\n");
    platform.processes.text = "  PID\n 4711\n";
    writeClient();
  }

  void TearDown() override { delete page; }  // before its controls

  /// Builds the tab and shows its page.
  void open(bool unlocked = true) {
    pane.setUnlocked(unlocked);
    tab = std::make_unique<OptionsTabViewController>(platform.platform, platform.paths, controls);
    page = new qt::OptionsTabPage(controls, window.sheets());
    window.setTabPage(1, page);
    tab->awakeFromNib(pane);
    view.tabView.selectTabViewItemAtIndex(1);
    ASSERT_TRUE(eventually([&] { return page->isVisible() && page->width() > 600; }));
  }

  [[nodiscard]] QTableView& table() { return find<QTableView>(window, "volumesTable"); }
  [[nodiscard]] QStringList rowTexts() {
    QStringList texts;
    for (int row = 0; row < table().model()->rowCount(); ++row) {
      texts << table().model()->index(row, 0).data().toString();
    }
    return texts;
  }
  [[nodiscard]] int selectedRow() {
    const QModelIndexList rows = table().selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
  }
  void clickRow(int row) {
    const QRect place = table().visualRect(table().model()->index(row, 0));
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, place.center());
  }
  [[nodiscard]] Dictionary savedEntry(std::size_t index) {
    return platform.readPlist(platform.paths.volumesSettings).asArray().at(index).asDictionary();
  }

  /// No two visible widgets of the page lie over each other, and none is smaller than its text needs.
  static void expectTidy(const QWidget& root) {
    QList<QWidget*> leaves;
    for (QWidget* widget : root.findChildren<QWidget*>()) {
      const bool isPart = qobject_cast<QAbstractItemView*>(widget->parentWidget()) != nullptr ||
                          qobject_cast<QAbstractItemView*>(widget) != nullptr ||
                          widget->findChild<QLabel*>() != nullptr ||
                          widget->objectName().startsWith(QStringLiteral("qt_"));
      if (widget->isVisible() && !isPart && !widget->objectName().isEmpty()) leaves << widget;
    }
    ASSERT_GT(leaves.size(), 5);
    for (int i = 0; i < leaves.size(); ++i) {
      const QWidget* widget = leaves[i];
      const std::string name = widget->objectName().toStdString();
      const QRect place(widget->mapTo(&root, QPoint()), widget->size());
      EXPECT_TRUE(root.rect().contains(place)) << name;
      if (qobject_cast<const QLineEdit*>(widget) == nullptr) {
        EXPECT_GE(widget->width(), widget->sizeHint().width()) << name;
      }
      EXPECT_GE(widget->height(), widget->minimumSizeHint().height()) << name;
      for (int j = i + 1; j < leaves.size(); ++j) {
        const QRect other(leaves[j]->mapTo(&root, QPoint()), leaves[j]->size());
        EXPECT_FALSE(place.intersects(other)) << name << " and " << leaves[j]->objectName().toStdString();
      }
    }
  }

  TestPlatform platform;
  FakePane pane;
  OptionsTabView controls{view.mainWindow};
  std::unique_ptr<OptionsTabViewController> tab;
  qt::OptionsTabPage* page = nullptr;

 private:
  static Dictionary device(const char* name, const char* path) {
    return Dictionary::make(
        {{"DAVolumeName", text(name)}, {"DAVolumePath", text(path)}, {"DAVolumeKind", text("apfs")}});
  }
  void writeClient() {
    platform.writePlist(
        platform.paths.diskJournal,
        Dictionary::make(
            {{"Devices", Dictionary::make({{"disk1", Array::make({device("Backup", "/Volumes/Backup")})},
                                           {"disk2", Array::make({device("Data", "/Volumes/Data")})},
                                           {"disk3", Array::make({device("Preboot", "/Volumes/Preboot")})},
                                           {"disk4", Array::make({device("VM", "/private/var/vm")})}})},
             {"CurrentlyMountedVolumeDevices",
              Array::make({text("disk1"), text("disk2"), text("disk3"), text("disk4")})}}));
    platform.writePlist(platform.paths.volumesSettings,
                        Array::make({Dictionary::make({{"VolumeName", text("Archive")},
                                                       {"VolumePath", text("/Volumes/Archive")},
                                                       {"MonitorPresence", flag(true)},
                                                       {"PresenceThreshold", number(10)},
                                                       {"MonitorUsage", flag(false)},
                                                       {"UsageThreshold", number(80)}})}));
    platform.writePlist(platform.paths.timeMachineSettings,
                        Dictionary::make({{"Plugin_Enabled", flag(true)},
                                          {"Days_Until_Warning", number(30)},
                                          {"Manual_Run_Hour", text("13")},
                                          {"Days_Until_Manual_Run", number(3)},
                                          {"Enable_On_Removal", flag(false)}}));
    platform.writePlist(
        platform.paths.rootCapacitySettings,
        Dictionary::make({{"Plugin_Enabled", flag(false)}, {"Capacity_Threshold", number(90)}}));
  }
};

}  // namespace corvane::test

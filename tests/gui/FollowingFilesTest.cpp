// The open window follows the client's files: real files, real processes, real events. Each change reaches
// the tab that it concerns and no other, and takes nothing away from the person at the window: not the
// keyboard, not the selection, not the scroll position, not a text that is just being typed.
#include <QElapsedTimer>
#include <QPointer>
#include <QScrollBar>
#include <QTableView>
#include <algorithm>

#include <sys/resource.h>
#include <sys/wait.h>

#include "FollowingFilesFixture.h"
#include "widgets/LabelButton.h"

namespace corvane::test {
namespace {

using FollowingFiles = FollowingFilesTest;

/// Grows with every child that was waited for.
long pageFaultsOfChildren() {
  rusage usage{};
  EXPECT_EQ(::getrusage(RUSAGE_CHILDREN, &usage), 0);
  return usage.ru_minflt;
}

TEST_F(FollowingFiles, OpeningTheWindowFindsTheDaemonRunningWithoutStartingAProgram) {
  const long before = pageFaultsOfChildren();
  open(demo.root);
  EXPECT_EQ(widget<QLabel>("defaultTextField").text().toStdString(),
            "Select a volume to configure alerts based on presence and/or free space.");
  EXPECT_EQ(pageFaultsOfChildren(), before) << "a program was started and waited for";
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "a program was started and left";
}

TEST_F(FollowingFiles, RunsOfClientAndUpdaterShowTheirDatesBesideAGroupThatIsBeingTyped) {
  openAndSettle();
  clickTab(0);
  auto& group = widget<QLineEdit>("clientGroupTextField");
  beginTyping(group, "Photo Studio", 5);
  const Shown before = shown();
  const QString run = widget<QLabel>("lastRunClientField").text();
  const QString check = widget<QLabel>("lastRunUpdaterField").text();
  const PropertyList oldDate = readPlist(demo.paths.clientSettings).asDictionary().value("Date_Client_Run");

  Started client(DemoClient::bash(demo.paths.runClient, {"--log-parent", "test", "--force"}));
  Started updater(DemoClient::bash(demo.paths.runUpdater, {"--log-parent", "test", "--force"}));
  ASSERT_TRUE(eventually([&] {
    return widget<QLabel>("lastRunClientField").text() != run &&
           widget<QLabel>("lastRunUpdaterField").text() != check;
  }));
  EXPECT_EQ(client.exitCode(), 0);
  EXPECT_EQ(updater.exitCode(), 0);
  ASSERT_TRUE(eventually([&] { return widget("runClientButton").isEnabled(); }));
  expectStillTyping(group, "Photo Studio", 5);
  // The settings and their backup changed together: only the date of the run is new.
  const Shown after = shown();
  EXPECT_EQ(after.header, before.header);
  EXPECT_EQ(after.options, before.options);
  EXPECT_EQ(after.plugins, before.plugins);

  type(group, "s");
  press(window(), Qt::Key_Tab);
  const Dictionary settings = readPlist(demo.paths.clientSettings).asDictionary();
  EXPECT_EQ(settings.value("ClientGroup"), PropertyList::string("Photos Studio"));
  EXPECT_EQ(settings.value("Date_Client_Run"), oldDate) << "a store that was not reloaded writes what it has";
}

TEST_F(FollowingFiles, EditedClientSettingsReachHeaderConfigurationAndPluginsOneSecondLater) {
  openAndSettle();
  clickTab(0);
  auto& group = widget<QLineEdit>("clientGroupTextField");
  beginTyping(group, "Studio 2", 6);
  const Shown before = shown();

  QElapsedTimer time;
  time.start();
  std::string contents = DemoClient::contents(demo.paths.clientSettings);
  for (const auto& [from, to] :
       {std::pair("7.3.1", "7.4"), std::pair("<integer>2</integer>", "<integer>4</integer>"),
        std::pair("Design Studio", "Elsewhere"), std::pair("<string>48213</string>", "<string>1</string>")}) {
    ASSERT_NE(contents.find(from), std::string::npos) << from;
    contents.replace(contents.find(from), std::string(from).size(), to);
  }
  writeInPlace(demo.paths.clientSettings, contents);
  ASSERT_TRUE(eventually([&] {
    return widget<qt::LabelButton>("clientVersionButton").text() == QStringLiteral("Version 7.4");
  }));
  EXPECT_GT(time.elapsed(), 900) << "changes are gathered for a second";
  EXPECT_EQ(widget<QLineEdit>("runIntervalTextField").text(), QStringLiteral("4"));
  EXPECT_TRUE(pluginsWereReadAgain());
  EXPECT_EQ(shown().options, before.options);
  expectStillTyping(group, "Studio 2", 6);

  // What is typed counts, and nothing that changed meanwhile is lost by writing it.
  press(window(), Qt::Key_Return);
  const Dictionary settings = readPlist(demo.paths.clientSettings).asDictionary();
  EXPECT_EQ(settings.value("ClientGroup"), PropertyList::string("Studio 2"));
  EXPECT_EQ(settings.value("Run_Interval"), PropertyList::integer(4));
  EXPECT_EQ(settings.value("QuorlenID"), PropertyList::string("1"));
  EXPECT_EQ(settings.value("Client_Version"), PropertyList::string("7.4"));

  // With the keyboard in it, but not typed in, the field follows like every other.
  edit(demo.paths.clientSettings, "Studio 2", "Elsewhere");
  EXPECT_TRUE(eventually([&] { return group.text() == QStringLiteral("Elsewhere"); }));
  EXPECT_TRUE(group.hasFocus());
}

class FollowingVolumes : public FollowingFilesTest {
 protected:
  [[nodiscard]] QTableView& table() { return widget<QTableView>("volumesTable"); }
  [[nodiscard]] QString selected() {
    const QModelIndexList rows = table().selectionModel()->selectedRows();
    return rows.isEmpty() ? QString() : rows.first().data().toString();
  }
  [[nodiscard]] bool lists(const QString& name) { return rowOf(name) >= 0; }
  [[nodiscard]] int rowOf(const QString& name) {
    const QAbstractItemModel& model = *table().model();
    for (int row = 0; row < model.rowCount(); ++row) {
      if (model.index(row, 0).data().toString() == name) return row;
    }
    return -1;
  }
  /// Saves settings of volumes that come last in the list and are not mounted.
  void saveMoreVolumes(int count) {
    std::string entries;
    for (int i = 0; i < count; ++i) {
      const std::string name = "Zone " + std::to_string(i);
      entries += "<dict><key>VolumeName</key><string>" + name +
                 "</string><key>VolumePath</key><string>/Volumes/" + name + "</string></dict>";
    }
    edit(demo.paths.volumesSettings, "<array>", "<array>" + entries);
  }
  /// Writes the volume Aardvark into the journal, as the client's daemon does when one is mounted.
  void mountInJournal() {
    edit(demo.paths.diskJournal, "<key>Devices</key>\n\t<dict>",
         "<key>Devices</key>\n\t<dict>\n<key>disk40</key><array><dict><key>DAVolumeKind</key>"
         "<string>apfs</string><key>DAVolumeName</key><string>Aardvark</string><key>DAVolumePath</key>"
         "<string>/Volumes/Aardvark</string></dict></array>");
    edit(demo.paths.diskJournal, "<string>disk1s1</string>",
         "<string>disk1s1</string><string>disk40</string>");
  }
  [[nodiscard]] static std::filesystem::file_time_type dateOf1969() {
    return std::filesystem::file_time_type(
        std::chrono::file_clock::from_sys(std::chrono::sys_seconds(std::chrono::hours(-24))));
  }
  void clickRow(int row) {
    const QModelIndex index = table().model()->index(row, 0);
    table().scrollTo(index);
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, table().visualRect(index).center());
  }
};

TEST_F(FollowingVolumes, AMountedAndAnUnmountedVolumeAreShownBesideAThresholdThatIsBeingTyped) {
  saveMoreVolumes(40);
  openAndSettle();
  clickTab(1);
  ASSERT_TRUE(lists(QStringLiteral("Projects 2026")));
  clickRow(rowOf(QStringLiteral("Projects 2026")));
  auto& percent = widget<QLineEdit>("monitorUsageThresholdTextField");
  beginTyping(percent, "7", 0);
  // The person looks at the other end of the list meanwhile.
  QScrollBar& scrollBar = *table().verticalScrollBar();
  scrollBar.setValue(scrollBar.maximum());
  const int scroll = scrollBar.value();
  ASSERT_GT(scroll, 30);
  const Shown before = shown();

  // A volume is mounted: its folder appears, then the daemon writes it into the journal.
  std::filesystem::create_directories(demo.paths.volumes + "/Aardvark");
  mountInJournal();
  ASSERT_TRUE(eventually([&] { return lists(QStringLiteral("Aardvark")); }));
  EXPECT_EQ(selected(), QStringLiteral("Projects 2026"));
  EXPECT_EQ(scrollBar.value(), scroll);
  expectStillTyping(percent, "7", 0);
  EXPECT_EQ(shown().header, before.header);
  EXPECT_EQ(shown().configuration, before.configuration);

  // The volume that is being set is unmounted.
  edit(demo.paths.diskJournal, "<string>disk3s1</string>", "");
  std::filesystem::remove(demo.paths.volumes + "/Projects 2026");
  ASSERT_TRUE(eventually([&] { return widget("purgeButton").isEnabled(); })) << "it may be taken out now";
  EXPECT_EQ(scrollBar.value(), scroll);
  expectStillTyping(percent, "7", 0);
  press(window(), Qt::Key_5);
  EXPECT_EQ(percent.text(), QStringLiteral("57"));
  const Array saved = readPlist(demo.paths.volumesSettings).asArray();
  const auto edited = std::ranges::find_if(saved.elements(), [](const PropertyList& element) {
    return *element.asDictionary().string("VolumeName") == "Projects 2026";
  });
  ASSERT_NE(edited, saved.elements().end());
  EXPECT_EQ(edited->asDictionary().value("UsageThreshold"), PropertyList::integer(57));
}

// A journal with a date from before all dates is no reason to look at it; the folder of the volumes is.
TEST_F(FollowingVolumes, AChangeInTheVolumesFolderShowsTheListAndNothingElse) {
  openAndSettle();
  const Shown before = shown();
  mountInJournal();
  std::filesystem::last_write_time(demo.paths.diskJournal, dateOf1969());
  std::filesystem::create_directories(demo.paths.volumes + "/Aardvark");
  ASSERT_TRUE(eventually([&] { return lists(QStringLiteral("Aardvark")); }));
  const Shown after = shown();
  EXPECT_EQ(after.header, before.header);
  EXPECT_EQ(after.configuration, before.configuration);
  EXPECT_EQ(after.plugins, before.plugins);
}

TEST_F(FollowingFiles, ATimeMachineFileThatIsDeletedAndPutBackIsFollowedBesideAThresholdThatIsBeingTyped) {
  openAndSettle();
  clickTab(1);
  auto& bootVolume = widget<QLineEdit>("bootVolumeFullTextField");
  auto& days = widget<QLineEdit>("timeMachineInactiveTextField");
  EXPECT_EQ(days.text(), QStringLiteral("7"));
  EXPECT_EQ(days.toolTip(), QString());
  beginTyping(bootVolume, "8", 1);
  const Shown before = shown();
  const std::string contents = DemoClient::contents(demo.paths.timeMachineSettings);

  std::filesystem::remove(demo.paths.timeMachineSettings);
  ASSERT_TRUE(eventually([&] { return !days.toolTip().isEmpty(); }));
  EXPECT_TRUE(
      days.toolTip().contains(QStringLiteral("Time Machine reporting has been disabled. Contact support")));
  expectStillTyping(bootVolume, "8", 1);

  writeInPlace(demo.paths.timeMachineSettings, contents);
  edit(demo.paths.timeMachineSettings, "<integer>7</integer>", "<integer>21</integer>");
  ASSERT_TRUE(eventually([&] { return days.text() == QStringLiteral("21"); }));
  EXPECT_EQ(days.toolTip(), QString());
  expectStillTyping(bootVolume, "8", 1);
  EXPECT_EQ(shown().header, before.header);
  EXPECT_EQ(shown().configuration, before.configuration);
}

TEST_F(FollowingFiles, APluginThatAppearsChangesAndGoesIsFollowedByThePluginsTabAlone) {
  openAndSettle();
  const auto lists = [this](const char* title) {
    for (int row = 0; row < plugins().numberOfRows(); ++row) {
      const std::string* name = plugins().itemAtRow(row).object().asDictionary().string("PluginName");
      if (name != nullptr && *name == title) return true;
    }
    return false;
  };
  clickTab(0);
  auto& interval = widget<QLineEdit>("runIntervalTextField");
  beginTyping(interval, "5", 0);
  const Shown before = shown();
  const std::string definition = demo.paths.plugins + "/check_new.plist";
  const std::string settings = demo.paths.pluginSupport + "/check_new_settings.plist";
  writeInPlace(settings, DemoClient::contents(demo.paths.pluginSupport + "/check_web_sites_settings.plist"));
  writeInPlace(definition, DemoClient::contents(demo.paths.plugins + "/check_web_sites.plist"));
  edit(definition, "Web Sites", "Aquarium");
  ASSERT_TRUE(eventually([&] { return lists("Aquarium"); }));
  edit(definition, "Aquarium", "Aviary");
  ASSERT_TRUE(eventually([&] { return lists("Aviary"); }));
  EXPECT_FALSE(lists("Aquarium"));
  std::filesystem::remove(definition);
  ASSERT_TRUE(eventually([&] { return !lists("Aviary"); }));
  expectStillTyping(interval, "5", 0);
  const Shown after = shown();
  EXPECT_EQ(after.header, before.header);
  EXPECT_EQ(after.configuration, before.configuration);
  EXPECT_EQ(after.options, before.options);
}

/// The cell of the tree that reads so; invalid when there is none.
QModelIndex cellThatReads(const QAbstractItemModel& model, const QString& text, const QModelIndex& parent) {
  for (int row = 0; row < model.rowCount(parent); ++row) {
    const QModelIndex index = model.index(row, 0, parent);
    if (index.siblingAtColumn(1).data().toString() == text) return index.siblingAtColumn(1);
    const QModelIndex below = cellThatReads(model, text, index);
    if (below.isValid()) return below;
  }
  return {};
}

TEST_F(FollowingFiles, ATextThatIsTypedInThePluginTreeSurvivesChangesOfOtherPlugins) {
  openAndSettle();
  plugins().expandItem({}, true);
  auto& tree = widget<QTreeView>("pluginsTable");
  const QModelIndex cell = cellThatReads(*tree.model(), QStringLiteral("www.example.com"), {});
  ASSERT_TRUE(cell.isValid());
  tree.scrollTo(cell);
  QTest::mouseClick(tree.viewport(), Qt::LeftButton, {},
                    QPoint(tree.visualRect(cell).left() + 12, tree.visualRect(cell).center().y()));
  QPointer<QLineEdit> editor;
  ASSERT_TRUE(eventually([&] {
    editor = tree.findChild<QLineEdit*>(QStringLiteral("cellEditor"));
    return !editor.isNull();
  }));
  beginTyping(*editor, "intranet", 3);

  edit(demo.paths.plugins + "/check_printers.plist", "<string>Printers</string>", "<string>Presses</string>");
  // Seen in the same batch, before the plug-ins.
  edit(demo.paths.timeMachineSettings, "<integer>7</integer>", "<integer>21</integer>");
  auto& days = widget<QLineEdit>("timeMachineInactiveTextField");
  ASSERT_TRUE(eventually([&] { return days.text() == QStringLiteral("21"); }));
  ASSERT_FALSE(editor.isNull());
  expectStillTyping(*editor, "intranet", 3);
  press(window(), Qt::Key_Return);
  EXPECT_TRUE(eventually([this] {
    return readPlist(demo.paths.pluginSupport + "/check_web_sites_settings.plist")
               .asDictionary()
               .value("Site_Address") == PropertyList::string("intranet");
  }));
  EXPECT_TRUE(
      eventually([&] { return cellThatReads(*tree.model(), QStringLiteral(" Presses"), {}).isValid(); }));
}

}  // namespace
}  // namespace corvane::test

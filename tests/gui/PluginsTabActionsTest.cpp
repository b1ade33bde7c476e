// What the buttons of the Plugins tab lead to: open panels, sheets, and the validation run.
#include <QDialog>
#include <QFileDialog>
#include <QProgressBar>

#include "PluginsTabFixture.h"

namespace corvane::test {
namespace {

class PluginsTabActions : public PluginsTab {
 protected:
  /// Clicks the cell and chooses the file or folder in the panel that opens; an empty path cancels.
  void choose(const QModelIndex& cell, const std::string& path, QString* startFolder = nullptr) {
    const bool seen = answerPanel<QFileDialog>([&] { clickCell(cell); },
                                               [&](QFileDialog& panel) {
                                                 if (startFolder != nullptr)
                                                   *startFolder = panel.directory().absolutePath();
                                                 if (path.empty()) {
                                                   panel.reject();
                                                   return;
                                                 }
                                                 panel.selectFile(QString::fromStdString(path));
                                                 QMetaObject::invokeMethod(&panel, "accept");
                                               });
    EXPECT_TRUE(seen) << "no panel has opened";
  }
  [[nodiscard]] QString folder(const char* clientPath) const {
    return QString::fromStdString(paths.onDisk(clientPath));
  }
  [[nodiscard]] QString message() { return find<QLabel>(*sheet(), "message").text(); }
  [[nodiscard]] QString informative() { return find<QLabel>(*sheet(), "informative").text(); }
  /// The first line of it; the second one names the tree.
  [[nodiscard]] QString note() {
    return find<QLabel>(*sheet(), "note").text().section(QLatin1Char('\n'), 0, 0);
  }
  [[nodiscard]] QString explanation() { return find<QLabel>(*sheet(), "informative").text(); }
  [[nodiscard]] Array list(std::initializer_list<const char*> entries) {
    Array array = Array::make();
    for (const char* entry : entries) array.append(text(entry));
    return array;
  }
};

TEST_F(PluginsTabActions, AFileIsChosenInAPanelThatStartsInTheFolderOfTheFormerOne) {
  openTab();
  QString start;
  choose(value(QStringLiteral("File")), paths.onDisk("/Users/new.conf"), &start);
  EXPECT_EQ(start, folder("/Users"));
  EXPECT_EQ(stored("File"), text("/Users/new.conf"));
  EXPECT_EQ(shown(value(QStringLiteral("File"))), QStringLiteral("/Users/new.conf"));
}

TEST_F(PluginsTabActions, AFolderIsChosenInAPanelThatStartsInTheFormerOne) {
  openTab();
  QString start;
  choose(value(QStringLiteral("Folder")), paths.onDisk("/Users/Chosen"), &start);
  EXPECT_EQ(start, folder("/Users"));
  EXPECT_EQ(stored("Folder"), text("/Users/Chosen"));
}

TEST_F(PluginsTabActions, ACancelledPanelChangesNothing) {
  openTab();
  choose(value(QStringLiteral("File")), "");
  EXPECT_EQ(stored("File"), text("/Users/old.conf"));
}

TEST_F(PluginsTabActions, AChoiceIsKeptWhenTheTabIsRefreshedBehindThePanel) {
  openTab();
  const bool seen = answerPanel<QFileDialog>([&] { clickCell(value(QStringLiteral("File"))); },
                                             [&](QFileDialog& panel) {
                                               pane->assembly().plugins().refresh();
                                               panel.selectFile(folder("/Users/new.conf"));
                                               QMetaObject::invokeMethod(&panel, "accept");
                                             });
  EXPECT_TRUE(seen);
  EXPECT_EQ(stored("File"), text("/Users/new.conf"));
}

TEST_F(PluginsTabActions, AChosenFileIsAddedToTheListAndTheListSorted) {
  openTab();
  choose(value(QStringLiteral("Files")), paths.onDisk("/Users/new.conf"));
  EXPECT_EQ(stored("Files"), list({"Add a new entry", "/Users/a", "/Users/b", "/Users/new.conf"}));
  EXPECT_EQ(shown(value(QStringLiteral("Files"), 3)), QStringLiteral("/Users/new.conf"));
}

TEST_F(PluginsTabActions, AChosenFolderIsAddedToItsList) {
  openTab();
  choose(value(QStringLiteral("Folders")), paths.onDisk("/Users/Chosen"));
  EXPECT_EQ(stored("Folders"), list({"Add a new entry", "/Users/Chosen"}));
}

TEST_F(PluginsTabActions, APathThatIsInTheListAlreadyIsRefusedWithAMessage) {
  settings.set("Files", list({"Add a new entry", "/Users/new.conf"}));
  openTab();
  choose(value(QStringLiteral("Files")), paths.onDisk("/Users/new.conf"));
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(message(), QStringLiteral("An error has occurred"));
  EXPECT_EQ(explanation(), QStringLiteral("/Users/new.conf already exists in the list."));
  answerSheet("Ok");
  EXPECT_EQ(stored("Files"), list({"Add a new entry", "/Users/new.conf"}));
}

TEST_F(PluginsTabActions, ReturnOnTheRemovalSheetKeepsTheEntry) {
  openTab();
  clickCell(value(QStringLiteral("Files"), 1), -12);
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(message(), QStringLiteral("Please confirm removal."));
  EXPECT_EQ(explanation(), QStringLiteral("This will remove the entry from the array. Are you sure?"));
  press(window(), Qt::Key_Return);
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_EQ(stored("Files"), list({"Add a new entry", "/Users/a", "/Users/b"}));
}

TEST_F(PluginsTabActions, RemoveTakesTheEntryOutOfTheFileAndOfTheTree) {
  openTab();
  clickCell(value(QStringLiteral("Files"), 1), -12);
  answerSheet("Remove");
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_EQ(stored("Files"), list({"Add a new entry", "/Users/b"}));
  EXPECT_EQ(shown(value(QStringLiteral("Files"), 1)), QStringLiteral("/Users/b"));
}

TEST_F(PluginsTabActions, TheKeyboardRemovesAnEntryToo) {
  openTab();
  goTo(value(QStringLiteral("Files"), 2));
  press(window(), Qt::Key_Space);
  ASSERT_NE(sheet(), nullptr);
  answerSheet("Remove");
  EXPECT_EQ(stored("Files"), list({"Add a new entry", "/Users/a"}));
}

TEST_F(PluginsTabActions, ARemovalIsCarriedOutAlthoughTheTabIsRefreshedBehindItsSheet) {
  openTab();
  clickCell(value(QStringLiteral("Files"), 1), -12);
  ASSERT_NE(sheet(), nullptr);
  pane->assembly().plugins().refresh();
  answerSheet("Remove");
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_EQ(stored("Files"), list({"Add a new entry", "/Users/b"}));
}

TEST_F(PluginsTabActions, ARemovalThatFailsSaysSo) {
  openTab();
  clickCell(value(QStringLiteral("Files"), 1), -12);
  std::filesystem::remove(settingsFile());
  answerSheet("Remove");
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(message(), QStringLiteral("An error has occurred"));
  EXPECT_EQ(explanation(), QStringLiteral("There was an error trying to remove the selected file/folder. "
                                          "Please reload the plugin and try again."));
  press(window(), Qt::Key_Return);
  EXPECT_EQ(sheet(), nullptr);
}

TEST_F(PluginsTabActions, AValidationThatSucceedsShowsThePluginsMessage) {
  writeExecutable("echo \"0,All settings valid: $*\"");
  openTab();
  clickCell(value(QStringLiteral("Test")));
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(message(), QStringLiteral("Plugin Validation Succeeded"));
  EXPECT_EQ(explanation(), QStringLiteral("All settings valid: -v --test-mode"));
  answerSheet("OK");
  EXPECT_EQ(outline().selectedRow(), -1);
}

TEST_F(PluginsTabActions, AValidationThatFailsShowsTheFirstLineOnly) {
  writeExecutable("printf '3,Server unreachable\\nmore\\n'");
  openTab();
  clickCell(value(QStringLiteral("Test")));
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(message(), QStringLiteral("Plugin Validation Failed"));
  EXPECT_EQ(explanation(), QStringLiteral("Server unreachable"));
}

TEST_F(PluginsTabActions, APluginWithoutAnExecutableFailsItsValidation) {
  openTab();
  clickCell(value(QStringLiteral("Test")));
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(message(), QStringLiteral("Plugin Validation Failed"));
}

/// Whether the process is there and not merely waiting to be collected.
bool isRunning(const std::string& pid) {
  std::ifstream commandLine("/proc/" + pid + "/cmdline");
  return !pid.empty() && commandLine.get() != std::ifstream::traits_type::eof();
}

TEST_F(PluginsTabActions, CancelEndsAHangingPluginAndAllThatItHasStarted) {
  const std::string pids = paths.onDisk("/private/tmp/pids");
  writeExecutable("sleep 1000 & echo \"$! $$\" >" + pids + "; wait");
  openTab();
  bool windowTakesNothing = false;
  QString title;
  const bool seen = answerPanel<QDialog>(
      [&] { clickCell(value(QStringLiteral("Test"))); },
      [&](QDialog& panel) {
        title = find<QLabel>(panel, "message").text();
        windowTakesNothing = panel.isModal() && QApplication::activeModalWidget() == &panel &&
                             panel.windowModality() == Qt::ApplicationModal;
        // The plug-in has begun when it has told its processes.
        ASSERT_TRUE(eventually([&] {
          std::string child, parent;
          std::ifstream(pids) >> child >> parent;
          return isRunning(child) && isRunning(parent);
        }));
        click(find<QPushButton>(panel, "cancelButton"));
      });
  ASSERT_TRUE(seen);
  EXPECT_EQ(title, QStringLiteral("Testing settings…"));
  EXPECT_TRUE(windowTakesNothing);
  std::string child, parent;
  std::ifstream(pids) >> child >> parent;
  EXPECT_TRUE(eventually([&] { return !isRunning(child) && !isRunning(parent); }));
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(message(), QStringLiteral("Plugin Validation Failed"));
  EXPECT_EQ(informative(), QStringLiteral("Error running plugin"));
  EXPECT_EQ(note(), QStringLiteral("You have cancelled the test before the plug-in answered."));
  answerSheet("OK");
  EXPECT_EQ(sheet(), nullptr);
  clickCell(option(QStringLiteral("Tick")));  // the tab is usable as before
  EXPECT_EQ(stored("Tick"), flag(true));
}

}  // namespace
}  // namespace corvane::test

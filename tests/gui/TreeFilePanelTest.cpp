// Choosing a file of a tree: inside of it, by the paths that the client knows.
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <filesystem>

#include "Assistive.h"
#include "Events.h"
#include "services/QtDialogs.h"
#include "support/TemporaryFolder.h"
#include "trees/TreeFilePanel.h"
#include "widgets/SheetHost.h"

namespace corvane::test {
namespace {

using qt::TreeFilePanel;

class TreeFilePanelTest : public ::testing::Test {
 protected:
  void SetUp() override {
    folder.writeFile("tree/Library/a.plist");
    folder.writeFile("tree/Users/clerk/b.txt");
    folder.writeFile("outside.txt");
    folder.makeFolder("treehouse");
  }
  static QString q(const std::string& text) { return QString::fromStdString(text); }
  /// Runs the panel and has it looked at; what was chosen then. It is cancelled when it is still there.
  std::vector<std::string> run(const OpenPanelDescription& description,
                               const std::function<void(TreeFilePanel&)>& look) {
    std::vector<std::string> chosen;
    EXPECT_TRUE(answerPanel<TreeFilePanel>([&] { chosen = dialogs.runOpenPanel(description); },
                                           [&](TreeFilePanel& panel) {
                                             look(panel);
                                             if (panel.isVisible()) panel.reject();
                                           }));
    return chosen;
  }
  std::vector<std::string> typePath(const std::string& path, OpenPanelDescription description = {}) {
    description.directory = description.directory.empty() ? root : description.directory;
    said.clear();
    return run(description, [&](TreeFilePanel& panel) {
      auto& name = find<QLineEdit>(panel, "fileNameEdit");
      name.setFocus();
      type(name, path.c_str());
      click(*find<QDialogButtonBox>(panel, "buttonBox").button(QDialogButtonBox::Open));
      const auto& refusal = find<QLabel>(panel, "refusal");
      if (refusal.isVisible()) said = refusal.text().toStdString();
    });
  }
  static std::string place(TreeFilePanel& panel) { return find<QLabel>(panel, "place").text().toStdString(); }

  TemporaryFolder folder;
  const std::string root = folder / "tree";
  QWidget window;
  qt::SheetHost host{&window};
  qt::QtDialogs dialogs{host, root};
  std::string said;
};

TEST_F(TreeFilePanelTest, BeginsWhereItIsToldOrInTheTreeAndShowsThePathThatTheClientKnows) {
  struct Case {
    std::string wanted;
    std::string shown;
  };
  for (const Case& each :
       {Case{"", "/"}, Case{root + "/Users/clerk", "/Users/clerk"}, Case{root + "/Users/gone/away", "/Users"},
        Case{folder.path(), "/"}, Case{folder / "treehouse", "/"}}) {
    OpenPanelDescription description;
    description.directory = each.wanted;
    (void)run(description, [&](TreeFilePanel& panel) { EXPECT_EQ(place(panel), each.shown) << each.wanted; });
  }
}

TEST_F(TreeFilePanelTest, BeginsWhereTheLastOneWasLeftWhenItIsToldNoFolder) {
  EXPECT_FALSE(typePath("/Users/clerk/b.txt").empty());
  (void)run({}, [&](TreeFilePanel& panel) { EXPECT_EQ(place(panel), "/Users/clerk"); });
  std::filesystem::remove_all(folder / "tree/Users/clerk");
  (void)run({}, [&](TreeFilePanel& panel) { EXPECT_EQ(place(panel), "/Users"); });
}

TEST_F(TreeFilePanelTest, ChoosesByThePathThatTheClientKnows) {
  EXPECT_EQ(typePath("/Users/clerk/b.txt"), (std::vector<std::string>{root + "/Users/clerk/b.txt"}));
  EXPECT_TRUE(typePath(root + "/Library/a.plist").empty()) << "the client knows no such path";
  EXPECT_EQ(typePath("/../../Users/clerk/b.txt"), (std::vector<std::string>{root + "/Users/clerk/b.txt"}));
}

TEST_F(TreeFilePanelTest, AFolderThatIsTypedIsEnteredAndChosenOnlyWhereFoldersAre) {
  (void)run({}, [](TreeFilePanel& panel) {
    auto& name = find<QLineEdit>(panel, "fileNameEdit");
    name.setFocus();
    type(name, "/Users/clerk");
    press(panel, Qt::Key_Return);
    EXPECT_TRUE(panel.isVisible());
    EXPECT_EQ(place(panel), "/Users/clerk");
  });
  OpenPanelDescription folders;
  folders.canChooseFiles = false;
  folders.canChooseDirectories = true;
  EXPECT_EQ(typePath("/Users/clerk", folders), (std::vector<std::string>{root + "/Users/clerk"}));
  EXPECT_EQ(typePath("/", folders), (std::vector<std::string>{root}));
}

TEST_F(TreeFilePanelTest, GoesNoHigherThanTheTree) {
  OpenPanelDescription description;
  description.directory = root + "/Users";
  (void)run(description, [&](TreeFilePanel& panel) {
    auto& up = find<QToolButton>(panel, "toParentButton");
    EXPECT_TRUE(up.isEnabled());
    click(up);
    EXPECT_EQ(place(panel), "/");
    EXPECT_TRUE(eventually([&] { return !up.isEnabled(); }));
    press(panel, Qt::Key_Up, Qt::AltModifier);
    emit panel.directoryEntered(q(folder.path()));
    EXPECT_EQ(place(panel), "/");
    EXPECT_EQ(panel.directory().absolutePath(), q(root));
  });
}

TEST_F(TreeFilePanelTest, RefusesWhatALinkLeadsToOutsideAndSaysSo) {
  std::filesystem::create_symlink(folder / "outside.txt", root + "/link.txt");
  std::filesystem::create_symlink(folder / "treehouse", root + "/house");
  std::filesystem::create_symlink("Users/clerk/b.txt", root + "/inside.txt");
  EXPECT_TRUE(typePath("link.txt").empty());
  EXPECT_EQ(said, "\"/link.txt\" can't be chosen: it lies outside of tree.");
  OpenPanelDescription folders;
  folders.canChooseFiles = false;
  folders.canChooseDirectories = true;
  EXPECT_TRUE(typePath("/house", folders).empty());
  EXPECT_EQ(said, "\"/house\" can't be chosen: it lies outside of tree.");
  EXPECT_TRUE(typePath("../outside.txt").empty());
  EXPECT_EQ(typePath("inside.txt"), (std::vector<std::string>{root + "/inside.txt"}))
      << "called what it was found under";
}

TEST_F(TreeFilePanelTest, SaysWhatIsAskedForAndOfWhichTree) {
  OpenPanelDescription folders;
  folders.canChooseFiles = false;
  folders.canChooseDirectories = true;
  QString title;
  const auto look = [&](TreeFilePanel& panel) { title = panel.windowTitle(); };
  (void)run({}, look);
  EXPECT_EQ(title, QStringLiteral("Choose a file — tree — %1").arg(q(root)));
  (void)run(folders, look);
  EXPECT_EQ(title, QStringLiteral("Choose a folder — tree — %1").arg(q(root)));
}

TEST_F(TreeFilePanelTest, MakesAndRemovesNothing) {
  (void)run({}, [](TreeFilePanel& panel) {
    EXPECT_TRUE(panel.testOption(QFileDialog::ReadOnly));
    EXPECT_FALSE(find(panel, "newFolderButton").isVisible());
    EXPECT_FALSE(find(panel, "sidebar").isVisible()) << "it would lead out of the tree";
  });
}

}  // namespace
}  // namespace corvane::test

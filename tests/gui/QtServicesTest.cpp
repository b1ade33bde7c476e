#include <QAbstractItemView>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QProgressBar>
#include <QPushButton>
#include <QSocketNotifier>
#include <QTimer>
#include <QTreeView>
#include <algorithm>
#include <fstream>
#include <map>

#include <gtest/gtest.h>
#include <unistd.h>

#include "CommandLine.h"
#include "Events.h"
#include "GuiFixture.h"
#include "services/QtBundle.h"
#include "services/QtDialogs.h"
#include "services/QtRunLoop.h"
#include "services/QtWorkspace.h"
#include "services/TestingPanel.h"

namespace corvane::test {
namespace {

using qt::parseCommandLine;
using qt::QtRunLoop;
using qt::QtWorkspace;

TEST(QtRunLoop, ATimerFiresOnceOrAgainAndAgain) {
  QtRunLoop loop;
  int once = 0;
  int often = 0;
  const auto single = loop.scheduleTimer(0.001, false, [&] { ++once; });
  const auto repeating = loop.scheduleTimer(0.001, true, [&] { ++often; });
  EXPECT_TRUE(eventually([&] { return often >= 3; }));
  EXPECT_EQ(once, 1);
}

TEST(QtRunLoop, ATimerMayEndItselfInItsOwnCall) {
  QtRunLoop loop;
  int fired = 0;
  std::unique_ptr<RunLoop::Source> source;
  source = loop.scheduleTimer(0, true, [&] {
    ++fired;
    source.reset();
  });
  int later = 0;
  const auto after = loop.scheduleTimer(0.001, true, [&] { ++later; });
  EXPECT_TRUE(eventually([&] { return later >= 5; }));
  EXPECT_EQ(fired, 1);
}

TEST(QtRunLoop, ADescriptorReportsWhatCanBeReadAndTheOtherEndsClosing) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  QtRunLoop loop;
  int calls = 0;
  auto source = loop.watchDescriptor(ends[0], [&] {
    ++calls;
    char byte = 0;
    (void)!::read(ends[0], &byte, 1);
  });
  ASSERT_EQ(::write(ends[1], "x", 1), 1);
  EXPECT_TRUE(eventually([&] { return calls == 1; }));
  ::close(ends[1]);
  EXPECT_TRUE(eventually([&] { return calls >= 2; }));
  source.reset();
  ::close(ends[0]);
}

TEST(QtRunLoop, ASourceMayOutliveItsLoop) {
  auto loop = std::make_unique<QtRunLoop>();
  auto source = loop->scheduleTimer(1, true, [] {});
  loop.reset();
  source.reset();
  EXPECT_EQ(source, nullptr);
}

TEST(QtWorkspace, OpensWebAndMailAddressesOnly) {
  OpenedUrls opened;
  QtWorkspace workspace;
  std::vector<std::string> said;
  for (const char* address :
       {"http://a.example", "https://b.example/x?y#z", "mailto:help@example.com", "file:///etc/passwd",
        "javascript:alert(1)", "http://", "not an address", "", "ssh://host", "http://[bad"}) {
    if (workspace.openUrl(address)) said.emplace_back(address);
  }
  EXPECT_EQ(said, opened.list) << "and it says which";
  EXPECT_EQ(opened.list, (std::vector<std::string>{"http://a.example", "https://b.example/x?y#z",
                                                   "mailto:help@example.com"}));
}

TEST(QtWorkspace, ALongerOrLargerTextIsWider) {
  QtWorkspace workspace;
  const Font small{Font::Family::User, 11, false, true};
  const Font large{Font::Family::User, 22, false, true};
  EXPECT_EQ(workspace.textWidth("", small), 0);
  EXPECT_GT(workspace.textWidth("wider", small), workspace.textWidth("wide", small));
  EXPECT_GT(workspace.textWidth("wide", large), 1.5 * workspace.textWidth("wide", small));
}

TEST(QtBundle, KnowsItsNameItsIconAndNothingElse) {
  qt::QtBundle bundle;
  EXPECT_EQ(bundle.name(), "Monitoring Client");
  EXPECT_FALSE(bundle.pathForResource("Corvane", "icns").empty());
  EXPECT_TRUE(bundle.pathForResource("Other", "icns").empty());
  EXPECT_TRUE(bundle.pathForAuxiliaryExecutable("no-such-helper").empty());
  EXPECT_TRUE(bundle.pathForAuxiliaryExecutable("../../bin/sh").empty());
}

TEST(TestingPanel, EndsWhenTheAnswerComesOrTheUserCancels) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  QWidget window;
  QTimer::singleShot(0, &window, [&] { ASSERT_EQ(::write(ends[1], "x", 1), 1); });
  EXPECT_TRUE(qt::waitReadable(&window, ends[0]));
  char byte = 0;
  ASSERT_EQ(::read(ends[0], &byte, 1), 1);
  QString title;
  QTimer::singleShot(0, &window, [&] {
    QWidget* panel = QApplication::activeModalWidget();
    ASSERT_NE(panel, nullptr);
    title = panel->windowTitle();
    click(find<QPushButton>(*panel, "cancelButton"));
  });
  EXPECT_FALSE(qt::waitReadable(&window, ends[0]));
  EXPECT_EQ(title, QStringLiteral("Testing settings…"));
  ::close(ends[0]);
  ::close(ends[1]);
}

TEST(TestingPanel, LooksBusyAsLongAsItIsOpen) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  QWidget window;
  bool moved = false;
  QTimer::singleShot(0, &window, [&] {
    auto& bar = find<QProgressBar>(*QApplication::activeModalWidget(), "progress");
    const auto picture = [&bar] { return bar.grab().toImage(); };
    const QImage first = picture();
    std::map<QRgb, int> colours;  // in the middle of the bar's height, and how much there is of each
    for (int x = 0; x < first.width(); ++x) ++colours[first.pixel(x, first.height() / 2)];
    for (const auto& [colour, length] : colours)
      EXPECT_LT(length, first.width() * 3 / 4)
          << "one colour all along looks done: " << QColor(colour).name().toStdString();
    EXPECT_TRUE(std::any_of(colours.begin(), colours.end(), [&first](const auto& each) {
      return each.second > first.width() / 5 && each.second < first.width() / 2;
    })) << "nothing glides";
    moved = eventually([&] { return picture() != first; });
    EXPECT_EQ(::write(ends[1], "x", 1), 1);
  });
  EXPECT_TRUE(qt::waitReadable(&window, ends[0]));
  EXPECT_TRUE(moved);
  ::close(ends[0]);
  ::close(ends[1]);
}

TEST(TestingPanel, NoKeyThatBeganTheTestCancelsIt) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  QWidget window;
  bool isOpen = false;
  QTimer::singleShot(0, &window, [&] {
    QWidget* panel = QApplication::activeModalWidget();
    ASSERT_NE(panel, nullptr);
    QWidget& cancel = find(*panel, "cancelButton");
    EXPECT_EQ(panel->focusWidget(), &cancel);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Escape}) {
      hold(*panel, key);
    }
    press(*panel, Qt::Key_Return);
    press(*panel, Qt::Key_Enter);
    QTest::keyRelease(&cancel, Qt::Key_Space);  // the one that was pressed before
    isOpen = panel->isVisible();
    ASSERT_EQ(::write(ends[1], "x", 1), 1);
  });
  EXPECT_TRUE(qt::waitReadable(&window, ends[0]));
  EXPECT_TRUE(isOpen);
  char byte = 0;
  ASSERT_EQ(::read(ends[0], &byte, 1), 1);
  for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Space}) {
    QTimer::singleShot(0, &window, [&] { press(*QApplication::activeModalWidget(), key); });
    EXPECT_FALSE(qt::waitReadable(&window, ends[0]));
  }
  ::close(ends[0]);
  ::close(ends[1]);
}

class OpenPanel : public ::testing::Test {
 protected:
  void SetUp() override {
    std::filesystem::create_directory(folder / "inner");
    for (const char* name : {"a.txt", "b.txt"}) std::ofstream(folder / name) << name;
  }
  /// Runs the panel; `look` sees it before the entries of its folder are chosen, or, without any, it is
  /// cancelled.
  std::vector<std::string> run(const OpenPanelDescription& description, const QStringList& entries,
                               const std::function<void(QFileDialog&)>& look = {}) {
    std::vector<std::string> chosen;
    const bool seen = answerPanel<QFileDialog>([&] { chosen = dialogs.runOpenPanel(description); },
                                               [&](QFileDialog& panel) {
                                                 if (look) look(panel);
                                                 choose(panel, entries);
                                               });
    EXPECT_TRUE(seen);
    return chosen;
  }
  [[nodiscard]] OpenPanelDescription description() const {
    OpenPanelDescription panel;
    panel.directory = folder.path();
    return panel;
  }

  TemporaryFolder folder;
  QWidget window;
  qt::SheetHost host{&window};
  qt::QtDialogs dialogs{host};

 private:
  static void choose(QFileDialog& panel, const QStringList& entries) {
    if (entries.isEmpty()) {
      QTest::keyClick(&panel, Qt::Key_Escape);
      return;
    }
    // Clicks in the list, once it is filled; all but the first with Control.
    auto& list = find<QAbstractItemView>(panel, "treeView");
    Qt::KeyboardModifiers modifiers;
    for (const QString& entry : entries) {
      QModelIndexList found;
      ASSERT_TRUE(eventually([&] {
        const QModelIndex first = list.model()->index(0, 0, list.rootIndex());
        found = first.isValid() ? list.model()->match(first, Qt::DisplayRole, entry, 1, Qt::MatchExactly)
                                : QModelIndexList();
        return !found.isEmpty();
      }));
      QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers, list.visualRect(found.first()).center());
      modifiers = Qt::ControlModifier;
    }
    click(*panel.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open));
  }
};

TEST_F(OpenPanel, AReturnThatIsHeldDownChoosesNothing) {
  OpenPanelDescription folders = description();
  folders.canChooseFiles = false;
  folders.canChooseDirectories = true;
  bool staysOpen = false;
  EXPECT_TRUE(run(folders, {}, [&](QFileDialog& panel) {
                hold(panel, Qt::Key_Return);
                hold(panel, Qt::Key_Enter);
                staysOpen = panel.isVisible();
              }).empty());
  EXPECT_TRUE(staysOpen);
}

TEST_F(OpenPanel, StartsInTheGivenFolderAndAnswersWithTheChosenFile) {
  QString start;
  EXPECT_EQ(run(description(), {QStringLiteral("b.txt")},
                [&](const QFileDialog& panel) { start = panel.directory().absolutePath(); }),
            (std::vector<std::string>{folder / "b.txt"}));
  EXPECT_EQ(start.toStdString(), folder.path());
}

TEST_F(OpenPanel, OffersFoldersAloneWhenFilesMayNotBeChosen) {
  OpenPanelDescription folders = description();
  folders.canChooseFiles = false;
  folders.canChooseDirectories = true;
  QFileDialog::FileMode mode = QFileDialog::AnyFile;
  EXPECT_EQ(
      run(folders, {QStringLiteral("inner")}, [&](const QFileDialog& panel) { mode = panel.fileMode(); }),
      (std::vector<std::string>{folder / "inner"}));
  EXPECT_EQ(mode, QFileDialog::Directory);
}

TEST_F(OpenPanel, ShowsEveryColumnOfAFileWhole) {
  (void)run(description(), {QStringLiteral("a.txt")}, [](const QFileDialog& panel) {
    auto& list = find<QTreeView>(panel, "treeView");
    const auto isWhole = [&] {
      bool whole = list.model()->rowCount(list.rootIndex()) > 0;
      for (int column = 0; column < list.model()->columnCount(); ++column)
        whole = whole && list.columnWidth(column) >=
                             static_cast<const QAbstractItemView&>(list).sizeHintForColumn(column);
      return whole && list.header()->length() <= list.viewport()->width();
    };
    EXPECT_TRUE(eventually(isWhole));
  });
}

TEST_F(OpenPanel, AnswersWithSeveralFilesWhereThatIsAllowedAndElseWithOne) {
  const QStringList both{QStringLiteral("a.txt"), QStringLiteral("b.txt")};
  EXPECT_EQ(run(description(), both).size(), 1U);
  OpenPanelDescription several = description();
  several.allowsMultipleSelection = true;
  EXPECT_EQ(run(several, both), (std::vector<std::string>{folder / "a.txt", folder / "b.txt"}));
}

TEST_F(OpenPanel, AnswersWithNothingWhenItIsCancelled) { EXPECT_TRUE(run(description(), {}).empty()); }

TEST(CommandLine, AnswersHelpVersionAndMistakesWithoutOpeningThePane) {
  EXPECT_TRUE(parseCommandLine({QStringLiteral("corvane-pane")}).opensPane());
  EXPECT_TRUE(parseCommandLine({QStringLiteral("p"), QStringLiteral("--version")})
                  .output.startsWith(QStringLiteral("corvane-pane ")));
  const QString help = parseCommandLine({QStringLiteral("p"), QStringLiteral("--help")}).output;
  EXPECT_TRUE(help.startsWith(
      QStringLiteral("Usage: corvane-pane [options] [folder]\nSettings of the monitoring client.\n")));
  EXPECT_TRUE(help.contains(QStringLiteral("--root <folder>")));
  for (const QStringList& arguments :
       {QStringList{QStringLiteral("--root"), QStringLiteral("/no/such/folder")},
        QStringList{QStringLiteral("--root")}, QStringList{QStringLiteral("--unknown")},
        QStringList{QStringLiteral("folder"), QStringLiteral("stray")},
        QStringList{QStringLiteral("--appearance"), QStringLiteral("pink")},
        QStringList{QStringLiteral("--screenshots"), QStringLiteral("/no/such/folder")}}) {
    const auto line = parseCommandLine(QStringList{QStringLiteral("corvane-pane")} + arguments);
    EXPECT_FALSE(line.error.isEmpty()) << arguments.join(QLatin1Char(' ')).toStdString();
  }
}

TEST(CommandLine, TheRootIsTheCanonicalFolderAndTheSystemsOwnRootIsNone) {
  TemporaryFolder folder;
  const QString path = QString::fromStdString(folder.path());
  EXPECT_EQ(
      parseCommandLine({QStringLiteral("p"), QStringLiteral("--root"), path + QStringLiteral("/./")}).root,
      folder.path());
  EXPECT_EQ(parseCommandLine({QStringLiteral("p"), QStringLiteral("--root"), QStringLiteral("/")}).root, "");
}

}  // namespace
}  // namespace corvane::test

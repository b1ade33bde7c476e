// Choosing a tree: the start page, the trees that were opened last, folders that are dropped, refused, named
// on the command line; and saying which tree is open.
#include <QDropEvent>
#include <QFileDialog>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>
#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

#include "Assistive.h"
#include "CommandLine.h"
#include "Events.h"
#include "GuiFixture.h"
#include "trees/StartPage.h"
#include "trees/Tree.h"
#include "trees/TreeButton.h"
#include "trees/TreeWindows.h"
#include "widgets/FittedLabel.h"
#include "widgets/LockButton.h"

namespace corvane::test {
namespace {

using qt::LinuxPane;
using qt::objectionTo;
using qt::RecentTrees;
using qt::StartPage;
using qt::TreeButton;
using qt::TreeWindows;

QString q(const std::string& text) { return QString::fromStdString(text); }

class Trees : public ::testing::Test {
 protected:
  /// A tree of its own with a client in it.
  std::string tree(const std::string& name) {
    const PathTable paths(folder / name);
    for (const std::string& part : {paths.pluginSupport, paths.plugins, paths.updaterSupport, paths.localInfo,
                                    paths.onDisk("/private/tmp")}) {
      std::filesystem::create_directories(part);
    }
    EXPECT_TRUE(PosixPropertyListFiles().write(paths.clientSettings, Dictionary::make()));
    return folder / name;
  }
  StartPage& start() {
    windows.showStart();
    showActive(*windows.startPage());
    return *windows.startPage();
  }
  TreeButton& button(const std::string& path) {
    return find<TreeButton>(*windows.startPage(), ("tree " + path).c_str());
  }
  QString refusal() {
    const auto& label = find<QLabel>(*windows.startPage(), "refusal");
    return label.isVisible() ? label.text() : QString();
  }
  std::vector<std::string> openTrees() {
    std::vector<std::string> roots;
    for (LinuxPane* pane : windows.panes()) roots.push_back(pane->assembly().paths().rootPrefix());
    return roots;
  }
  /// What a file manager does that lets go of these over the window.
  bool drop(QWidget& window, const QList<QUrl>& urls) {
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&window, &enter);
    if (!enter.isAccepted()) return false;
    QDropEvent event(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&window, &event);
    return event.isAccepted();
  }
  using Roots = std::vector<std::string>;

  TemporaryFolder folder;
  RecentTrees recents{q(folder / "state/trees")};
  QStringList disks;
  int looksAtDisks = 0;
  TreeWindows windows{{recents, [this] {
                         ++looksAtDisks;
                         return disks;
                       }}};
};

TEST_F(Trees, TheStartPageOffersTheDisksAndTheTreesThatWereOpenedLast) {
  const auto disk = tree("Macintosh HD");
  const auto staging = tree("staging");
  disks = {q(disk)};
  recents.add(q(staging));
  recents.add(q(disk));
  StartPage& page = start();
  EXPECT_EQ(looksAtDisks, 1) << "mount points are looked at once";
  EXPECT_EQ(page.findChildren<TreeButton*>().size(), 2)
      << "a disk that was opened last stands among the disks";
  EXPECT_EQ(button(disk).text(), QStringLiteral("Macintosh HD"));
  EXPECT_LT(button(disk).mapTo(&page, QPoint()).y(), button(staging).mapTo(&page, QPoint()).y());
  for (const char* label : {"heading", "explanation", "disksLabel", "recentsLabel"})
    EXPECT_TRUE(find<QLabel>(page, label).isVisible()) << label;
}

TEST_F(Trees, WithoutDisksAndRecentTreesTheStartPageOffersToOpenAFolderAlone) {
  StartPage& page = start();
  for (const char* part : {"disks", "recents", "clearButton", "refusal"})
    EXPECT_FALSE(find(page, part).isVisible()) << part;
  EXPECT_TRUE(find(page, "openButton").hasFocus());
}

TEST_F(Trees, AClickOnATreeOpensItInPlaceOfTheStartPage) {
  const auto staging = tree("staging");
  recents.add(q(staging));
  start();
  click(button(staging));
  EXPECT_EQ(openTrees(), Roots{staging});
  EXPECT_EQ(windows.startPage(), nullptr);
}

TEST_F(Trees, EveryTreeOfTheStartPageIsInReachOfTheKeyboard) {
  const auto disk = tree("disk");
  const auto staging = tree("staging");
  disks = {q(disk)};
  recents.add(q(staging));
  StartPage& page = start();
  press(page, Qt::Key_Tab);
  EXPECT_TRUE(button(disk).hasFocus());
  press(page, Qt::Key_Tab);
  EXPECT_TRUE(find(page, "clearButton").hasFocus());
  press(page, Qt::Key_Tab);
  EXPECT_TRUE(button(staging).hasFocus());
  press(page, Qt::Key_Return);
  EXPECT_EQ(openTrees(), Roots{staging});
}

TEST_F(Trees, AssistiveTechnologyOpensATreeByNameAndPath) {
  const auto disk = tree("Macintosh HD");
  disks = {q(disk)};
  StartPage& page = start();
  pressThing(
      thingCalled(accessible(page), QAccessible::PushButton, QStringLiteral("Macintosh HD — ") + q(disk)));
  EXPECT_TRUE(eventually([&] { return openTrees() == Roots{disk}; }));
}

TEST_F(Trees, WhatIsOpenedIsRememberedOnceTheNewestFirst) {
  const auto one = tree("one");
  const auto two = tree("two");
  for (const auto& each : {one, two, one}) windows.open(q(each));
  EXPECT_EQ(recents.list(), (QStringList{q(one), q(two)}));
  EXPECT_EQ(openTrees(), (Roots{one, two})) << "a tree that is open already is not opened again";
  // The core says so in a panel of its own.
  EXPECT_TRUE(answerPanel<QDialog>([&] { windows.openPane(folder / "no client here"); },
                                   [](QDialog& panel) { press(panel, Qt::Key_Return); }));
  EXPECT_EQ(recents.list(), (QStringList{q(one), q(two)}));
}

TEST_F(Trees, OnlySomeTreesAreRememberedAndOnlyForTheirUser) {
  for (int i = 0; i < 12; ++i) recents.add(QStringLiteral("/tree %1").arg(i));
  EXPECT_EQ(recents.list().size(), RecentTrees::kMost);
  EXPECT_EQ(recents.list().first(), QStringLiteral("/tree 11"));
  struct stat place {};
  ASSERT_EQ(::stat((folder / "state").c_str(), &place), 0);
  EXPECT_EQ(place.st_mode & 077U, 0U);
}

TEST_F(Trees, RecentTreesCanBeCleared) {
  const auto staging = tree("staging");
  recents.add(q(staging));
  StartPage& page = start();
  click(find(page, "clearButton"));
  EXPECT_FALSE(find(page, "recents").isVisible());
  EXPECT_TRUE(find(page, "openButton").hasFocus());
  EXPECT_TRUE(recents.list().isEmpty());
}

TEST_F(Trees, AFileOfRecentTreesThatIsSomethingElseOffersNothingWrong) {
  folder.writeFile("state/trees",
                   std::string("[trees]\nopened=relative, /whole, @Invalid(), \"\x01\"\n\xff[[["));
  for (const QString& each : recents.list())
    EXPECT_TRUE(each.startsWith(QLatin1Char('/'))) << each.toStdString();
}

TEST_F(Trees, NothingIsRememberedInAFolderOfSomebodyElse) {
  if (::geteuid() != 0) GTEST_SKIP() << "NOT TESTED: this needs root, to act as several users";
  const std::string home = folder.makeFolder("home");
  ASSERT_EQ(::chown(home.c_str(), 4712, 4712), 0);
  const QByteArray before = qgetenv("XDG_STATE_HOME");
  qputenv("XDG_STATE_HOME", QByteArray::fromStdString(home + "/state"));
  EXPECT_EQ(RecentTrees::usualFile(), QString());
  ASSERT_EQ(::chown(home.c_str(), 0, 0), 0);
  EXPECT_EQ(RecentTrees::usualFile(), q(home + "/state/corvane-pane/trees"));
  before.isNull() ? qunsetenv("XDG_STATE_HOME") : qputenv("XDG_STATE_HOME", before);
  RecentTrees nowhere{QString()};
  nowhere.add(QStringLiteral("/tree"));
  EXPECT_TRUE(nowhere.list().isEmpty());
}

TEST_F(Trees, AFolderWithoutAClientIsRefusedWithTheReason) {
  const auto empty = folder.makeFolder("empty");
  const auto file = folder.writeFile("file");
  const auto inside = tree("whole") + "/Library/Corvane/Plugins";
  EXPECT_EQ(objectionTo(q(folder / "whole")), QString());
  EXPECT_EQ(objectionTo(q(empty)),
            QStringLiteral("\"%1\" holds no monitoring client: there is no folder \"Library/Corvane\" in it.")
                .arg(q(empty)));
  EXPECT_EQ(objectionTo(q(file)), QStringLiteral("\"%1\" is not a folder.").arg(q(file)));
  EXPECT_EQ(
      objectionTo(q(inside)),
      QStringLiteral("\"%1\" is a part of a tree. Open \"%2\" instead, which holds \"Library/Corvane\".")
          .arg(q(inside), q(folder / "whole")));
}

TEST_F(Trees, ARefusalIsSaidOnTheStartPageUntilSomethingElseIsChosen) {
  const auto gone = tree("gone");
  recents.add(q(gone));
  recents.add(q(folder / "also gone"));
  start();
  std::filesystem::remove_all(gone + "/Library");
  Listener listener;
  click(button(gone));
  EXPECT_EQ(refusal(), objectionTo(q(gone)));
  EXPECT_EQ(listener.namesOf(QAccessible::Alert), QStringList{QStringLiteral("refusal")});
  EXPECT_TRUE(openTrees().empty());
  click(button(folder / "also gone"));
  EXPECT_EQ(refusal(), QStringLiteral("\"%1\" is not a folder.").arg(q(folder / "also gone")));
}

TEST_F(Trees, AFolderThatIsDroppedOnAWindowIsOpened) {
  const auto one = tree("one");
  const auto two = tree("two");
  EXPECT_TRUE(drop(start(), {QUrl::fromLocalFile(q(one))}));
  ASSERT_TRUE(eventually([&] { return openTrees() == Roots{one}; }));
  EXPECT_TRUE(drop(windows.panes()[0]->window(), {QUrl::fromLocalFile(q(two))}));
  EXPECT_TRUE(eventually([&] { return openTrees() == Roots({one, two}); }));
}

TEST_F(Trees, NothingButOneFolderOfThisComputerCanBeDropped) {
  const auto one = tree("one");
  StartPage& page = start();
  EXPECT_FALSE(drop(page, {QUrl::fromLocalFile(q(one)), QUrl::fromLocalFile(q(one))}));
  EXPECT_FALSE(drop(page, {QUrl::fromLocalFile(q(folder.writeFile("file")))}));
  EXPECT_FALSE(drop(page, {QUrl(QStringLiteral("https://a.example/"))}));
  EXPECT_FALSE(drop(page, {}));
}

TEST_F(Trees, ADroppedFolderWithoutAClientIsRefusedBeforeTheWindowThatItWasDroppedOn) {
  windows.open(q(tree("one")));
  QWidget& window = windows.panes()[0]->window();
  showActive(window);
  const auto empty = folder.makeFolder("empty");
  QString said;
  EXPECT_TRUE(answerPanel<QDialog>(
      [&] {
        EXPECT_TRUE(drop(window, {QUrl::fromLocalFile(q(empty))}));
        QApplication::processEvents();
      },
      [&](QDialog& panel) {
        EXPECT_EQ(panel.windowTitle(), QStringLiteral("This folder can't be opened"));
        said = accessible(find<QLabel>(panel, "informative")).text(QAccessible::Name);
        press(panel, Qt::Key_Escape);
      }));
  EXPECT_EQ(said, objectionTo(q(empty)));
  EXPECT_EQ(openTrees().size(), 1U);
}

TEST_F(Trees, ControlOChoosesAFolderInEveryWindow) {
  const auto one = tree("one");
  const auto two = tree("two");
  const auto choose = [](const std::string& path) {
    return [path](QFileDialog& panel) {
      EXPECT_EQ(panel.fileMode(), QFileDialog::Directory);
      panel.selectFile(q(path));
      QMetaObject::invokeMethod(&panel, "accept");
    };
  };
  QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  EXPECT_TRUE(answerPanel<QFileDialog>([&] { press(start(), Qt::Key_O, Qt::ControlModifier); }, choose(one)));
  ASSERT_EQ(openTrees(), Roots{one});
  QWidget& window = windows.panes()[0]->window();
  showActive(window);
  EXPECT_TRUE(answerPanel<QFileDialog>([&] { press(window, Qt::Key_O, Qt::ControlModifier); }, choose(two)));
  EXPECT_EQ(openTrees(), (Roots{one, two}));
  QApplication::setAttribute(Qt::AA_DontUseNativeDialogs, false);
}

TEST_F(Trees, ControlWClosesOneWindowAndItsLock) {
  const auto one = tree("one");
  const auto two = tree("two");
  windows.open(q(one));
  windows.open(q(two));
  QWidget& window = windows.panes()[0]->window();
  showActive(window);
  press(window, Qt::Key_W, Qt::ControlModifier);
  EXPECT_TRUE(eventually([&] { return openTrees() == Roots{two}; }));
  EXPECT_TRUE(windows.isAnyOpen());
}

TEST_F(Trees, ControlQClosesEveryWindow) {
  windows.open(q(tree("one")));
  windows.open(q(tree("two")));
  QWidget& window = windows.panes()[1]->window();
  showActive(window);
  press(window, Qt::Key_Q, Qt::ControlModifier);
  EXPECT_TRUE(eventually([&] { return !windows.isAnyOpen(); }));
}

TEST_F(Trees, FOneSaysWhatThisIsAndWhichTreeIsOpen) {
  const auto one = tree("one");
  windows.open(q(one));
  QWidget& window = windows.panes()[0]->window();
  showActive(window);
  QString title;
  QString note;
  EXPECT_TRUE(answerPanel<QDialog>([&] { press(window, Qt::Key_F1); },
                                   [&](QDialog& panel) {
                                     title = panel.windowTitle();
                                     note = accessible(find<QLabel>(panel, "note")).text(QAccessible::Name);
                                     press(panel, Qt::Key_Return);
                                   }));
  EXPECT_TRUE(title.startsWith(QStringLiteral("Monitoring Client "))) << title.toStdString();
  EXPECT_TRUE(note.contains(q(one))) << note.toStdString();
}

TEST_F(Trees, TwoTreesAreToldApartByTitleAndLock) {
  for (const auto& each : {tree("one"), tree("two")}) {
    LinuxPane* pane = windows.openPane(each);
    ASSERT_NE(pane, nullptr);
    const QString title = qt::treeTitle(each);
    EXPECT_EQ(pane->window().windowTitle(), title + QStringLiteral(" — Monitoring Client"));
    const auto& field = find<qt::FittedLabel>(pane->window(), "treeField");
    EXPECT_TRUE(field.isVisible());
    EXPECT_EQ(field.text(), title);
    EXPECT_TRUE(
        accessible(find(pane->window(), "authView")).text(QAccessible::Description).startsWith(title));
  }
  EXPECT_EQ(qt::treeTitle("/media/clerk/Macintosh HD"),
            QStringLiteral("Macintosh HD — /media/clerk/Macintosh HD"));
}

TEST_F(Trees, TheRunningSystemNeedsNoName) {
  EXPECT_EQ(qt::treeTitle({}), QString());
  EXPECT_EQ(qt::treeNote({}), QString());
}

using WhichTree = GuiTest;

TEST_F(WhichTree, ASheetSaysBelowItsOwnTextsWhichTreeItIsAbout) {
  open();
  openLock();
  click(widget("uninstallButton"));
  ASSERT_NE(sheet(), nullptr);
  const QString tree = qt::treeTitle(root.path());
  EXPECT_EQ(spokenName(find<QLabel>(*sheet(), "note")), QStringLiteral("Client on ") + tree);
  EXPECT_TRUE(find(*sheet(), "note").isVisible());
  for (const char* own : {"message", "informative"})
    EXPECT_FALSE(find<QLabel>(*sheet(), own).text().contains(tree)) << own;
  EXPECT_TRUE(sheet()->accessibleDescription().endsWith(tree));
}

TEST_F(WhichTree, ALongPathIsShortenedInItsMiddleAndToldWholeByTheTip) {
  open();
  auto& field = widget<qt::FittedLabel>("treeField");
  const auto pictureOf = [&](char middle, char end) {
    field.setText(q("disk — /" + std::string(100, 'm') + middle + std::string(100, 'm') + "/the end " + end));
    return field.grab().toImage();
  };
  const QImage picture = pictureOf('1', '1');
  EXPECT_TRUE(field.isCut());
  EXPECT_EQ(pictureOf('2', '1'), picture) << "the middle is shown";
  EXPECT_NE(pictureOf('1', '2'), picture) << "the end is not shown";
}

TEST_F(WhichTree, TheLineOfTheTreeLeavesTheTabsTheirRoom) {
  open();
  EXPECT_EQ(widget("tabView").height(), 420);
  EXPECT_LE(widget("authLabel").geometry().bottom(), widget("footer").height());
}

TEST(CommandLineOfTrees, AFolderIsOpenedIfItHoldsAClientAndRootWhateverIsInIt) {
  const TemporaryFolder folder;
  const auto parse = [](std::vector<std::string> words) {
    QStringList list{QStringLiteral("corvane-pane")};
    for (const auto& word : words) list.append(q(word));
    return qt::parseCommandLine(list);
  };
  EXPECT_EQ(parse({}).root, std::nullopt);
  EXPECT_EQ(parse({"--root", "/"}).root, std::string());
  EXPECT_EQ(parse({"--root", folder.path()}).root, folder.path());
  const auto named = parse({folder.path()});
  EXPECT_EQ(named.folder.toStdString(), folder.path());
  EXPECT_TRUE(named.opensPane());
  EXPECT_EQ(parse({folder.path(), "other"}).error, QStringLiteral("Unexpected argument \"other\"."));
  EXPECT_EQ(parse({"--root", "/", folder.path()}).error,
            QStringLiteral("Unexpected argument \"%1\".").arg(q(folder.path())));
}

}  // namespace
}  // namespace corvane::test

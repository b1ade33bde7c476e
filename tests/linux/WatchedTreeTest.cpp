#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/inotify.h>

#include "linux/FakeFolderWatches.h"
#include "platform/linux/WatchedAncestors.h"
#include "platform/linux/WatchedTree.h"

namespace corvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WatchedTreeTest : public ::testing::Test {
 protected:
  WatchedTree& build(std::vector<std::string> roots) {
    tree_.emplace(folders_, std::move(roots), [this](const auto& directory) { reported_.insert(directory); });
    tree_->build();
    return *tree_;
  }
  /// What one event in the folder, which had this watch when it happened, makes the tree report.
  std::set<std::string> event(int watch, std::uint32_t mask, const std::string& name = {}) {
    reported_.clear();
    tree_->handle({watch, mask, name});
    return reported_;
  }
  [[nodiscard]] bool isWatched(const std::string& folder) const { return folders_.watchOf(folder) >= 0; }

  test::FakeFolderWatches folders_;
  std::optional<WatchedTree> tree_;
  std::set<std::string> reported_;
};

TEST_F(WatchedTreeTest, BuildingWatchesEveryFolderAndReportsNothing) {
  folders_.makeFolder("/r/a/b");
  folders_.makeFolder("/other");
  folders_.makeFile("/r/a/file");
  EXPECT_EQ(build({"/r"}).size(), 3U);
  EXPECT_TRUE(isWatched("/r") && isWatched("/r/a") && isWatched("/r/a/b"));
  EXPECT_FALSE(isWatched("/other"));
  EXPECT_THAT(reported_, IsEmpty());
}

TEST_F(WatchedTreeTest, EventsOfEntriesReportTheirFolder) {
  folders_.makeFolder("/r/a");
  build({"/r"});
  for (const std::uint32_t mask : {IN_CREATE, IN_DELETE, IN_MODIFY, IN_ATTRIB, IN_MOVED_FROM, IN_MOVED_TO}) {
    EXPECT_THAT(event(folders_.watchOf("/r/a"), mask, "file"), ElementsAre("/r/a")) << mask;
  }
  EXPECT_THAT(event(folders_.watchOf("/r/a"), IN_ATTRIB), IsEmpty())
      << "its own attributes are its parent's matter";
  EXPECT_THAT(event(999, IN_CREATE, "file"), IsEmpty());
}

TEST_F(WatchedTreeTest, NewFoldersAreReportedWhenSomethingIsInThem) {
  folders_.makeFolder("/r");
  build({"/r"});
  folders_.makeFolder("/r/a/b/c");
  folders_.makeFile("/r/a/b/c/file");
  folders_.makeFolder("/r/a/empty");
  EXPECT_THAT(event(folders_.watchOf("/r"), IN_CREATE | IN_ISDIR, "a"),
              ElementsAre("/r", "/r/a", "/r/a/b", "/r/a/b/c"));
  EXPECT_TRUE(isWatched("/r/a/empty"));
  // The event of what was found by reading already.
  EXPECT_THAT(event(folders_.watchOf("/r/a"), IN_CREATE | IN_ISDIR, "b"), ElementsAre("/r/a"));
  EXPECT_EQ(tree_->size(), 5U);
}

TEST_F(WatchedTreeTest, FolderMadeWhileItsParentIsReadIsFound) {
  folders_.makeFolder("/r");
  build({"/r"});
  folders_.makeFolder("/r/a");
  folders_.beforeListing = [&](const auto& folder) {
    if (folder == "/r/a" && !isWatched("/r/a/late")) folders_.makeFile("/r/a/late");
  };
  EXPECT_THAT(event(folders_.watchOf("/r"), IN_CREATE | IN_ISDIR, "a"), ElementsAre("/r", "/r/a"));
}

TEST_F(WatchedTreeTest, FolderThatVanishesWhileItIsReadIsForgottenWithItsWatch) {
  folders_.makeFolder("/r");
  build({"/r"});
  folders_.makeFolder("/r/a/b");
  int watch = -1;
  folders_.beforeListing = [&](const auto& folder) {
    if (folder != "/r/a/b") return;
    watch = folders_.watchOf(folder);
    folders_.removeTree(folder);
  };
  event(folders_.watchOf("/r"), IN_CREATE | IN_ISDIR, "a");
  EXPECT_EQ(tree_->size(), 3U);
  event(watch, IN_IGNORED);
  EXPECT_EQ(tree_->size(), 2U);
}

TEST_F(WatchedTreeTest, FolderMovedAwayIsForgottenWithEverythingBelow) {
  folders_.makeFolder("/r/a/b");
  folders_.makeFolder("/r/a-neighbour");
  build({"/r"});
  folders_.move("/r/a", "/outside");
  EXPECT_THAT(event(folders_.watchOf("/r"), IN_MOVED_FROM | IN_ISDIR, "a"), ElementsAre("/r"));
  EXPECT_EQ(tree_->size(), 2U);
  EXPECT_EQ(folders_.watchCount(), 2U);
  EXPECT_TRUE(isWatched("/r/a-neighbour"));
}

TEST_F(WatchedTreeTest, FolderMovedInsideIsFollowedUnderItsNewName) {
  folders_.makeFolder("/r/a/b");
  folders_.makeFile("/r/a/b/file");
  build({"/r"});
  folders_.move("/r/a", "/r/z");
  event(folders_.watchOf("/r"), IN_MOVED_FROM | IN_ISDIR, "a");
  EXPECT_THAT(event(folders_.watchOf("/r"), IN_MOVED_TO | IN_ISDIR, "z"),
              ElementsAre("/r", "/r/z", "/r/z/b"));
  EXPECT_THAT(event(folders_.watchOf("/r/z/b"), IN_CREATE, "file"), ElementsAre("/r/z/b"));
  EXPECT_EQ(tree_->size(), 3U);
}

TEST_F(WatchedTreeTest, SwappedFoldersAreToldApartWhateverTheOrderOfTheEvents) {
  using Move = std::pair<std::uint32_t, const char*>;
  const std::vector<Move> moves{
      {IN_MOVED_FROM, "one"}, {IN_MOVED_TO, "two"}, {IN_MOVED_FROM, "two"}, {IN_MOVED_TO, "one"}};
  for (std::size_t first = 0; first < moves.size(); ++first) {
    folders_ = {};
    folders_.makeFolder("/r/one/of-one");
    folders_.makeFolder("/r/two/of-two");
    build({"/r"});
    folders_.swap("/r/one", "/r/two");
    for (std::size_t i = 0; i < moves.size(); ++i) {
      const auto& [mask, name] = moves[(first + i) % moves.size()];
      event(folders_.watchOf("/r"), mask | IN_ISDIR, name);
    }
    EXPECT_THAT(event(folders_.watchOf("/r/one"), IN_CREATE, "file"), ElementsAre("/r/one"));
    EXPECT_THAT(event(folders_.watchOf("/r/two"), IN_CREATE, "file"), ElementsAre("/r/two"));
    EXPECT_THAT(event(folders_.watchOf("/r/one/of-two"), IN_CREATE, "file"), ElementsAre("/r/one/of-two"));
    EXPECT_THAT(event(folders_.watchOf("/r/two/of-one"), IN_CREATE, "file"), ElementsAre("/r/two/of-one"));
    EXPECT_EQ(tree_->size(), 5U);
  }
}

TEST_F(WatchedTreeTest, FolderPutInThePlaceOfAnotherIsScanned) {
  folders_.makeFolder("/r/a/old");
  build({"/r"});
  folders_.removeTree("/r/a");
  folders_.makeFolder("/r/a/new");
  EXPECT_THAT(event(folders_.watchOf("/r"), IN_CREATE | IN_ISDIR, "a"), ElementsAre("/r", "/r/a"));
  EXPECT_TRUE(isWatched("/r/a/new"));
  EXPECT_EQ(tree_->size(), 3U);
}

TEST_F(WatchedTreeTest, UnmountingReportsTheFolderAndItsParentAndWatchesWhatWasBelowTheMount) {
  folders_.makeFolder("/r/volume/inside");
  build({"/r"});
  const int watch = folders_.watchOf("/r/volume");
  folders_.removeTree("/r/volume");
  folders_.makeFolder("/r/volume");
  EXPECT_THAT(event(watch, IN_UNMOUNT), ElementsAre("/r", "/r/volume"));
  EXPECT_TRUE(isWatched("/r/volume"));
  EXPECT_THAT(event(watch, IN_IGNORED), IsEmpty());
}

TEST_F(WatchedTreeTest, NestedRootsShareTheirFolders) {
  folders_.makeFolder("/r/a/b");
  EXPECT_EQ(build({"/r/a", "/r", "/r/a/b"}).size(), 3U);
  EXPECT_EQ(folders_.watchCount(), 3U);
  EXPECT_THAT(event(folders_.watchOf("/r/a/b"), IN_CREATE, "file"), ElementsAre("/r/a/b"));
}

TEST_F(WatchedTreeTest, OneFolderUnderTwoRootsIsReportedAsSpelledInEach) {
  folders_.makeFolder("/real/a");
  folders_.makeLink("/link", "/real");
  build({"/link", "/real"});
  EXPECT_EQ(folders_.watchCount(), 2U);
  EXPECT_THAT(event(folders_.watchOf("/real/a"), IN_CREATE, "file"), ElementsAre("/link/a", "/real/a"));
  folders_.removeTree("/link");
  tree_->reconcileRoots();
  EXPECT_TRUE(isWatched("/real/a")) << "the other root still needs the watch";
  EXPECT_THAT(event(folders_.watchOf("/real/a"), IN_CREATE, "file"), ElementsAre("/real/a"));
}

TEST_F(WatchedTreeTest, RootsThatComeGoOrBecomeOthersAreReported) {
  folders_.makeFolder("/stays");
  build({"/late", "/stays"});
  folders_.makeFolder("/late");
  tree_->reconcileRoots();
  EXPECT_THAT(reported_, ElementsAre("/late"));
  reported_.clear();
  folders_.removeTree("/late");
  folders_.makeFolder("/late/a");
  tree_->reconcileRoots();
  EXPECT_THAT(reported_, ElementsAre("/late"));
  reported_.clear();
  folders_.removeTree("/late");
  tree_->reconcileRoots();
  EXPECT_THAT(reported_, ElementsAre("/late"));
  EXPECT_EQ(tree_->size(), 1U);
  reported_.clear();
  tree_->reconcileRoots();
  EXPECT_THAT(reported_, IsEmpty());
}

TEST_F(WatchedTreeTest, LinkedRootBelowAnotherRootOutlivesTheEventsOfItsName) {
  folders_.makeFolder("/real/a");
  folders_.makeFolder("/r/link");
  build({"/r", "/r/link"});
  folders_.removeTree("/r/link");
  folders_.makeLink("/r/link", "/real");
  tree_->reconcileRoots();
  event(folders_.watchOf("/r"), IN_DELETE | IN_ISDIR, "link");
  EXPECT_THAT(event(folders_.watchOf("/real/a"), IN_CREATE, "file"), ElementsAre("/r/link/a"));
}

TEST_F(WatchedTreeTest, TellsWhenThereAreNoWatchesLeft) {
  folders_.makeFolder("/r/a");
  folders_.mostWatches = 2;
  EXPECT_FALSE(build({"/r"}).isExhausted());
  folders_.makeFolder("/r/b");
  event(folders_.watchOf("/r"), IN_CREATE | IN_ISDIR, "b");
  EXPECT_TRUE(tree_->isExhausted());
}

TEST(WatchedAncestors, WatchEveryFolderOnTheWayAsFarAsItGoes) {
  test::FakeFolderWatches folders;
  folders.makeFolder("/a/b");
  WatchedAncestors ancestors(folders, {"/a/b/late/root"});
  ancestors.follow();
  EXPECT_EQ(folders.watchCount(), 3U);
  const auto concerns = [&](const std::string& folder, const std::string& name) {
    return ancestors.concerns({folders.watchOf(folder), IN_CREATE | IN_ISDIR, name});
  };
  EXPECT_TRUE(concerns("/a", "b"));
  EXPECT_TRUE(concerns("/a/b", "late"));
  EXPECT_FALSE(concerns("/a/b", "later"));
  EXPECT_FALSE(concerns("/a/b", "root"));
  folders.makeFolder("/a/b/late");
  ancestors.follow();
  EXPECT_TRUE(concerns("/a/b/late", "root"));
}

TEST(WatchedAncestors, WatchBothTheWayToALinkAndTheWayToItsTarget) {
  test::FakeFolderWatches folders;
  folders.makeFolder("/links");
  folders.makeFolder("/real/deep");
  folders.makeLink("/links/one", "../real/./deep");
  WatchedAncestors ancestors(folders, {"/links/one/root"});
  ancestors.follow();
  const auto concerns = [&](const std::string& folder, const std::string& name) {
    return ancestors.concerns({folders.watchOf(folder), IN_MOVED_FROM, name});
  };
  EXPECT_TRUE(concerns("/links", "one"));
  EXPECT_TRUE(concerns("/real", "deep"));
  EXPECT_TRUE(concerns("/real/deep", "root"));
  folders.makeLink("/links/one", "/real");
  ancestors.follow();
  EXPECT_TRUE(concerns("/real", "root"));
  EXPECT_EQ(folders.watchOf("/real/deep"), -1) << "no longer on any way";
}

TEST(WatchedAncestors, EndAtLinksThatLeadRoundInACircle) {
  test::FakeFolderWatches folders;
  folders.makeLink("/one", "/two");
  folders.makeLink("/two", "/one");
  WatchedAncestors ancestors(folders, {"/one/root"});
  ancestors.follow();
  EXPECT_TRUE(ancestors.concerns({folders.add("/", FolderWatches::Links::Refuse).watch, IN_CREATE, "two"}));
}

TEST(WatchedAncestors, EndOfAWatchConcernsThem) {
  test::FakeFolderWatches folders;
  folders.makeFolder("/a");
  WatchedAncestors ancestors(folders, {"/a/root"});
  ancestors.follow();
  EXPECT_TRUE(ancestors.concerns({folders.watchOf("/a"), IN_IGNORED, {}}));
  EXPECT_TRUE(ancestors.concerns({folders.watchOf("/a"), IN_UNMOUNT, {}}));
  EXPECT_FALSE(ancestors.concerns({folders.watchOf("/a"), IN_ATTRIB, {}}));
  EXPECT_FALSE(ancestors.concerns({99, IN_IGNORED, {}}));
}

}  // namespace
}  // namespace corvane

// The open window over files that come, go and are broken behind it: nothing hangs, nothing is lost, and what
// is right again is shown again.
#include <QCoreApplication>

#include "FollowingFilesFixture.h"
#include "widgets/LabelButton.h"

namespace corvane::test {
namespace {

class FollowingBadFiles : public FollowingFilesTest {
 protected:
  [[nodiscard]] std::size_t count() { return plugins().childrenOfItem({}).size(); }
  [[nodiscard]] bool lists(const char* title) {
    for (int row = 0; row < plugins().numberOfRows(); ++row) {
      const std::string* name = plugins().itemAtRow(row).object().asDictionary().string("PluginName");
      if (name != nullptr && *name == title) return true;
    }
    return false;
  }
};

TEST_F(FollowingBadFiles, FoldersThatVanishWhileTheyAreReadLeaveWhatIsThereInTheEnd) {
  openAndSettle();
  const std::size_t before = count();
  const std::string webSites = DemoClient::contents(demo.paths.plugins + "/check_web_sites.plist");
  // Nobody knows which of these the pane still finds when it looks.
  for (int i = 0; i < 300; ++i) {
    const std::string folder = demo.paths.plugins + "/storm" + std::to_string(i % 7);
    std::filesystem::create_directories(folder + "/a/b/c");
    writeInPlace(folder + "/a/b/check_storm.plist", webSites);
    if (i % 3 == 0) QCoreApplication::processEvents();
    if (i % 5 == 0) std::filesystem::rename(folder + "/a", folder + "/moved");
    if (i % 2 == 0) QCoreApplication::processEvents();
    std::filesystem::remove_all(folder);
  }
  writeInPlace(demo.paths.pluginSupport + "/check_last_settings.plist",
               DemoClient::contents(demo.paths.pluginSupport + "/check_web_sites_settings.plist"));
  writeInPlace(demo.paths.plugins + "/check_last.plist", webSites);
  edit(demo.paths.plugins + "/check_last.plist", "Web Sites", "The Last");
  ASSERT_TRUE(eventually([&] { return lists("The Last"); }));
  EXPECT_EQ(count(), before + 1);
}

TEST_F(FollowingBadFiles, FoldersThatAreTakenAwayAndPutBackAreFollowedAgain) {
  openAndSettle();
  const std::size_t before = count();
  ASSERT_GT(before, 0U);
  std::filesystem::rename(demo.paths.plugins, demo.root + "/aside");
  ASSERT_TRUE(eventually([&] { return count() == 0; }));
  std::filesystem::rename(demo.root + "/aside", demo.paths.plugins);
  ASSERT_TRUE(eventually([&] { return count() == before; }));
  edit(demo.paths.plugins + "/check_web_sites.plist", "Web Sites", "Gardens");
  EXPECT_TRUE(eventually([&] { return lists("Gardens"); }));
}

TEST_F(FollowingBadFiles, ATextTypedOverBrokenSettingsLosesNoneOfThem) {
  openAndSettle();
  clickTab(0);
  const Dictionary before = readPlist(demo.paths.clientSettings).asDictionary();
  auto& group = widget<QLineEdit>("clientGroupTextField");
  beginTyping(group, "Studio", 6);
  const std::string contents = DemoClient::contents(demo.paths.clientSettings);
  writeInPlace(demo.paths.clientSettings, contents.substr(0, contents.size() / 2));
  ASSERT_TRUE(eventually([&] { return pluginsWereReadAgain(); }));
  expectStillTyping(group, "Studio", 6);
  press(window(), Qt::Key_Return);
  Dictionary expected = before;
  expected.set("ClientGroup", PropertyList::string("Studio"));
  EXPECT_EQ(readPlist(demo.paths.clientSettings).asDictionary(), expected) << "whole again, with the edit";

  writeInPlace(demo.paths.clientSettings, contents);
  edit(demo.paths.clientSettings, "7.3.1", "7.5");
  EXPECT_TRUE(eventually([&] {
    return widget<qt::LabelButton>("clientVersionButton").text() == QStringLiteral("Version 7.5");
  }));
}

}  // namespace
}  // namespace corvane::test

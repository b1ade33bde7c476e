// The whole pane over a client of its own in a temporary folder: real files, real services, commands carried
// out directly, the real window. Nothing leaves the folder; addresses that the pane opens are recorded.
#pragma once

#include <QDesktopServices>
#include <QPushButton>
#include <QTabBar>
#include <QUrl>
#include <memory>
#include <string>
#include <vector>

#include "Events.h"
#include "LinuxPane.h"
#include "pane/PathTable.h"
#include "support/TemporaryFolder.h"
#include "widgets/SheetHost.h"

namespace corvane::test {

/// Stands in for the desktop's handler of addresses.
class OpenedUrls : public QObject {
  Q_OBJECT

 public:
  OpenedUrls() {
    for (const char* scheme : {"http", "https", "mailto"}) {
      QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), this, "record");
    }
  }
  ~OpenedUrls() override {
    for (const char* scheme : {"http", "https", "mailto"})
      QDesktopServices::unsetUrlHandler(QString::fromLatin1(scheme));
  }
  Q_INVOKABLE void record(const QUrl& url) { list.push_back(url.toString().toStdString()); }
  std::vector<std::string> list;
};

class GuiTest : public ::testing::Test {
 protected:
  /// Lays out an installed client; a test adds what it needs before it calls `open`.
  void SetUp() override {
    for (const std::string& folder :
         {paths.localInfo, paths.pluginSupport, paths.plugins, paths.updaterSupport,
          paths.systemConfiguration, paths.volumes, paths.onDisk("/private/tmp")}) {
      std::filesystem::create_directories(folder);
    }
    Dictionary settings = Dictionary::make();
    settings.set("Client_Version", PropertyList::string("4.2.1"));
    settings.set("Support_Address", PropertyList::string("help.example.com"));
    writePlist(paths.clientSettings, settings);
  }
  void TearDown() override { pane.reset(); }

  /// Builds the pane over the tree, which is the test's own when none is named, and waits until its window is
  /// there.
  void open() { open(root.path()); }
  void open(const std::string& tree) {
    pane = std::make_unique<qt::LinuxPane>(tree);
    pane->open();
    showActive(pane->window());
  }

  [[nodiscard]] qt::PaneWindow& window() { return pane->window(); }
  template <typename Widget = QWidget>
  [[nodiscard]] Widget& widget(const char* name,
                               std::source_location asked = std::source_location::current()) {
    return find<Widget>(window(), name, asked);
  }
  /// The contents of the sheet that is open, or null.
  [[nodiscard]] QWidget* sheet() { return window().sheets().current(); }
  /// Clicks the button with this title in the open alert.
  void answerSheet(const char* button) {
    ASSERT_NE(sheet(), nullptr) << "no sheet is open";
    click(find<QPushButton>(*sheet(), (std::string("button ") + button).c_str()));
  }
  /// Clicks the tab; whatever stands before it is for the test to answer.
  void clickTab(int index) {
    auto& bar = widget<QTabBar>("tabBar");
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.tabRect(index).center());
  }
  void openLock() {
    click(widget("authView"));
    ASSERT_TRUE(pane->assembly().pane().unlocked());
  }

  void writePlist(const std::string& path, const PropertyList& value) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    ASSERT_TRUE(PosixPropertyListFiles().write(path, value)) << path;
  }
  [[nodiscard]] static PropertyList readPlist(const std::string& path) {
    return PosixPropertyListFiles().read(path);
  }

  TemporaryFolder root;
  PathTable paths{root.path()};
  OpenedUrls openedUrls;
  std::unique_ptr<qt::LinuxPane> pane;
};

}  // namespace corvane::test

// The whole pane over a demo client of its own: the principal class with the real bundle's resources, real
// files and services, and a window that stands in for the host's.
#pragma once

#include <string>

#import "Acts.h"
#import "CorvanePrefPane.h"
#include "support/DemoClient.h"

namespace corvane::test {

/// Plays the host of one pane.
class Host {
 public:
  /// Makes the pane over the client below the root, and shows it.
  explicit Host(const std::string& root);
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;
  /// Takes the pane out of the window and releases it.
  ~Host();

  [[nodiscard]] NSWindow* window() const { return window_; }
  [[nodiscard]] CorvanePrefPane* prefPane() const { return prefPane_; }
  [[nodiscard]] appkit::AppKitPane& pane() const { return *[prefPane_ pane]; }
  [[nodiscard]] PaneAssembly& assembly() const { return pane().assembly(); }
  /// The view of the control, never nil.
  template <typename View = NSView>
  [[nodiscard]] View* view(const Control& control) const {
    NSView* found = pane().frame().viewOfAny(control);
    EXPECT_NE(found, nil) << "the control has no view";
    return static_cast<View*>(found);
  }

 private:
  NSWindow* window_;
  CorvanePrefPane* prefPane_;
};

class AppKitPaneTest : public ::testing::Test {
 protected:
  /// A run of the client takes so long.
  explicit AppKitPaneTest(const char* runSeconds = "0") : demo(runSeconds) {}
  void open() { host_ = std::make_unique<Host>(demo.root); }
  void TearDown() override { host_.reset(); }

  [[nodiscard]] Host& host() { return *host_; }
  [[nodiscard]] NSWindow* window() { return host_->window(); }
  [[nodiscard]] PaneView& paneView() { return host_->assembly().view(); }
  [[nodiscard]] ConfigurationTabView& configuration() { return host_->assembly().configurationView(); }
  [[nodiscard]] OptionsTabView& options() { return host_->assembly().optionsView(); }
  [[nodiscard]] PluginsTabView& plugins() { return host_->assembly().pluginsView(); }
  template <typename View = NSView>
  [[nodiscard]] View* view(const Control& control) {
    return host_->view<View>(control);
  }

  /// A click on the control's view.
  void press(const Control& control, NSUInteger modifiers = 0) { click(view(control), modifiers); }
  /// Puts a text in the place of what the field shows; it is still being typed afterwards.
  void fill(const TextField& field, const std::string& text);
  void openTheLock();
  /// Clicks the tab; whatever stands before it is for the test to answer.
  void clickTab(int index);
  [[nodiscard]] int shownTab();
  void waitForSheets() {
    EXPECT_TRUE(eventually([this] { return !host().pane().sheets().isOpen(); }));
  }
  [[nodiscard]] PropertyList stored(const std::string& path, const char* key) const {
    return DemoClient::plist(path).asDictionary().value(key);
  }
  void closePane() { host_.reset(); }

  DemoClient demo;

 private:
  std::unique_ptr<Host> host_;
};

}  // namespace corvane::test

// The Configuration tab over the test platform: a complete client below a temporary root, and the tab as the
// assembly makes it.
#pragma once

#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "configuration/ConfigurationTabView.h"
#include "configuration/ConfigurationTabViewController.h"
#include "pane/ClientKeys.h"
#include "support/FakePane.h"
#include "support/TestPlatform.h"

namespace corvane {

class ConfigurationTabTest : public ::testing::Test {
 protected:
  ConfigurationTabTest() {
    test_.layOutFolders();
    test_.fileEventQueues.exists = [this](const std::string& path) { return test_.files.exists(path); };
  }
  /// Writes ClientSettings.plist.
  void writeSettings(std::initializer_list<Dictionary::Entry> entries) {
    test_.writePlist(test_.paths.clientSettings, Dictionary::make(entries));
  }
  /// Writes UpdateStatus.plist with the date of the last check.
  void writeLastChecked(PropertyList date) {
    test_.writePlist(test_.paths.updateStatus,
                     Dictionary::make({{client_key::kDateLastChecked, std::move(date)}}));
  }
  void startRun() { test_.writeText(test_.paths.errorLoggerPid, "4711\n"); }
  /// The marker vanishes, and whoever watches it hears of it.
  void endRun() {
    test_.remove(test_.paths.errorLoggerPid);
    test_.fileEventQueues.fire(test_.paths.errorLoggerPid);
  }
  void tick() { test_.runLoop.advance(1.0); }

  void makeTab() {
    tab_ = std::make_unique<ConfigurationTabViewController>(test_.platform, test_.paths, view_);
  }
  void openTab() {
    makeTab();
    tab_->awakeFromNib(pane_);
  }
  void openUnlockedTab() {
    openTab();
    pane_.setUnlocked(true);
  }

  test::TestPlatform test_;
  test::FakePane pane_;
  ConfigurationTabView view_;
  std::unique_ptr<ConfigurationTabViewController> tab_;

  // In seconds since 1970, and as the tab shows them.
  static constexpr Date kAfternoon{1794757500};
  static constexpr Date kMidnight{1794700800};
  static constexpr const char* kAfternoonText = "November 15, 2026 at 3:45 PM";
  static constexpr const char* kMidnightText = "November 15, 2026 at 12:00 AM";
};

}  // namespace corvane

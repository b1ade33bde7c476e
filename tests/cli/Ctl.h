// Calls of the program `corvanectl` over a demo client.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "RunningCtl.h"
#include "support/DemoClient.h"

namespace corvane::test {

using Json = nlohmann::ordered_json;

/// A demo client, and calls over it.
class CtlTest : public testing::Test {
 protected:
  [[nodiscard]] Words at(const Words& arguments) const {
    Words all{"--root", demo.root};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return all;
  }
  [[nodiscard]] Ended run(const Words& arguments, const std::string& input = {}) const {
    return ctl(at(arguments), input);
  }
  /// Expects success; what was printed.
  std::string good(const Words& arguments, const std::string& input = {}) const {
    const Ended ended = run(arguments, input);
    EXPECT_EQ(ended.status, 0) << testing::PrintToString(arguments) << "\n" << testing::PrintToString(ended);
    EXPECT_EQ(ended.errors, "") << testing::PrintToString(arguments);
    return ended.output;
  }
  Json json(Words arguments) const {
    arguments.insert(arguments.begin(), "--json");
    return Json::parse(good(arguments), nullptr, false);
  }
  /// Expects a failure with this status and this one line on standard error, and nothing else.
  void refused(const Words& arguments, int status, const std::string& line) const {
    const Ended ended = run(arguments);
    EXPECT_EQ(ended.status, status) << testing::PrintToString(arguments);
    EXPECT_EQ(ended.errors, "corvanectl: " + line + "\n") << testing::PrintToString(arguments);
    EXPECT_EQ(ended.output, "") << testing::PrintToString(arguments);
  }
  /// Every file of the tree with its contents, without what the client itself writes meanwhile.
  [[nodiscard]] std::vector<std::pair<std::string, std::string>> files() const {
    std::vector<std::pair<std::string, std::string>> all;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(demo.root)) {
      if (entry.is_regular_file()) all.emplace_back(entry.path(), DemoClient::contents(entry.path()));
    }
    std::ranges::sort(all);
    return all;
  }
  [[nodiscard]] bool nothingIsStaged() const {
    const std::filesystem::path staging(demo.root + "/private/tmp");
    for (const auto& entry : std::filesystem::directory_iterator(staging))
      if (entry.is_regular_file()) return false;
    return true;
  }
  void TearDown() override { EXPECT_TRUE(nothingIsStaged()); }

  DemoClient demo;
};

}  // namespace corvane::test

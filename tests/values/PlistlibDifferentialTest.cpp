// The codec beside Python's plistlib, which is run as a program.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "values/PropertyListCodec.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;

class PropertyListBesidePlistlib : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = fs::temp_directory_path() / "plistlib.XXXXXX";
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    folder_ = pattern;
  }
  void TearDown() override { fs::remove_all(folder_); }

  [[nodiscard]] int run(const std::string& action) const {
    const std::string script = fs::path(CORVANE_TEST_SOURCES) / "values" / "plistlib_differential.py";
    return std::system(("python3 '" + script + "' " + action + " '" + folder_.string() + "'").c_str());
  }

  [[nodiscard]] PropertyList read(const std::string& name) const {
    std::ifstream file(folder_ / name, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    return readPropertyList(bytes);
  }

  fs::path folder_;
};

TEST_F(PropertyListBesidePlistlib, BothReadAndWriteTheSameValues) {
  if (std::system("python3 -c 'import plistlib' 2>/dev/null") != 0) {
    GTEST_SKIP() << "NOT COMPARED: there is no python3 here";
  }
  ASSERT_EQ(run("make"), 0);
  int count = 0;
  for (; fs::exists(folder_ / (std::to_string(count) + ".xml")); ++count) {
    const std::string name = std::to_string(count);
    const auto value = read(name + ".xml");
    ASSERT_TRUE(value) << name;
    ASSERT_EQ(read(name + ".binary"), value) << name;
    const auto written = writeXmlPropertyList(value);
    ASSERT_TRUE(written) << name;
    std::ofstream(folder_ / (name + ".own"), std::ios::binary) << *written;
  }
  EXPECT_GE(count, 100);
  EXPECT_EQ(run("check"), 0) << "the script says which";
}

}  // namespace
}  // namespace corvane

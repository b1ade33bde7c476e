#include <gtest/gtest.h>

#include "values/Text.h"

namespace corvane {
namespace {

TEST(Text, FillsPlaceholdersInOrder) {
  EXPECT_EQ(formatText("%@ at %@", {"May 1, 2026", "3:45 PM"}), "May 1, 2026 at 3:45 PM");
  EXPECT_EQ(formatText("status %d of %s, 100%%", {"-3", "x"}), "status -3 of x, 100%");
  EXPECT_EQ(formatText("%@/%@", {"only"}), "only/(null)");
  EXPECT_EQ(formatText("%@", {"%@ %d"}), "%@ %d") << "arguments are not formats";
  EXPECT_EQ(formatText("ends in %", {}), "ends in %");
}

TEST(Text, CountsUtf16CodeUnits) {
  EXPECT_EQ(utf16Length(""), 0U);
  EXPECT_EQ(utf16Length("abc"), 3U);
  EXPECT_EQ(utf16Length("\xC3\xA9"), 1U);
  EXPECT_EQ(utf16Length("\xF0\x9F\x92\xBE"), 2U) << "outside the basic plane";
}

TEST(Text, FindsPrefixesRegardlessOfCase) {
  EXPECT_TRUE(hasPrefixIgnoringCase("/VAR/root/x", "/var/root/"));
  EXPECT_TRUE(hasPrefixIgnoringCase("HTTPS://x", "http"));
  EXPECT_FALSE(hasPrefixIgnoringCase("/tmp/var/root/", "/var/root/"));
  EXPECT_FALSE(hasPrefixIgnoringCase("/var", "/var/root/"));
  EXPECT_TRUE(hasPrefixIgnoringCase("Add A NEW \xC3\x84", "add a new"));
  EXPECT_FALSE(hasPrefixIgnoringCase("@tmp", "`tmp")) << "letters only";
}

TEST(Text, SplitsAndReplaces) {
  EXPECT_EQ(split("1-10", '-'), (std::vector<std::string>{"1", "10"}));
  EXPECT_EQ(split("", ','), std::vector<std::string>{""});
  EXPECT_EQ(split("a,", ','), (std::vector<std::string>{"a", ""}));
  EXPECT_EQ(replaceAll("a.b.a.b", "a.b", "c"), "c.c");
  EXPECT_EQ(replaceAll("x", "", "y"), "x");
}

TEST(Text, TakesPathsApart) {
  struct Case {
    const char* path;
    const char* last;
    const char* folder;
    const char* extension;
    const char* withoutExtension;
  };
  for (const Case& given :
       {Case{"/a/b.plist", "b.plist", "/a", "plist", "/a/b"}, Case{"/a/b/", "b", "/a", "", "/a/b"},
        Case{"b.tar.gz", "b.tar.gz", "", "gz", "b.tar"}, Case{"/", "/", "/", "", "/"},
        Case{"/a", "a", "/", "", "/a"}, Case{"/a/.hidden", ".hidden", "/a", "", "/a/.hidden"},
        Case{"", "", "", "", ""}, Case{"a.b/c", "c", "a.b", "", "a.b/c"}}) {
    EXPECT_EQ(lastPathComponent(given.path), given.last) << given.path;
    EXPECT_EQ(deletingLastPathComponent(given.path), given.folder) << given.path;
    EXPECT_EQ(pathExtension(given.path), given.extension) << given.path;
    EXPECT_EQ(deletingPathExtension(given.path), given.withoutExtension) << given.path;
  }
  EXPECT_EQ(appendingPathComponent("/a", "b"), "/a/b");
  EXPECT_EQ(appendingPathComponent("/a/", "/b/"), "/a/b");
  EXPECT_EQ(appendingPathComponent("/", "b"), "/b");
  EXPECT_EQ(appendingPathComponent("", "b"), "b");
}

TEST(Text, StandardizesPaths) {
  const std::pair<const char*, const char*> cases[] = {
      {"/a/b/", "/a/b"},  {"/a/./b", "/a/b"}, {"/a/../b", "/b"}, {"/../a", "/a"},
      {"//a//b", "/a/b"}, {"/", "/"},         {"/..", "/"},      {"a/../../b", "../b"}};
  for (const auto& [path, standard] : cases) EXPECT_EQ(standardizingPath(path), standard) << path;
}

}  // namespace
}  // namespace corvane

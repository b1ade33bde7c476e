// A settings file is one of the two lists at every moment of a write, and the old one again after a failure.
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "posix/InPlaceWrite.h"
#include "support/BinaryFile.h"
#include "support/FaultyFile.h"
#include "values/PropertyListCodec.h"

namespace corvane {
namespace {

using corvane::test::BinaryWriter;
using corvane::test::FaultyFile;

/// Settings of about the size, with values that would end what hides them if it were not for their escapes.
Dictionary settings(const std::string& name, std::size_t size, std::size_t entries = 20) {
  Dictionary result = Dictionary::make({{"Name", PropertyList::string(name)}});
  for (std::size_t i = 0; i < entries; ++i)
    result.set("Key" + std::to_string(i), PropertyList::string(std::string(size / entries, '-') + ">"));
  return result;
}
std::string xml(const Dictionary& values) { return writeXmlPropertyList(values).value_or(""); }

struct Old {
  const char* name;
  std::string bytes;
};
/// The forms in which a list of about the size may stand in the file.
std::vector<Old> oldFiles(std::size_t size) {
  const Dictionary values = settings("old", size);
  const std::string canonical = xml(values);
  const std::string body = canonical.substr(canonical.find("<dict>"));
  std::vector<Old> files = {
      {"XML as a Mac writes it", canonical},
      {"XML without anything before it", "<plist>" + body},
      {"the list alone", body.substr(0, body.find("</plist>"))},
      {"XML with a comment",
       "<!-- by hand -->" + canonical.substr(canonical.find("<plist")) + "<!-- end -->"},
      {"XML with instructions", canonical + "<?end?>"},
      {"Latin-1", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><plist><dict><key>K</key><string>" +
                      std::string(size, '\xE9') + "</string></dict></plist>"},
      {"binary",
       BinaryWriter::bytesOf(Dictionary::make({{"Name", PropertyList::string("binary")},
                                               {"Text", PropertyList::string(std::string(size, '-'))}}))},
      {"binary with many objects", BinaryWriter::bytesOf(settings("binary", size, size / 100 + 1))},
  };
  return files;
}

/// Carries the write out and holds every moment against the two lists.
class Watched {
 public:
  Watched(const std::string& old, const std::string& fresh)
      : file(old), old_(old), fresh_(fresh), before_(readPropertyList(old)), after_(readPropertyList(fresh)) {
    EXPECT_TRUE(before_);
    EXPECT_TRUE(after_);
    file.onChange = [this] {
      const auto now = readPropertyList(file.contents);
      if (now == after_) return;
      if (now != before_) ++mixtures;
    };
  }
  /// Answers the error.
  int write() { return replaceContents(file, old_, fresh_, {}); }
  [[nodiscard]] bool isOld() const { return file.contents == old_; }
  [[nodiscard]] bool isFresh() const { return file.contents == fresh_; }
  [[nodiscard]] bool readsFresh() const { return readPropertyList(file.contents) == after_; }

  FaultyFile file;
  int mixtures = 0;

 private:
  std::string old_;
  std::string fresh_;
  PropertyList before_;
  PropertyList after_;
};

constexpr std::size_t kSizes[] = {10, 2500, 5000, 20000};

struct Case {
  std::string name;
  std::string old;
  std::string fresh;
};
std::vector<Case> cases() {
  std::vector<Case> all;
  for (const std::size_t oldSize : kSizes) {
    for (const auto& old : oldFiles(oldSize)) {
      for (const std::size_t freshSize : kSizes) {
        all.push_back({std::string(old.name) + " of " + std::to_string(oldSize) + " by one of " +
                           std::to_string(freshSize),
                       old.bytes, xml(settings("fresh", freshSize))});
      }
    }
  }
  return all;
}

TEST(InPlaceWrite, FileIsOneOfTheTwoListsAfterEveryPageThatIsWritten) {
  for (const auto& [name, old, fresh] : cases()) {
    for (const bool shortWrites : {false, true}) {
      SCOPED_TRACE(name + (shortWrites ? ", in pieces" : ""));
      Watched write(old, fresh);
      write.file.shortWrites = shortWrites;
      EXPECT_EQ(write.write(), 0);
      EXPECT_EQ(write.mixtures, 0);
      EXPECT_TRUE(write.isFresh());
    }
  }
}

TEST(InPlaceWrite, FileIsOneOfTheTwoListsWhateverFails) {
  for (const auto& [name, old, fresh] : cases()) {
    if (old.size() > 15000 || fresh.size() > 15000) continue;
    std::size_t acts = 1;
    for (std::size_t failing = 0; failing < acts; ++failing) {
      SCOPED_TRACE(name + ", failure " + std::to_string(failing));
      Watched write(old, fresh);
      write.file.failing = failing;
      const int error = write.write();
      acts = write.file.acts;
      EXPECT_EQ(write.mixtures, 0);
      EXPECT_TRUE(write.isOld() || write.readsFresh());
      if (error == 0) {
        EXPECT_TRUE(write.readsFresh());
      }
    }
  }
}

TEST(InPlaceWrite, FullDiskLeavesTheOldContentsByteForByte) {
  for (const auto& [name, old, fresh] : cases()) {
    for (const bool canReserve : {true, false}) {
      if (fresh.size() <= old.size()) continue;
      SCOPED_TRACE(name);
      Watched write(old, fresh);
      write.file.canReserve = canReserve;
      write.file.room = (old.size() + FaultyFile::kPage - 1) / FaultyFile::kPage * FaultyFile::kPage;
      const int error = write.write();
      EXPECT_EQ(write.mixtures, 0);
      if (error == 0) {
        EXPECT_TRUE(write.isFresh());
        EXPECT_LE(fresh.size(), write.file.room);
      } else {
        EXPECT_EQ(error, ENOSPC);
        EXPECT_TRUE(write.isOld());
      }
    }
  }
}

TEST(InPlaceWrite, WhatAKillLeavesIsWrittenLikeAnyOtherList) {
  const Dictionary values = Dictionary::make({{"Text", PropertyList::string(std::string(9000, '-'))}});
  for (const std::string& first : {xml(values), BinaryWriter::bytesOf(values)}) {
    std::vector<std::string> left;
    Watched write(first, xml(settings("fresh", 6000)));
    const auto check = write.file.onChange;
    write.file.onChange = [&] {
      check();
      left.push_back(write.file.contents);
    };
    ASSERT_EQ(write.write(), 0);
    ASSERT_GT(left.size(), 5u);
    for (const std::string& contents : left) {
      SCOPED_TRACE("after change " + std::to_string(&contents - left.data()));
      for (const std::size_t size : {10u, 6000u, 30000u}) {
        Watched next(contents, xml(settings("next", size)));
        EXPECT_EQ(next.write(), 0);
        EXPECT_EQ(next.mixtures, 0);
        EXPECT_TRUE(next.isFresh());
      }
    }
  }
}

TEST(InPlaceWrite, ContentsThatFitOnePageAreWrittenByOneCall) {
  Watched write(xml(settings("old", 3000)), xml(settings("fresh", 2000)));
  EXPECT_EQ(write.write(), 0);
  EXPECT_EQ(write.file.acts, 3u) << "the page, the cut, the flush";
}

TEST(InPlaceWrite, NewListThatFitsOnePageIsMixedWithNoOldOneWhateverItIs) {
  const std::string canonical = xml(settings("old", 9000));
  std::string utf16 = "\xFF\xFE";
  for (const char c : canonical) utf16 += std::string{c, '\0'};
  for (const Old& old : {Old{"UTF-16", utf16},
                         Old{"both ends", canonical.substr(0, canonical.find("<plist")) + "<!-- --><?p ?>" +
                                              canonical.substr(canonical.find("<plist"))},
                         Old{"a table of two pages", BinaryWriter::bytesOf(settings("old", 60000, 3000))}}) {
    for (const std::size_t size : {10u, 2500u}) {
      std::size_t acts = 1;
      for (std::size_t failing = 0; failing <= acts; ++failing) {
        SCOPED_TRACE(old.name + std::string(", failure ") + std::to_string(failing));
        Watched write(old.bytes, xml(settings("fresh", size)));
        write.file.failing = failing;
        const int error = write.write();
        acts = write.file.acts;
        EXPECT_EQ(write.mixtures, 0);
        EXPECT_TRUE(error == 0 ? write.readsFresh() : write.isOld() || write.readsFresh());
      }
    }
  }
}

/// Contents that the switch does not know its way with are written by one call.
TEST(InPlaceWrite, OtherContentsAreWrittenAndPutBackWhenThatFails) {
  const std::string utf16 = "\xFF\xFE" + std::string(9000, 'x');
  const std::string bothEnds = "<plist><dict/>" + std::string(300, ' ') + "<!-- --><?p ?></plist>";
  const std::string fresh = xml(settings("fresh", 9000));
  for (const auto& [old, now] :
       {std::pair(std::string("old"), std::string(9000, 'n')), std::pair(utf16, fresh),
        std::pair(bothEnds, fresh), std::pair(std::string(9000, 'o'), std::string("n"))}) {
    FaultyFile sound(old);
    EXPECT_EQ(replaceContents(sound, old, now, {}), 0);
    EXPECT_TRUE(sound.contents == now);
    FaultyFile bad(old);
    bad.failing = 0;
    EXPECT_EQ(replaceContents(bad, old, now, {}), EIO);
    EXPECT_TRUE(bad.contents == old);
    if (now.size() < 2 * FaultyFile::kPage) continue;
    FaultyFile full(old);
    full.room = std::max(old.size(), FaultyFile::kPage);
    EXPECT_EQ(replaceContents(full, old, now, {}), full.room < now.size() ? ENOSPC : 0);
    EXPECT_TRUE(full.contents == (full.room < now.size() ? old : now));
  }
}

}  // namespace
}  // namespace corvane

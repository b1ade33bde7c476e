#include <limits>

#include <gtest/gtest.h>

#include "options/OptionsTabFixture.h"
#include "options/VolumeFilters.h"
#include "values/Conversions.h"

namespace corvane::test {
namespace {

TEST(VolumeFilters, OnlyTheRootPathIsTheRootVolume) {
  EXPECT_TRUE(VolumeFilters::isRootOrNetworkVolume("/"));
  for (const char* path : {"", "//", "/Volumes", "/Volumes/Server", "smb://server/share"}) {
    EXPECT_FALSE(VolumeFilters::isRootOrNetworkVolume(path)) << path;
  }
}

TEST(VolumeFilters, OrdinaryFileSystemsAreShownAndAllOthersOnRequest) {
  VolumeFilters filters;
  for (const char* kind : {"acfs", "apfs", "exfat", "hfs", "msdos", "zfs"}) {
    EXPECT_TRUE(filters.showVolumeType(kind)) << kind;
  }
  for (const char* kind : {"ntfs", "APFS", "Hfs", "apfs ", "", "ap", "smbfs", "autofs"}) {
    EXPECT_FALSE(filters.showVolumeType(kind)) << kind;
  }
  filters.setShowAllVolumeTypes(true);
  for (const char* kind : {"apfs", "ntfs", "APFS", ""}) EXPECT_TRUE(filters.showVolumeType(kind)) << kind;
}

TEST(VolumeFilters, SystemVolumesAreHiddenByTheirMountPoints) {
  constexpr std::int32_t large = 2'000'000'000;
  struct Case {
    const char* path;
    std::int32_t size;
    bool normal;
  };
  const Case cases[] = {
      {"/private/var/vm", large, false},
      {"/private/var/vm2", large, true},
      {"/private/var/vm/", large, true},
      {"/Volumes/Preboot", large, false},
      {"/Volumes/Preboot 1", large, true},
      {"/volumes/preboot", large, true},
      {"/System/Volumes/", large, false},
      {"/System/Volumes/Data", large, false},
      {"/System/Volumes/Update/SFR", large, false},
      {"/System/Volumes", large, true},
      {"/System/VolumesX", large, true},
      {"/Users/System/Volumes/", large, true},
      {"/Volumes/Recovery", 1073741824, true},
      {"/Volumes/Recovery", 1073741823, false},
      {"/Volumes/Recovery", 0, false},
      {"/Volumes/Recovery", -1, false},
      {"/Volumes/Recovery", std::numeric_limits<std::int32_t>::max(), true},
      {"/Volumes/Recovery", std::numeric_limits<std::int32_t>::min(), false},
      {"/Volumes/Recovery HD", 0, true},
      {"/Volumes/Data", 0, true},
      {"/Volumes/Data", -1, true},
      {"", 0, true},
  };
  VolumeFilters hidden;
  VolumeFilters all;
  all.setShowAllVolumeTypes(true);
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.path) + " " + std::to_string(c.size));
    EXPECT_EQ(hidden.isNormalVolumeFromMountPathWithSize(c.path, c.size), c.normal);
    EXPECT_TRUE(all.isNormalVolumeFromMountPathWithSize(c.path, c.size));
  }
}

TEST(VolumeFilters, TheMediaSizeIsCutTo32Bits) {
  struct Case {
    PropertyList size;
    bool offered;
  };
  const Case cases[] = {
      {number(1073741824), true},
      {number(1073741823), false},
      {number(2147483647), true},
      {number(2147483648), false},               // reads as the smallest negative number
      {number(4294967296), false},               // reads as 0
      {number(4294967296 + 1073741824), true},   // reads as 1 GiB
      {number(4294967296 + 1073741823), false},  // reads as one byte under 1 GiB
      {number(-1), false},
      {PropertyList::real(1.5e9), true},
      {PropertyList::real(1.0e9), false},
      {text("1073741824"), true},
      {text("much"), false},
      {PropertyList(), false},  // a missing size counts as 0
      {list({number(1073741824)}), false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(description(c.size));
    Dictionary volume = described("Recovery", "/Volumes/Recovery");
    volume.set("DAMediaSize", c.size);
    EXPECT_EQ(VolumeFilters().isOffered(volume), c.offered);
  }
}

TEST(VolumeFilters, AVolumeIsOfferedOnlyWithNamePathAndKindAsTexts) {
  const Dictionary whole = described("Data", "/Volumes/Data");
  EXPECT_TRUE(VolumeFilters().isOffered(whole));
  EXPECT_FALSE(VolumeFilters().isOffered(Dictionary()));
  VolumeFilters all;
  all.setShowAllVolumeTypes(true);
  for (const char* key : {"DAVolumeName", "DAVolumePath", "DAVolumeKind"}) {
    SCOPED_TRACE(key);
    Dictionary missing = whole.shallowCopy();
    missing.remove(key);
    EXPECT_FALSE(VolumeFilters().isOffered(missing));
    EXPECT_FALSE(all.isOffered(missing));
    Dictionary wrongType = whole.shallowCopy();
    wrongType.set(key, number(1));
    EXPECT_FALSE(VolumeFilters().isOffered(wrongType));
    EXPECT_FALSE(all.isOffered(wrongType));
  }
}

TEST(VolumeFilters, TheRootVolumeIsNotOfferedEvenWhenAllAreShown) {
  VolumeFilters all;
  all.setShowAllVolumeTypes(true);
  EXPECT_FALSE(all.isOffered(described("Macintosh HD", "/")));
  EXPECT_TRUE(all.isOffered(described("VM", "/private/var/vm")));
  EXPECT_TRUE(all.isOffered(described("Windows", "/Volumes/Windows", "ntfs")));
}

}  // namespace
}  // namespace corvane::test

// The kernel's table of mounts, as a file of a test's own.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/MountTable.h"
#include "support/TemporaryFolder.h"

namespace corvane {
namespace {

using ::testing::ElementsAre;

TEST(MountTable, DisksAreWhatLiesOnADeviceOfThisComputer) {
  const test::TemporaryFolder folder;
  const auto file = folder.writeFile(
      "mountinfo",
      "22 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n"
      "23 22 0:21 / /proc rw,nosuid - proc proc rw\n"
      "40 22 8:17 / /media/clerk/Macintosh\\040HD ro,nosuid shared:4 master:2 - hfsplus /dev/sdb1 ro\n"
      "41 22 8:17 / /media/clerk/Macintosh\\040HD ro,nosuid - hfsplus /dev/sdb1 ro\n"
      "42 22 0:50 / /net/office rw - nfs4 server:/export rw\n"
      "43 22 0:51 / /home/clerk/far rw - fuse.sshfs clerk@far:/ rw\n"
      "44 22 0:52 / /media/clerk/Stick rw - fuseblk /dev/sdc1 rw\n"
      "45 22 0:53 / /half\n");
  const MountTable table(file.c_str());
  EXPECT_THAT(table.disks(), ElementsAre("/", "/media/clerk/Macintosh HD", "/media/clerk/Stick"));
}

TEST(MountTable, NoTableHasNoDisks) { EXPECT_TRUE(MountTable("/nonexistent").disks().empty()); }

}  // namespace
}  // namespace corvane

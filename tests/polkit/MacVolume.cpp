#include "MacVolume.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace corvane::test {

MacVolume::MacVolume(std::string root) : root_(std::move(root)) {
  for (const char* path :
       {"", "/private", "/private/etc", "/private/var", "/Library", "/Library/Preferences",
        "/Library/Preferences/SystemConfiguration", "/Volumes", "/Users", "/Users/admin", "/Library/Corvane",
        "/Library/Corvane/ClientData", "/Library/Corvane/ClientData/LocalInfo", "/Library/Corvane/Plugins",
        "/Library/Corvane/PluginSupport", "/Library/Corvane/Utilities",
        "/Library/Corvane/Utilities/UpdaterSupport"}) {
    folder(path);
  }
  folder("/private/tmp", 01777);
  folder("/private/var/root", 0700);
  link("/tmp", "private/tmp");
  link("/var", "private/var");
  link("/etc", "private/etc");
}

void MacVolume::folder(std::string_view path, mode_t mode) const {
  const std::string here = *this / path;
  EXPECT_TRUE(std::filesystem::create_directory(here)) << here;
  EXPECT_EQ(::chmod(here.c_str(), mode), 0) << here;
}

void MacVolume::link(std::string_view path, const std::string& to) const {
  std::filesystem::create_symlink(to, *this / path);
}

void MacVolume::file(std::string_view path, std::string_view contents, mode_t mode, gid_t group) const {
  const std::string here = *this / path;
  std::ofstream stream(here, std::ios::binary);
  stream << contents;
  stream.close();
  EXPECT_TRUE(stream.good()) << here;
  EXPECT_EQ(::chown(here.c_str(), 0, group), 0) << here;
  EXPECT_EQ(::chmod(here.c_str(), mode), 0) << here;
}

std::string MacVolume::contents(std::string_view path) const {
  std::ostringstream text;
  text << std::ifstream(*this / path, std::ios::binary).rdbuf();
  return text.str();
}

std::string MacVolume::rights(std::string_view path) const {
  struct stat attributes {};
  if (::lstat((*this / path).c_str(), &attributes) != 0) return "missing";
  std::ostringstream text;
  text << attributes.st_uid << ":" << attributes.st_gid << " " << std::oct << (attributes.st_mode & 07777U);
  return text.str();
}

}  // namespace corvane::test

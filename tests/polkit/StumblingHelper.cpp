// The helper tool as it is, but for what happens to it or around it at one step of a copy: the file "stumble"
// beside it says "STEP ACT PATH", where STEP counts the steps of all copies from 0. It stands in the helper's
// place on the test's machine.
#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>

#include "helper/HelperMain.h"

namespace {

namespace fs = std::filesystem;

struct Stumble {
  int step = -1;
  std::string act;
  fs::path path;
};

void perform(const Stumble& stumble) {
  if (stumble.act == "die") (void)std::raise(SIGKILL);
  fs::remove(stumble.path);
  if (stumble.act == "folder") fs::create_directory(stumble.path);
  if (stumble.act == "link") fs::create_symlink("../../secret", stumble.path);
  if (stumble.act == "hardlink")
    fs::create_hard_link(stumble.path.parent_path() / "../../secret", stumble.path);
}

}  // namespace

int main(int count, char** vector) {
  Stumble stumble;
  std::ifstream(fs::read_symlink("/proc/self/exe").parent_path() / "stumble") >> stumble.step >>
      stumble.act >> stumble.path;
  const auto stumbleAtStep = [stumble](std::string_view) mutable {
    if (stumble.step-- == 0) perform(stumble);
  };
  return corvane::helper::helperMain(count, vector, {.beforeStep = stumbleAtStep});
}

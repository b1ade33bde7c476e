#include "support/PinnedEnvironment.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace corvane::test {
namespace {

bool isKept(std::string_view name) {
  constexpr std::array<std::string_view, 6> kFamilies{"CORVANE_", "GTEST_", "ASAN_",
                                                      "UBSAN_",   "LSAN_",  "LLVM_PROFILE_"};
  for (const std::string_view family : kFamilies) {
    if (name.starts_with(family)) return true;
  }
  return name == "TMPDIR" || name == "DISPLAY" || name == "QT_QPA_PLATFORM";
}

void keepOnlyWhatIsSaidToTheTests() {
  std::vector<std::string> others;
  for (char** variable = environ; *variable != nullptr; ++variable) {
    const std::string_view name =
        std::string_view(*variable).substr(0, std::string_view(*variable).find('='));
    if (!isKept(name)) others.emplace_back(name);
  }
  for (const std::string& name : others) ::unsetenv(name.c_str());
}

}  // namespace

PinnedEnvironment::PinnedEnvironment() {
  keepOnlyWhatIsSaidToTheTests();
  ::setenv("PATH", "/usr/bin:/bin:/usr/sbin:/sbin", 1);
  ::setenv("LANG", "C.UTF-8", 1);
  ::setenv("TZ", "UTC", 1);
  ::setenv("HOME", home_.path().c_str(), 1);
  for (const char* kind : {"CONFIG", "DATA", "STATE", "CACHE"})
    ::setenv((std::string("XDG_") + kind + "_HOME").c_str(), home_.makeFolder(kind).c_str(), 1);
  // The kinds of files are all that is taken from where the machine keeps icon themes and what desktops are
  // told.
  const std::string machine = home_.makeFolder("machine");
  std::filesystem::create_symlink("/usr/share/mime", machine + "/mime");
  for (const char* variable : {"XDG_CONFIG_DIRS", "XDG_DATA_DIRS"}) ::setenv(variable, machine.c_str(), 1);
  const std::string runtime = home_.makeFolder("runtime");
  ::chmod(runtime.c_str(), S_IRWXU);
  ::setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
  ::umask(S_IWGRP | S_IWOTH);
}

}  // namespace corvane::test

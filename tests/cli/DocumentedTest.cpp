// What is written about the program says what the program has: the manual page and the completions.
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "Ctl.h"

namespace corvane::test {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;

class CtlDocumented : public CtlTest {
 protected:
  /// The first word of each line below a heading of a help text.
  [[nodiscard]] static std::vector<std::string> listed(const std::string& help, const std::string& heading) {
    std::vector<std::string> words;
    std::istringstream lines(help.substr(help.find(heading) + heading.size()));
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line) && line.starts_with("  "))
      words.push_back(line.substr(2, line.find(' ', 2) - 2));
    return words;
  }
  [[nodiscard]] std::vector<std::string> settings() {
    std::vector<std::string> names;
    const Json all = json({"get"}).at("settings");
    for (const auto& [name, value] : all.items()) names.push_back(name);
    return names;
  }
  /// What bash offers for the last of the words.
  [[nodiscard]] std::vector<std::string> completions(const std::vector<std::string>& words) const {
    std::string line;
    for (const std::string& word : words) line += " '" + word + "'";
    const std::string script = "PATH=" + std::filesystem::path(CORVANECTL_PATH).parent_path().string() +
                               ":$PATH; source '" CORVANE_COMPLETIONS_FOLDER
                               "/corvanectl.bash'; compopt() { :; }; COMP_WORDS=(corvanectl" +
                               line + "); COMP_CWORD=" + std::to_string(words.size()) +
                               "; _corvanectl; printf '%s\\n' \"${COMPREPLY[@]}\"";
    Started bash({"/bin/bash", "-c", script});
    std::istringstream output(bash.output());
    std::vector<std::string> offered;
    for (std::string word; std::getline(output, word);) offered.push_back(word);
    return offered;
  }
};

TEST_F(CtlDocumented, EveryCommandAndSettingStandsInTheManualPage) {
  std::string manual = DemoClient::contents(CORVANE_MANUAL);
  manual.erase(std::remove(manual.begin(), manual.end(), '\\'), manual.end());
  const auto commands = listed(ctl({"--help"}).output, "Subcommands:");
  EXPECT_EQ(commands.size(), 11U);
  for (const std::string& command : commands) EXPECT_THAT(manual, HasSubstr(command));
  for (const char* group : {"volumes", "plugins"})
    for (const std::string& command : listed(ctl({group, "--help"}).output, "Subcommands:"))
      EXPECT_THAT(manual, HasSubstr(std::string(group) + " " + command));
  for (const std::string& name : settings()) EXPECT_THAT(manual, HasSubstr(name));
}

TEST_F(CtlDocumented, EveryCommandIsCompletedInEveryShell) {
  for (const char* shell : {"corvanectl.bash", "_corvanectl", "corvanectl.fish"}) {
    const std::string script = DemoClient::contents(std::string(CORVANE_COMPLETIONS_FOLDER "/") + shell);
    for (const std::string& command : listed(ctl({"--help"}).output, "Subcommands:"))
      EXPECT_THAT(script, HasSubstr(command)) << shell;
    for (const std::string& command : listed(ctl({"plugins", "--help"}).output, "Subcommands:"))
      EXPECT_THAT(script, HasSubstr(command)) << shell;
  }
}

TEST_F(CtlDocumented, BashOffersCommandsSettingsVolumesPluginsAndOptions) {
  for (const std::string& command : listed(ctl({"--help"}).output, "Subcommands:"))
    EXPECT_THAT(completions({""}), Contains(command));
  EXPECT_EQ(completions({"sta"}), std::vector<std::string>{"status"});
  EXPECT_EQ(completions({"--root", demo.root, "get", ""}), settings());
  EXPECT_EQ(completions({"--root", demo.root, "set", "run-interval", ""}), std::vector<std::string>{""})
      << "a value";
  EXPECT_EQ(completions({"--root", demo.root, "volumes", "set", "Old"}),
            std::vector<std::string>{"Old\\ Library"});
  EXPECT_THAT(completions({"--root", demo.root, "volumes", "set", "Backup", ""}), Contains("usage.percent"));
  EXPECT_EQ(completions({"--root", demo.root, "plugins", "enable", "check_pri"}),
            std::vector<std::string>{"check_printers"});
  EXPECT_EQ(completions({"--root", demo.root, "plugins", "set", "check_files", "Log"}),
            std::vector<std::string>{"Log_Folder"});
}

}  // namespace
}  // namespace corvane::test

// What is written about the program says what the program has: the manual page and the completions.
#include <regex>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <unistd.h>

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

/// The examples of the README: a line with a command behind "$ ", and what it prints.
class CtlReadme : public CtlTest {
 protected:
  struct Example {
    std::string command;
    std::string output;
  };
  [[nodiscard]] static std::vector<Example> examples() {
    std::vector<Example> all;
    std::istringstream lines(DemoClient::contents(CORVANE_README));
    bool isExample = false;
    for (std::string line; std::getline(lines, line);) {
      if (line.starts_with("    $ corvanectl ")) {
        all.push_back({line.substr(6), {}});
        isExample = true;
      } else if (isExample && line.starts_with("    ")) {
        all.back().output += line.substr(4) + "\n";
      } else {
        isExample = false;
      }
    }
    return all;
  }
  static void replace(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
      text.replace(at, from.size(), to);
  }
  /// Columns as they are on a terminal and elsewhere, made alike.
  [[nodiscard]] static std::string columns(const std::string& text) {
    return std::regex_replace(text, std::regex("(\\t|([^ \\n])  +)"), "$2|");
  }
};

TEST_F(CtlReadme, EveryExamplePrintsWhatStandsThere) {
  if (::access("/usr/bin/jq", X_OK) != 0) GTEST_SKIP() << "NOT TESTED: jq is not installed";
  const DemoClient other("0", "other");
  const TemporaryFolder home;
  std::ofstream(home / "check_disk.plist") << R"(<plist version="1.0"><dict>
    <key>PluginName</key><string>Disk</string>
    <key>PluginOptions</key><array>
      <dict><key>SettingTitle</key><string>Percent</string><key>SettingTitleHint</key><string></string>
        <key>SettingType</key><dict><key>Type</key><string>NumberPicker</string><key>Value</key><string>90</string></dict>
        <key>SettingStoragePath</key><string>/Library/Corvane/PluginSupport/check_disk_settings.plist</string>
        <key>SettingStorageKey</key><string>Percent</string></dict>
      <dict><key>SettingTitle</key><string>Mode</string><key>SettingTitleHint</key><string></string>
        <key>SettingType</key><dict><key>Type</key><string>checkbox</string></dict>
        <key>SettingStoragePath</key><string>/Library/Corvane/PluginSupport/check_disk_settings.plist</string>
        <key>SettingStorageKey</key><string>Mode</string></dict>
    </array></dict></plist>)";
  // The folders of the README, and what stands for them here.
  const std::vector<std::pair<std::string, std::string>> places = {{"/srv/staging/a", demo.root},
                                                                   {"/srv/staging/b", other.root},
                                                                   {"/mnt/mac", demo.root},
                                                                   {"/home/me", home.path()}};
  const auto all = examples();
  EXPECT_EQ(all.size(), 3U);
  for (Example example : all) {
    for (const auto& [there, here] : places) {
      replace(example.command, there, here);
      replace(example.output, there, here);
    }
    const std::string line = "cd '" + home.path() + "'; PATH='" +
                             std::filesystem::path(CORVANECTL_PATH).parent_path().string() + "':$PATH; " +
                             example.command;
    const Ended ended = RunningCtl({"-c", line}, {.program = "/bin/sh"}).end();
    EXPECT_EQ(columns(ended.output), columns(example.output)) << example.command;
    EXPECT_EQ(ended.errors, "") << example.command;
  }
  for (const std::string& root : {demo.root, other.root})
    EXPECT_EQ(ctl({"--root", root, "get", "run-interval", "startup-disk.percent"}).output,
              "run-interval\t4\nstartup-disk.percent\t85\n");
}

/// The completions, as each shell carries them out.
class CtlCompletions : public CtlDocumented, public testing::WithParamInterface<const char*> {
 protected:
  void SetUp() override {
    shell_ = std::string("/usr/bin/") + GetParam();
    if (::access(shell_.c_str(), X_OK) != 0) GTEST_SKIP() << "NOT TESTED: " << shell_ << " is not installed";
  }

  /// What is offered for the last of the words, which is the beginning of one.
  [[nodiscard]] std::vector<std::string> completions(const Words& words) const {
    const std::string start = "PATH=" + std::filesystem::path(CORVANECTL_PATH).parent_path().string() +
                              ":$PATH HOME=" + folder_.path() + " exec " + shell_ + " ";
    Ended ended;
    if (shell_.ends_with("bash")) {
      ended = RunningCtl({"-c", start + script(bashScript(words))}, {.program = "/bin/sh"}).end();
    } else if (shell_.ends_with("fish")) {
      ended = RunningCtl({"-c", start + "--no-config " + script(fishScript(words))}, {.program = "/bin/sh"})
                  .end();
    } else {
      const Terminal terminal;
      RunningCtl zsh({"-c", start + "-f -i"}, {.terminal = &terminal, .program = "/bin/sh"});
      terminal.type("source " + script(zshScript(words)) + "\n");
      ended = zsh.end();
      ended.output = DemoClient::contents(folder_ / "offered");
    }
    std::istringstream output(ended.output);
    std::vector<std::string> offered;
    for (std::string line; std::getline(output, line);) {
      std::erase(line, '\\');  // a blank is written so that it can stand on the line
      line = line.substr(0, line.find('\t'));
      if (!line.empty()) offered.push_back(line);
    }
    EXPECT_EQ(ended.errors, "");
    std::ranges::sort(offered);
    offered.erase(std::unique(offered.begin(), offered.end()), offered.end());
    return offered;
  }

 private:
  [[nodiscard]] static std::string quoted(const std::string& word) { return " '" + word + "'"; }
  [[nodiscard]] std::string script(const std::string& text) const {
    std::ofstream(folder_ / "script") << text;
    return folder_ / "script";
  }
  /// The line as it stands before the key is pressed.
  [[nodiscard]] static std::string lineOf(const Words& words) {
    std::string line = "corvanectl";
    for (std::size_t i = 0; i + 1 < words.size(); ++i) line += " " + words[i];
    return line + " " + words.back();
  }
  [[nodiscard]] static std::string bashScript(const Words& words) {
    std::string line;
    for (const std::string& word : words) line += quoted(word);
    return "source '" CORVANE_COMPLETIONS_FOLDER
           "/corvanectl.bash'\ncompopt() { :; }\nCOMP_WORDS=(corvanectl" +
           line + ")\nCOMP_CWORD=" + std::to_string(words.size()) +
           "\n_corvanectl\nprintf '%s\\n' \"${COMPREPLY[@]}\"\n";
  }
  [[nodiscard]] static std::string fishScript(const Words& words) {
    return "source '" CORVANE_COMPLETIONS_FOLDER "/corvanectl.fish'\ncomplete -C" + quoted(lineOf(words)) +
           "\n";
  }
  /// What completes on a real line, with a look at what is handed to the line editor.
  [[nodiscard]] std::string zshScript(const Words& words) const {
    return "fpath=('" CORVANE_COMPLETIONS_FOLDER "' $fpath)\nautoload -Uz compinit\ncompinit -u -D\n: >" +
           (folder_ / "offered") +
           "\ncompadd() {\n  local -a hits\n  builtin compadd -O hits \"$@\"\n  print -rl -- $hits >>" +
           (folder_ / "offered") + "\n}\nzle-line-init() { BUFFER=" + quoted(lineOf(words)).substr(1) +
           "; CURSOR=$#BUFFER; zle complete-word; exit }\nzle -N zle-line-init\n";
  }

  std::string shell_;
  TemporaryFolder folder_;
};

TEST_P(CtlCompletions, OfferCommandsSettingsVolumesPluginsAndOptions) {
  const Words root = {"--root", demo.root};
  const auto offered = [&](const Words& words) {
    Words all = root;
    all.insert(all.end(), words.begin(), words.end());
    return completions(all);
  };
  const auto sorted = [](Words words) {
    std::ranges::sort(words);
    return words;
  };
  for (const std::string& command : listed(ctl({"--help"}).output, "Subcommands:"))
    EXPECT_THAT(completions({""}), Contains(command));
  EXPECT_EQ(completions({"sta"}), Words{"status"});
  EXPECT_EQ(completions({"help", "pl"}), Words{"plugins"});
  EXPECT_EQ(offered({"get", ""}), sorted(settings()));
  EXPECT_EQ(offered({"get", "group", "run-"}), Words{"run-interval"});
  EXPECT_EQ(offered({"set", "run-"}), Words{"run-interval"});
  EXPECT_EQ(offered({"set", "run-interval", ""}), Words{}) << "a value";
  EXPECT_EQ(offered({"set", "run-interval", "3", "gr"}), Words{"group"});
  EXPECT_THAT(offered({"volumes", ""}), testing::IsSupersetOf({"set", "purge"}));
  EXPECT_EQ(offered({"volumes", "set", "Old"}), Words{"Old Library"});
  EXPECT_EQ(offered({"volumes", "purge", "Stu"}), Words{"Studio Drive"});
  EXPECT_EQ(offered({"volumes", "set", "Backup", ""}),
            (Words{"absence.minutes", "absence.warn", "usage.percent", "usage.warn"}));
  EXPECT_EQ(offered({"volumes", "set", "Backup", "usage.warn", ""}), Words{}) << "a value";
  EXPECT_EQ(offered({"plugins", ""}), (Words{"add", "disable", "enable", "remove", "set", "show", "test"}));
  EXPECT_EQ(offered({"plugins", "enable", "check_pri"}), Words{"check_printers"});
  EXPECT_EQ(offered({"plugins", "set", "check_files", "Log"}), Words{"Log_Folder"});
  EXPECT_EQ(offered({"plugins", "show", "check_files", "Log"}), Words{}) << "no option follows";
  EXPECT_THAT(offered({"run", "--w"}), Words{"--wait"});
}

INSTANTIATE_TEST_SUITE_P(Shells, CtlCompletions, testing::Values("bash", "fish", "zsh"),
                         [](const auto& shell) { return std::string(shell.param); });

}  // namespace
}  // namespace corvane::test

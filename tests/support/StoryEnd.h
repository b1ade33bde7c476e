// What an administrator's session leaves in the client's files, whichever shell it was lived through in:
// every file byte for byte what the codec writes for what stood there before and these changes.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "support/DemoClient.h"
#include "support/Values.h"
#include "values/PropertyListCodec.h"

namespace corvane::test {

class StoryEnd {
 public:
  /// Takes down what stands in the files at the beginning.
  explicit StoryEnd(const DemoClient& demo) {
    const auto plugin = [&](const char* name) {
      return demo.paths.pluginSupport + "/" + name + "_settings.plist";
    };
    const auto array = [](std::initializer_list<const char*> entries) {
      Array result = Array::make();
      for (const char* entry : entries) result.append(text(entry));
      return result;
    };
    begin(demo.paths.rootCapacitySettings,
          {{"Plugin_Enabled", flag(true)}, {"Capacity_Threshold", number(80)}});
    begin(demo.paths.timeMachineSettings, {{"Plugin_Enabled", flag(true)},
                                           {"Days_Until_Warning", number(14)},
                                           {"Manual_Run_Hour", text("7")},
                                           {"Days_Until_Manual_Run", number(4)},
                                           {"Enable_On_Removal", flag(true)}});
    begin(demo.paths.autoDiskMount, {{"AutomountDisksWithoutUserLogin", flag(true)}});
    begin(plugin("check_printers"), {{"Plugin_Enabled", flag(true)}});
    begin(plugin("check_web_sites"), {{"Watch_Company_Site", flag(false)},
                                      {"Site_Address", text("intranet.example.com")},
                                      {"Slow_After_Seconds", number(7)},
                                      {"Request_Method", number(1)}});
    begin(plugin("check_services"), {{"Services", Dictionary::make({{"Backup agent", flag(false)},
                                                                    {"cupsd", flag(true)},
                                                                    {"ntpd", flag(true)},
                                                                    {"sshd", flag(true)}})}});
    begin(demo.root + "/var/root/Library/Preferences/com.example.file_server_check.plist",
          {{"User", text("backup")}, {"Password", text("pa55 & word")}});
    begin(plugin("check_files"),
          {{"Configuration_File", text("/etc/ntp.conf")},
           {"Required_Files", array({"Add a new entry", "/etc/ntp.conf", "/etc/services"})},
           {"Log_Folder", text("/private/var/log/Old Logs")},
           {"Empty_Folders", array({"Add a new entry", "/private/tmp/My Folder 🗂",
                                    "/private/var/log/Old Logs", "/Users/Shared/Drop Box"})}});
    begin(plugin("check_test_mode"), {{"Outcome", number(0)}});
  }

  /// To be called before the client is removed.
  void expect() const {
    for (const auto& [path, contents] : files_)
      EXPECT_EQ(DemoClient::contents(path), writeXmlPropertyList(contents)) << path;
  }

 private:
  void begin(const std::string& path, std::initializer_list<std::pair<const char*, PropertyList>> changes) {
    Dictionary contents =
        std::filesystem::exists(path) ? DemoClient::plist(path).asDictionary() : Dictionary::make();
    for (const auto& [key, value] : changes) contents.set(key, value);
    files_.emplace_back(path, contents);
  }

  std::vector<std::pair<std::string, PropertyList>> files_;
};

}  // namespace corvane::test

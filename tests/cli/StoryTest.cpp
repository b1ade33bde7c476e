// The administrator's session that the window's tests live through, lived with the command line: every file
// ends as there, byte for byte.
#include "Ctl.h"
#include "support/StoryEnd.h"

namespace corvane::test {
namespace {

class CtlStory : public CtlTest {};

TEST_F(CtlStory, ASessionLeavesTheFilesThatTheWindowLeaves) {
  for (const char* folder : {"/etc", "/private/var/log/Old Logs"})
    std::filesystem::create_directories(demo.root + folder);
  for (const char* file : {"/etc/hosts", "/etc/ntp.conf"}) std::ofstream(demo.root + file) << "text";
  const StoryEnd end(demo);

  good({"set", "startup-disk.warn", "on", "startup-disk.percent", "80", "automount", "on"});
  good({"set", "time-machine.days", "14", "time-machine.backup-hour", "7", "time-machine.backup-half", "AM",
        "time-machine.backup-days", "4", "time-machine.removal-warn", "on"});
  good({"plugins", "enable", "Printers"});
  good({"plugins", "set", "check_web_sites", "Watch_Company_Site", "off"});
  good({"plugins", "set", "Web Sites", "Address", "intranet.example.com"});
  good({"plugins", "set", "check_web_sites", "Slow_After_Seconds", "7"});
  const Json method = json({"plugins", "show", "check_web_sites"}).at("plugins").at(0).at("options").at(4);
  good({"plugins", "set", "check_web_sites", "#5", method.at("choices").at(1)});
  good(
      {"plugins", "set", "check_services", "Services", "Backup agent=off", "cupsd=on", "ntpd=on", "sshd=on"});
  good({"plugins", "set", "check_file_server", "User", "backup"});
  good({"plugins", "set", "check_file_server", "Password", "-"}, "pa55 & word\n");
  good({"plugins", "set", "check_files", "Configuration_File", "/etc/ntp.conf"});
  good({"plugins", "add", "check_files", "Required_Files", "/etc/ntp.conf"});
  good({"plugins", "remove", "check_files", "Required_Files", "/etc/hosts"});
  good({"plugins", "set", "check_files", "Log_Folder", "/private/var/log/Old Logs"});
  good({"plugins", "add", "check_files", "Empty_Folders", "/private/var/log/Old Logs"});

  end.expect();
}

}  // namespace
}  // namespace corvane::test

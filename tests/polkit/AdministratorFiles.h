// The files of the administrator's session: what the client and its deployment left on the volume, and,
// written by hand, what a Mac would have written after each edit.
#pragma once

#include <string>
#include <string_view>

namespace corvane::test::administrator {

inline std::string plist(std::string_view body) {
  return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
)" + std::string(body) +
         "</plist>\n";
}

// The client's settings, as somebody wrote them with an editor: other keys, another order and layout.
inline const std::string kClientSettingsBefore = plist(R"(<dict>
  <key>Run_Interval</key> <integer>2</integer>
  <key>ClientGroup</key> <string>lab</string>
  <key>Client_Version</key> <string>4.2.1</string>
  <key>Date_Client_Run</key> <date>2024-02-29T23:59:59Z</date>
  <key>Own_Nested</key>
  <dict>
    <key>Zero</key><real>0.0</real>
    <key>Empty</key><array></array>
    <key>Bytes</key><data>AQIDBA==</data>
    <key>List</key><array><integer>-1</integer><string></string><true/><dict></dict></array>
  </dict>
  <key>Own_Ratio</key> <real>0.1</real>
  <key>Own_Name</key> <string>Käse &amp; "Wein"</string>
</dict>
)");
inline const std::string kClientSettingsAfter = plist(R"(<dict>
	<key>ClientGroup</key>
	<string>R&amp;D &lt;lab&gt;</string>
	<key>Client_Version</key>
	<string>4.2.1</string>
	<key>Date_Client_Run</key>
	<date>2024-02-29T23:59:59Z</date>
	<key>Own_Name</key>
	<string>Käse &amp; "Wein"</string>
	<key>Own_Nested</key>
	<dict>
		<key>Bytes</key>
		<data>
		AQIDBA==
		</data>
		<key>Empty</key>
		<array/>
		<key>List</key>
		<array>
			<integer>-1</integer>
			<string></string>
			<true/>
			<dict/>
		</array>
		<key>Zero</key>
		<real>0.0</real>
	</dict>
	<key>Own_Ratio</key>
	<real>0.10000000000000001</real>
	<key>Run_Interval</key>
	<integer>4</integer>
</dict>
)");

inline const std::string kUpdateStatusContents = plist(R"(<dict>
	<key>Date_Last_Checked</key>
	<date>2024-03-01T06:00:00Z</date>
</dict>
)");

// Two volumes are mounted; of one of them nothing is saved, and one that is saved is away.
inline const std::string kDiskJournal = plist(R"(<dict>
	<key>CurrentlyMountedVolumeDevices</key>
	<array>
		<string>disk2s1</string>
		<string>disk3s1</string>
	</array>
	<key>Devices</key>
	<dict>
		<key>disk2s1</key>
		<array>
			<dict>
				<key>DAMediaSize</key>
				<integer>500000000000</integer>
				<key>DAVolumeKind</key>
				<string>apfs</string>
				<key>DAVolumeName</key>
				<string>Backup</string>
				<key>DAVolumePath</key>
				<string>/Volumes/Backup</string>
			</dict>
		</array>
		<key>disk3s1</key>
		<array>
			<dict>
				<key>DAMediaSize</key>
				<integer>64000000000</integer>
				<key>DAVolumeKind</key>
				<string>exfat</string>
				<key>DAVolumeName</key>
				<string>Media</string>
				<key>DAVolumePath</key>
				<string>/Volumes/Media</string>
			</dict>
		</array>
	</dict>
</dict>
)");
inline const std::string kVolumesBefore = plist(R"(<array>
	<dict>
		<key>MonitorPresence</key>
		<true/>
		<key>MonitorUsage</key>
		<false/>
		<key>PresenceThreshold</key>
		<integer>30</integer>
		<key>UsageThreshold</key>
		<integer>95</integer>
		<key>VolumeName</key>
		<string>Old Disk</string>
		<key>VolumePath</key>
		<string>/Volumes/Old Disk</string>
	</dict>
	<dict>
		<key>MonitorPresence</key>
		<false/>
		<key>MonitorUsage</key>
		<false/>
		<key>Own_Note</key>
		<string>in the safe</string>
		<key>PresenceThreshold</key>
		<integer>5</integer>
		<key>UsageThreshold</key>
		<integer>90</integer>
		<key>VolumeName</key>
		<string>Backup</string>
		<key>VolumePath</key>
		<string>/Volumes/Backup</string>
	</dict>
</array>
)");
inline const std::string kVolumesAfter = plist(R"(<array>
	<dict>
		<key>MonitorPresence</key>
		<true/>
		<key>MonitorUsage</key>
		<true/>
		<key>Own_Note</key>
		<string>in the safe</string>
		<key>PresenceThreshold</key>
		<integer>15</integer>
		<key>UsageThreshold</key>
		<integer>80</integer>
		<key>VolumeName</key>
		<string>Backup</string>
		<key>VolumePath</key>
		<string>/Volumes/Backup</string>
	</dict>
	<dict>
		<key>MonitorPresence</key>
		<false/>
		<key>MonitorUsage</key>
		<false/>
		<key>PresenceThreshold</key>
		<integer>5</integer>
		<key>UsageThreshold</key>
		<integer>90</integer>
		<key>VolumeName</key>
		<string>Media</string>
		<key>VolumePath</key>
		<string>/Volumes/Media</string>
	</dict>
	<dict>
		<key>MonitorPresence</key>
		<true/>
		<key>MonitorUsage</key>
		<false/>
		<key>PresenceThreshold</key>
		<integer>30</integer>
		<key>UsageThreshold</key>
		<integer>95</integer>
		<key>VolumeName</key>
		<string>Old Disk</string>
		<key>VolumePath</key>
		<string>/Volumes/Old Disk</string>
	</dict>
</array>
)");

// As the system's own preferences service keeps files, in the binary form; the values are 3, 10, false, "9",
// "kept" and false under the keys of the text below.
inline constexpr std::string_view kTimeMachineBefore(
    "\142\160\154\151\163\164\060\060\326\001\002\003\004\005\006\007\010\011\012\013"
    "\011\137\020\025\104\141\171\163\137\125\156\164\151\154\137\115\141\156\165\141"
    "\154\137\122\165\156\137\020\022\104\141\171\163\137\125\156\164\151\154\137\127"
    "\141\162\156\151\156\147\137\020\021\105\156\141\142\154\145\137\117\156\137\122"
    "\145\155\157\166\141\154\137\020\017\115\141\156\165\141\154\137\122\165\156\137"
    "\110\157\165\162\127\117\167\156\137\113\145\171\136\120\154\165\147\151\156\137"
    "\105\156\141\142\154\145\144\020\003\020\012\010\121\071\124\153\145\160\164\010"
    "\025\055\102\126\150\160\177\201\203\204\206\000\000\000\000\000\000\001\001\000"
    "\000\000\000\000\000\000\014\000\000\000\000\000\000\000\000\000\000\000\000\000"
    "\000\000\213",
    183);
inline const std::string kTimeMachineAfter = plist(R"(<dict>
	<key>Days_Until_Manual_Run</key>
	<integer>5</integer>
	<key>Days_Until_Warning</key>
	<integer>21</integer>
	<key>Enable_On_Removal</key>
	<true/>
	<key>Manual_Run_Hour</key>
	<string>19</string>
	<key>Own_Key</key>
	<string>kept</string>
	<key>Plugin_Enabled</key>
	<true/>
</dict>
)");

inline const std::string kRootCapacityBefore = plist(R"(<dict>
	<key>Capacity_Threshold</key>
	<integer>90</integer>
	<key>Own_Key</key>
	<array>
		<string>kept</string>
	</array>
	<key>Plugin_Enabled</key>
	<true/>
</dict>
)");
inline const std::string kRootCapacityAfter = plist(R"(<dict>
	<key>Capacity_Threshold</key>
	<integer>85</integer>
	<key>Own_Key</key>
	<array>
		<string>kept</string>
	</array>
	<key>Plugin_Enabled</key>
	<true/>
</dict>
)");

// There is none before.
inline const std::string kAutoDiskMountAfter = plist(R"(<dict>
	<key>AutomountDisksWithoutUserLogin</key>
	<true/>
</dict>
)");

struct Option {
  std::string_view type;
  std::string_view key;
  std::string_view value = {};  // of the type, as XML
  std::string_view storage = "/Library/Corvane/PluginSupport/check_web.plist";
};
/// The options of the plug-in, in the order of its rows.
inline constexpr Option kOptions[] = {
    {"Checkbox", "Verify", "<string>Positive</string>"},
    {"PopUpMenu", "Mode", "<array><string>off</string><string>fast</string><string>full</string></array>"},
    {"NumberPicker", "Level", "<string>1-10</string>"},
    {"TextField", "Site", "<integer>40</integer>"},
    {"Checkboxes", "Networks"},
    {"FileArray", "Files"},
    {"PasswordField", "Password", "<integer>20</integer>", "/var/root/Library/Preferences/check_web.plist"},
    {"PluginValidation", "None"},
};
inline std::string pluginDefinition() {
  std::string options;
  for (const Option& option : kOptions) {
    const auto text = [](std::string_view value) { return "<string>" + std::string(value) + "</string>"; };
    const std::string value = option.value.empty() ? "" : "<key>Value</key>" + std::string(option.value);
    options += "<dict><key>SettingTitle</key>" + text(option.key) + "<key>SettingTitleHint</key>" + text("") +
               "<key>SettingStorageKey</key>" + text(option.key) + "<key>SettingStoragePath</key>" +
               text(option.storage) + "<key>SettingType</key><dict><key>Type</key>" + text(option.type) +
               value + "</dict></dict>\n";
  }
  return plist(
      "<dict><key>PluginName</key><string>Web</string><key>ProgramArguments</key><array>"
      "<string>check_web</string><string>--verbose</string></array><key>PluginOptions</key><array>" +
      options + "</array></dict>");
}
inline constexpr std::string_view kPluginProgram =
    "#!/bin/sh\necho \"0,uid $(id -u), arguments $*, mask $(umask)\"\n";

inline const std::string kPluginStorageBefore = plist(R"(<dict>
	<key>Files</key>
	<array>
		<string>Add a new entry</string>
	</array>
	<key>Level</key>
	<integer>3</integer>
	<key>Mode</key>
	<integer>0</integer>
	<key>Networks</key>
	<dict>
		<key>home</key>
		<false/>
		<key>work</key>
		<true/>
	</dict>
	<key>Own_Key</key>
	<date>2001-01-01T00:00:00Z</date>
	<key>Site</key>
	<string></string>
	<key>Verify</key>
	<false/>
</dict>
)");
inline const std::string kPluginStorageAfter = plist(R"(<dict>
	<key>Files</key>
	<array>
		<string>Add a new entry</string>
		<string>/Users/admin/hosts.txt</string>
	</array>
	<key>Level</key>
	<integer>7</integer>
	<key>Mode</key>
	<integer>2</integer>
	<key>Networks</key>
	<dict>
		<key>home</key>
		<true/>
		<key>work</key>
		<true/>
	</dict>
	<key>Own_Key</key>
	<date>2001-01-01T00:00:00Z</date>
	<key>Site</key>
	<string>https://intern.example.com/?a=1&amp;b=2</string>
	<key>Verify</key>
	<true/>
</dict>
)");
// There is none before.
inline const std::string kRootHomeStorageAfter = plist(R"(<dict>
	<key>Password</key>
	<string>s3cr&amp;t</string>
</dict>
)");

inline const std::string kPluginSettingsBefore = plist(R"(<dict>
	<key>Own_Key</key>
	<integer>1</integer>
	<key>Plugin_Enabled</key>
	<true/>
	<key>PrefPaneVisibility</key>
	<true/>
</dict>
)");
inline const std::string kPluginSettingsAfter = plist(R"(<dict>
	<key>Own_Key</key>
	<integer>1</integer>
	<key>Plugin_Enabled</key>
	<false/>
	<key>PrefPaneVisibility</key>
	<true/>
</dict>
)");

}  // namespace corvane::test::administrator

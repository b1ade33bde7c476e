// Keys of the client's own settings files, each defined once. (Keys of plug-in definitions stand with the
// plug-ins tab, keys of volume entries with the options tab.)
#pragma once

namespace corvane::client_key {

// ClientSettings.plist and its backup; values are strings unless said otherwise.
inline constexpr const char* kGreeting = "Branding_PrefPane_Greeting";
inline constexpr const char* kSupportAddress = "Support_Address";
inline constexpr const char* kClientVersion = "Client_Version";
inline constexpr const char* kServerAddress = "Server_Address";
inline constexpr const char* kQuorlenId = "QuorlenID";
inline constexpr const char* kClientId = "ClientID";  // older name of the identifier
inline constexpr const char* kClientGroup = "ClientGroup";
inline constexpr const char* kDateClientRun = "Date_Client_Run";  // date
inline constexpr const char* kRunInterval = "Run_Interval";       // integer, hours, 1 to 6

// UpdateStatus.plist
inline constexpr const char* kDateLastChecked = "Date_Last_Checked";  // date

// autodiskmount.plist of the system
inline constexpr const char* kAutomountDisks = "AutomountDisksWithoutUserLogin";  // boolean

// Settings files of checks
inline constexpr const char* kPluginEnabled = "Plugin_Enabled";  // boolean

}  // namespace corvane::client_key

// Keys of the settings files of the Time Machine check and of the startup-disk check. Both are switched on by
// "Plugin_Enabled", which stands with the client's keys.
#pragma once

namespace corvane {

namespace time_machine_key {
inline constexpr const char* kDaysUntilWarning = "Days_Until_Warning";  // integer, 1 to 99
/// A string that holds a decimal number, 0 to 23, where the other numbers are integers: the client reads it
/// so.
inline constexpr const char* kManualRunHour = "Manual_Run_Hour";
inline constexpr const char* kDaysUntilManualRun = "Days_Until_Manual_Run";  // integer
inline constexpr const char* kEnableOnRemoval = "Enable_On_Removal";         // boolean
}  // namespace time_machine_key

namespace root_capacity_key {
inline constexpr const char* kCapacityThreshold = "Capacity_Threshold";  // integer, percent, 1 to 99
}  // namespace root_capacity_key

}  // namespace corvane

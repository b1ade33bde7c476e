// Keys of one volume entry of check_volumes_settings.plist, and what a new entry holds under them.
#pragma once

#include <cstdint>

namespace corvane::volume_key {

inline constexpr const char* kName = "VolumeName";                      // string
inline constexpr const char* kPath = "VolumePath";                      // string, the mount point
inline constexpr const char* kMonitorPresence = "MonitorPresence";      // boolean
inline constexpr const char* kPresenceThreshold = "PresenceThreshold";  // integer, minutes of absence
inline constexpr const char* kMonitorUsage = "MonitorUsage";            // boolean
inline constexpr const char* kUsageThreshold = "UsageThreshold";        // integer, percent

inline constexpr std::int32_t kNewPresenceThreshold = 5;
inline constexpr std::int32_t kNewUsageThreshold = 90;

}  // namespace corvane::volume_key

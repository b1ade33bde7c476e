// Keys of the disk journal, which the client's disk-journal daemon writes, and of the volume descriptions in
// it.
#pragma once

namespace corvane::journal_key {

inline constexpr const char* kDevices =
    "Devices";  // device identifier to array of descriptions, oldest first
inline constexpr const char* kMountedDevices = "CurrentlyMountedVolumeDevices";  // array of identifiers

inline constexpr const char* kVolumeName = "DAVolumeName";  // string
inline constexpr const char* kVolumePath = "DAVolumePath";  // string, the mount point
inline constexpr const char* kVolumeKind = "DAVolumeKind";  // string, the file system
inline constexpr const char* kMediaSize = "DAMediaSize";    // number, bytes

}  // namespace corvane::journal_key

// Reading of inotify descriptors.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include <sys/inotify.h>

namespace corvane {

struct InotifyEvent {
  int watch = -1;
  std::uint32_t mask = 0;
  std::string_view name;  // of the entry of a watched folder; empty for the watched thing itself
};

/// Reads what waits on the non-blocking descriptor, in the order in which it happened; at most one buffer of
/// it, so that a storm of events does not keep the run loop from everything else. The rest makes the
/// descriptor readable again.
void readInotifyEvents(int descriptor, const std::function<void(const InotifyEvent&)>& handle);

}  // namespace corvane

#include "platform/linux/InotifyEvents.h"

#include <array>
#include <cerrno>
#include <cstring>

#include <unistd.h>

namespace corvane {

void readInotifyEvents(int descriptor, const std::function<void(const InotifyEvent&)>& handle) {
  alignas(inotify_event) std::array<char, 65536> buffer;
  ssize_t count = -1;
  do {
    count = ::read(descriptor, buffer.data(), buffer.size());
  } while (count < 0 && errno == EINTR);
  if (count <= 0) return;
  // The kernel hands out whole events; each is followed by its name, padded with NULs.
  for (std::size_t at = 0; at + sizeof(inotify_event) <= static_cast<std::size_t>(count);) {
    inotify_event event{};
    std::memcpy(&event, buffer.data() + at, sizeof event);
    const char* name = buffer.data() + at + sizeof event;
    handle({event.wd, event.mask, std::string_view(name, ::strnlen(name, event.len))});
    at += sizeof event + event.len;
  }
}

}  // namespace corvane

#include "platform/linux/MountTable.h"

#include <array>
#include <cerrno>
#include <sstream>

#include <fcntl.h>
#include <sys/epoll.h>
#include <unistd.h>

#include "values/Text.h"

namespace corvane {
namespace {

std::string wholeText(int file) {
  std::string text;
  std::array<char, 16384> buffer{};
  ::lseek(file, 0, SEEK_SET);
  for (;;) {
    const ssize_t count = ::read(file, buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return text;
    text.append(buffer.data(), static_cast<std::size_t>(count));
  }
}

/// The kernel writes blanks, tabs, line breaks and backslashes as a backslash and three octal digits.
std::string unescaped(const std::string& field) {
  std::string text;
  for (std::size_t i = 0; i < field.size(); ++i) {
    if (field[i] == '\\' && i + 3 < field.size()) {
      text += static_cast<char>(std::stoi(field.substr(i + 1, 3), nullptr, 8));
      i += 3;
    } else {
      text += field[i];
    }
  }
  return text;
}

/// The rest of a line behind the mount point: options, then a dash, the kind of file system, and what is
/// mounted.
std::string sourceOf(std::istringstream& fields) {
  std::string field;
  while (fields >> field && field != "-") {
  }
  std::string kind, source;
  fields >> kind >> source;
  return source;
}

}  // namespace

MountTable::MountTable(const char* file)
    : table_(::open(file, O_RDONLY | O_CLOEXEC)), changes_(::epoll_create1(EPOLL_CLOEXEC)) {
  // The table itself can always be read and tells of changes as urgent data, which no run loop waits for.
  epoll_event urgent{};
  urgent.events = EPOLLPRI;
  if (!table_ || ::epoll_ctl(changes_.get(), EPOLL_CTL_ADD, table_.get(), &urgent) != 0) changes_.reset();
  read();
}

void MountTable::read() {
  epoll_event taken{};
  if (changes_) ::epoll_wait(changes_.get(), &taken, 1, 0);
  mounts_.clear();
  std::istringstream lines(wholeText(table_.get()));
  for (std::string line; std::getline(lines, line);) {
    std::istringstream fields(line);
    std::string number, parent, device, root, point;
    if (!(fields >> number >> parent >> device >> root >> point)) continue;
    point = unescaped(point);
    mounts_.insert({number, deletingLastPathComponent(point), point, sourceOf(fields).starts_with("/dev/")});
  }
}

std::vector<std::string> MountTable::disks() const {
  std::set<std::string> points;
  for (const Mount& mount : mounts_) {
    if (mount.isOnDevice) points.insert(mount.point);
  }
  return {points.begin(), points.end()};
}

std::set<std::string> MountTable::mountsIn(const std::string& folder) const {
  std::set<std::string> numbers;
  for (const Mount& mount : mounts_) {
    if (mount.folder == folder) numbers.insert(mount.number);
  }
  return numbers;
}

}  // namespace corvane

// Streams of directory changes and queues for one path over the real kernel, while folders, files and links
// come, go and take each other's place. What the kernel tells is handed on as it is, or (the target stands in
// for `read`) out of order, twice, in part, not at all, with watches and names that nobody asked for, or as
// an overflow. Nothing may end the program; and from an overflow on, which is what the kernel says when it
// has lost something, every change is reported again.
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <poll.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include "TakeByte.h"
#include "platform/linux/LinuxDirectoryEvents.h"
#include "platform/linux/LinuxFileEventQueues.h"
#include "support/VirtualRunLoop.h"

namespace {

/// What the next read answers in the place of the kernel, which is asked first. Null: what the kernel said.
std::function<std::vector<char>(std::vector<char> said)> standIn;

}  // namespace

extern "C" ssize_t __real_read(int descriptor, void* buffer, std::size_t size);
extern "C" ssize_t __wrap_read(int descriptor, void* buffer, std::size_t size) {
  const ssize_t count = __real_read(descriptor, buffer, size);
  if (!standIn) return count;
  const auto answer = std::exchange(standIn, nullptr);
  const char* bytes = static_cast<const char*>(buffer);
  const std::vector<char> told = answer({bytes, bytes + std::max<ssize_t>(count, 0)});
  const std::size_t length = std::min(size, told.size());
  std::copy_n(told.begin(), length, static_cast<char*>(buffer));
  if (length > 0) return static_cast<ssize_t>(length);
  errno = EAGAIN;
  return -1;
}

namespace corvane {
namespace {

namespace fs = std::filesystem;
using Event = std::vector<char>;

constexpr std::size_t kMostActs = 120;
constexpr double kLatency = 1;

void require(bool holds, const std::string& what) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", what.c_str());
  std::abort();
}

Event eventFrom(int watch, std::uint32_t mask, std::string_view name) {
  inotify_event head{};
  head.wd = watch;
  head.mask = mask;
  head.len = name.empty() ? 0 : static_cast<std::uint32_t>((name.size() / 16 + 1) * 16);
  Event event(sizeof head + head.len);
  std::memcpy(event.data(), &head, sizeof head);
  std::copy(name.begin(), name.end(), event.begin() + sizeof head);
  return event;
}

std::vector<Event> eventsIn(const std::vector<char>& bytes) {
  std::vector<Event> events;
  for (std::size_t at = 0; at + sizeof(inotify_event) <= bytes.size();) {
    inotify_event head{};
    std::memcpy(&head, bytes.data() + at, sizeof head);
    const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(at);
    events.emplace_back(begin, begin + static_cast<std::ptrdiff_t>(sizeof head + head.len));
    at += sizeof head + head.len;
  }
  return events;
}

std::vector<char> joined(const std::vector<Event>& events) {
  std::vector<char> bytes;
  for (const Event& event : events) bytes.insert(bytes.end(), event.begin(), event.end());
  return bytes;
}

/// A new one for each input, where files cost no disk time.
struct Folder {
  Folder() {
    require(::mkdtemp(path.data()) != nullptr, "no folder");
    path = fs::canonical(path).string();
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() {
    std::error_code error;
    fs::remove_all(path, error);
  }
  std::string path =
      (fs::exists("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path()) / "corvane-fuzz-XXXXXX";
};

struct Log final : SystemLog {
  void write(std::string_view) override {}
};

/// What must be reported when it becomes another: which folder it is, and what of its entries is its own.
std::string lookOf(const fs::path& folder) {
  struct stat status {};
  if (::stat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return {};
  std::set<std::string> entries;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder, error)) {
    struct stat own {};
    if (::lstat(entry.path().c_str(), &own) != 0) continue;
    std::string line = entry.path().filename().string() + ' ' + std::to_string(own.st_ino) + ' ' +
                       std::to_string(own.st_mode);
    if (S_ISREG(own.st_mode)) line += ' ' + std::to_string(own.st_size);
    entries.insert(line);
  }
  std::string look = std::to_string(status.st_dev) + ' ' + std::to_string(status.st_ino);
  for (const std::string& line : entries) look += '\n' + line;
  return look;
}

/// A queue for one path. It calls once each time it is asked to, and for certain when the file that was
/// opened has been written, or has lost its name in a folder that is still the same.
class HeldQueue {
 public:
  HeldQueue(LinuxRunLoop& loop, const std::string& path, FileEventKind kind) : queues_(loop), kind_(kind) {
    auto opened = queues_.openForEvents(path);
    if (!opened.path) return;
    queue_ = queues_.createQueue().queue;
    if (!queue_ || queue_->registerEvent(*opened.path, kind)) {
      queue_.reset();
      return;
    }
    std::error_code error;
    place_ = fs::canonical(path, error);
    file_ = identityOf(place_);
    folder_ = identityOf(place_.parent_path());
    look_ = size();
    static_cast<void>(queue_->wrap([this] {
      require(asked_, "a call that nobody asked for");
      asked_ = false;
      hasCalled_ = true;
    }));
    queue_->enableCallBack();
    static_cast<void>(queue_->addToRunLoop());
  }
  HeldQueue(const HeldQueue&) = delete;
  HeldQueue& operator=(const HeldQueue&) = delete;
  ~HeldQueue() = default;

  void askAgain() {
    if (!queue_) return;
    asked_ = true;
    queue_->enableCallBack();
  }
  /// Notes what only a queue to which nothing is lost must know.
  void changesAreLost() { isBlind_ = true; }
  void check() {
    if (!queue_ || isBlind_ || hasCalled_) return;
    if (kind_ == FileEventKind::Write) {
      require(identityOf(place_) != file_ || size() == look_,
              "a write of " + place_.string() + " is not told");
    } else if (identityOf(place_.parent_path()) == folder_) {
      require(identityOf(place_) == file_, "the loss of " + place_.string() + " is not told");
    } else {
      isBlind_ = true;  // moved with a folder above it: nothing is asked of what comes after
    }
  }

 private:
  using Identity = std::pair<dev_t, ino_t>;
  static Identity identityOf(const fs::path& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 ? Identity{status.st_dev, status.st_ino} : Identity{};
  }
  [[nodiscard]] std::uintmax_t size() const {
    std::error_code error;
    return fs::is_regular_file(place_, error) ? fs::file_size(place_, error) : 0;
  }

  LinuxFileEventQueues queues_;
  FileEventKind kind_;
  std::unique_ptr<FileEventQueue> queue_;
  fs::path place_;
  Identity file_;
  Identity folder_;
  std::uintmax_t look_ = 0;
  bool asked_ = true;
  bool hasCalled_ = false;
  bool isBlind_ = false;
};

class Session {
 public:
  explicit Session(std::string_view input) : input_(input) {
    for (const char* folder : {"/a", "/a/b", "/b/c", "/c", "/a/b/c", "/b"})
      folders_.push_back(root_ + folder);
    for (std::size_t i = byte() % 4; i > 0; --i) changeTree();
    stream_ = events_.createStream(folders_, kLatency, [this](const auto& told) {
      std::set<std::string> batch;
      for (const std::string& folder : told) {
        require(std::ranges::find(folders_, folder) != folders_.end(), folder + " is not watched");
        require(batch.insert(folder).second, folder + " comes twice");
      }
      reported_.merge(batch);
    });
    stream_->scheduleWithRunLoop();
    require(stream_->start(), "no stream");
  }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  ~Session() { standIn = nullptr; }

  void live() {
    for (std::size_t i = 0; i < kMostActs && !input_.empty(); ++i) act();
    overflow();
    for (int i = 0; i < 3; ++i) changeHonestly(2);
  }

 private:
  std::size_t byte() { return fuzz::takeByte(input_); }

  void act() {
    switch (byte() % 8) {
      case 0:
      case 1:
        return changeHonestly(1 + byte() % 4);
      case 2:
        changeTree();
        return pumpWith(hostile());
      case 3:
        return pumpWith(hostile());
      case 4:
        return overflow();
      case 5:
        return loop_.advance(static_cast<double>(byte()) / 128);
      case 6:
        if (queues_.size() < 3) {
          const std::string path = anyPath();
          pump();  // what is told from now on, is told of what comes from now on
          queues_.push_back(std::make_unique<HeldQueue>(
              loop_, path, byte() % 2 == 0 ? FileEventKind::Write : FileEventKind::Disappearance));
        } else {
          queues_.erase(queues_.begin());
        }
        return;
      default:
        for (const auto& queue : queues_) queue->askAgain();
    }
  }

  std::string anyPath() {
    constexpr std::array<const char*, 3> names = {"a", "b", "c"};
    const std::size_t which = byte();
    std::string path = root_ + "/" + names[which % 3];
    if (which / 3 % 3 > 0) path = path + "/" + names[which / 9 % 3];
    if (which / 3 % 3 > 1) path = path + "/" + names[which / 27 % 3];
    return path;
  }

  void changeTree() {
    const std::string path = anyPath();
    std::error_code error;
    switch (byte() % 8) {
      case 0:
      case 1:
        fs::create_directories(path, error);
        return;
      case 2:
        fs::remove_all(path, error);
        return;
      case 3: {
        const std::string other = anyPath();
        fs::rename(path, other, error);
        return;
      }
      case 4: {
        constexpr std::array<const char*, 6> targets = {"a", "../b", "../a/b", "b/c", ".", "a/../c"};
        const std::size_t which = byte() % (targets.size() + 1);
        const std::string target = which < targets.size() ? targets[which] : anyPath();
        fs::create_symlink(target, path, error);
        return;
      }
      case 5:
        fs::permissions(path, fs::perms::others_read,
                        byte() % 2 == 0 ? fs::perm_options::add : fs::perm_options::remove, error);
        return;
      default:
        std::ofstream(path, std::ios::app) << 'x';
    }
  }

  void changeHonestly(std::size_t changes) {
    pump();
    loop_.advance(kLatency);
    std::map<std::string, std::string> before;
    for (const std::string& folder : folders_) before[folder] = lookOf(folder);
    reported_.clear();
    for (std::size_t i = 0; i < changes; ++i) changeTree();
    pump();
    loop_.advance(kLatency);
    for (const auto& queue : queues_) queue->check();
    if (isLossy_) return;
    for (const std::string& folder : folders_) {
      const std::string look = lookOf(folder);
      require(look.empty() || look == before[folder] || reported_.contains(folder),
              "the change of " + folder + " is not reported");
    }
  }

  /// Hands over what waits until nothing does.
  void pump() {
    for (int round = 0; round < 100; ++round) {
      bool any = false;
      for (const int descriptor : loop_.descriptors()) {
        pollfd waiting{descriptor, POLLIN, 0};
        if (::poll(&waiting, 1, 0) <= 0 || waiting.revents == 0) continue;
        any = true;
        loop_.makeReadable(descriptor);
      }
      loop_.advance(0);
      if (!any) return;
    }
    require(false, "events without end");
  }
  /// The same, with the first answer for each descriptor made up.
  void pumpWith(const std::function<std::vector<char>(std::vector<char>)>& answer) {
    for (const int descriptor : loop_.descriptors()) {
      std::error_code error;  // the other kind is the table of mounts
      const fs::path what = fs::read_symlink("/proc/self/fd/" + std::to_string(descriptor), error);
      if (what == "anon_inode:inotify") standIn = answer;
      loop_.makeReadable(descriptor);
      standIn = nullptr;
    }
    pump();
  }

  void overflow() {
    pumpWith([](std::vector<char> said) {
      // What the kernel keeps comes first.
      const Event lost = eventFrom(-1, IN_Q_OVERFLOW, {});
      said.insert(said.end(), lost.begin(), lost.end());
      return said;
    });
    isLossy_ = false;
  }

  std::function<std::vector<char>(std::vector<char>)> hostile() {
    isLossy_ = true;
    for (const auto& queue : queues_) queue->changesAreLost();
    const std::size_t manner = byte();
    std::vector<Event> made;
    for (std::size_t i = 0; i < manner / 8 % 4; ++i) made.push_back(anyEvent());
    return [manner, made](std::vector<char> said) -> std::vector<char> {
      std::vector<Event> events = eventsIn(said);
      switch (manner % 8) {
        case 0:
          return {};
        case 1:
          std::ranges::reverse(events);
          break;
        case 2:
          events.erase(events.begin() + static_cast<std::ptrdiff_t>(events.size() / 2), events.end());
          break;
        case 3: {
          const std::vector<Event> once = events;
          events.insert(events.end(), once.begin(), once.end());
          break;
        }
        case 4: {  // not even whole
          std::vector<char> bytes = joined(events);
          const std::size_t cut = std::min<std::size_t>(bytes.size(), manner / 16);
          bytes.erase(bytes.end() - static_cast<std::ptrdiff_t>(cut), bytes.end());
          return bytes;
        }
        default:
          break;
      }
      events.insert(events.begin() + static_cast<std::ptrdiff_t>(events.size() / 2), made.begin(),
                    made.end());
      return joined(events);
    };
  }
  Event anyEvent() {
    const int watch = static_cast<int>(byte() % 16) - 2;
    const std::size_t which = byte();
    const std::uint32_t mask = (std::uint32_t{1} << which % 32) | (which > 128 ? IN_ISDIR | IN_IGNORED : 0);
    constexpr std::array<std::string_view, 5> names = {"", "a", "b", "c",
                                                       "another name of more than sixteen bytes"};
    return eventFrom(watch, mask, names[byte() % names.size()]);
  }

  std::string_view input_;
  Folder folder_;
  const std::string& root_ = folder_.path;
  std::vector<std::string> folders_;
  test::VirtualRunLoop loop_;
  Log log_;
  LinuxDirectoryEvents events_{loop_, log_};
  std::set<std::string> reported_;
  bool isLossy_ = false;
  std::unique_ptr<DirectoryEventStream> stream_;
  std::vector<std::unique_ptr<HeldQueue>> queues_;
};

}  // namespace
}  // namespace corvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  corvane::Session session(std::string_view(reinterpret_cast<const char*>(data), size));
  session.live();
  return 0;
}

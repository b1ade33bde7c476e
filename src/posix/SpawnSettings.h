// What a program that the pane starts as the user finds: the given standard streams and no other descriptor,
// no signal ignored or blocked.
#pragma once

#include <spawn.h>

namespace corvane {

class SpawnSettings {
 public:
  /// Descriptors above the standard streams; a negative one is /dev/null. Not given, the messages go to our
  /// own standard error.
  struct Streams {
    int input = -1;
    int output = -1;
    int errors = 2;
  };
  /// With a process group of its own, the program and what it starts can be ended at once.
  enum class Group { Ours, ItsOwn };

  SpawnSettings(Streams streams, Group group);
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;
  ~SpawnSettings();

  [[nodiscard]] const posix_spawn_file_actions_t* actions() const { return &actions_; }
  [[nodiscard]] const posix_spawnattr_t* attributes() const { return &attributes_; }

 private:
  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
};

}  // namespace corvane

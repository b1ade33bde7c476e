#include "posix/SpawnSettings.h"

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

#include "posix/Differences.h"

namespace corvane {

SpawnSettings::SpawnSettings(Streams streams, Group group) {
  ::posix_spawn_file_actions_init(&actions_);
  const auto give = [this](int descriptor, int stream) {
    if (descriptor < 0) {
      ::posix_spawn_file_actions_addopen(&actions_, stream, "/dev/null", O_RDWR, 0);
    } else {
      ::posix_spawn_file_actions_adddup2(&actions_, descriptor, stream);
    }
  };
  give(streams.input, STDIN_FILENO);
  give(streams.output, STDOUT_FILENO);
  if (streams.errors != STDERR_FILENO) give(streams.errors, STDERR_FILENO);
  const int onlyStreams = keepStandardStreamsOnly(actions_);

  ::posix_spawnattr_init(&attributes_);
  sigset_t none;
  sigset_t all;
  sigemptyset(&none);
  sigfillset(&all);
  ::posix_spawnattr_setsigmask(&attributes_, &none);
  ::posix_spawnattr_setsigdefault(&attributes_, &all);
  ::posix_spawnattr_setpgroup(&attributes_, 0);
  const int ownGroup = group == Group::ItsOwn ? POSIX_SPAWN_SETPGROUP : 0;
  ::posix_spawnattr_setflags(&attributes_, static_cast<short>(POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF |
                                                              ownGroup | onlyStreams));
}

SpawnSettings::~SpawnSettings() {
  ::posix_spawn_file_actions_destroy(&actions_);
  ::posix_spawnattr_destroy(&attributes_);
}

}  // namespace corvane

#include "Interruption.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace corvane::cli {
namespace {

constexpr std::array<int, 3> kSignals = {SIGINT, SIGTERM, SIGHUP};

// What a handler can reach.
std::atomic<int> first = 0;
std::atomic<int> wakeUp = -1;

void note(int number) {
  int none = 0;
  first.compare_exchange_strong(none, number);
  const int before = errno;
  const char byte = 0;
  if (::write(wakeUp, &byte, 1) < 0) errno = before;  // full already: it wakes all the same
}

}  // namespace

Interruption::Interruption() {
  (void)::fcntl(pipe_.writeEnd.get(), F_SETFL, O_NONBLOCK);
  wakeUp = pipe_.writeEnd.get();
  for (const int number : kSignals) {
    struct sigaction inherited {};
    (void)::sigaction(number, nullptr, &inherited);
    // A signal that whoever started the program has switched off (nohup, a job in the background) stays off.
    if (inherited.sa_handler == SIG_IGN) continue;
    struct sigaction action {};
    action.sa_handler = note;
    action.sa_flags = SA_RESTART;
    (void)::sigaction(number, &action, nullptr);
  }
}

Interruption::~Interruption() { wakeUp = -1; }

int Interruption::signal() const { return first; }

bool Interruption::waitReadable(int other) const {
  std::array<pollfd, 2> waited{{{other, POLLIN, 0}, {pipe_.readEnd.get(), POLLIN, 0}}};
  for (;;) {
    if (*this) return false;
    if (::poll(waited.data(), waited.size(), -1) < 0 && errno != EINTR) return true;
    if (waited[0].revents != 0) return true;
  }
}

}  // namespace corvane::cli

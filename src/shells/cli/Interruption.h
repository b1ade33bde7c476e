// The wish of whoever started the program that it end: an interrupt, a termination, a terminal that was
// closed. None of them ends the process by itself, so that a write that has begun is brought to its end and
// leaves nothing behind. Exactly one lives, in `main`.
#pragma once

#include "posix/Pipe.h"

namespace corvane::cli {

class Interruption {
 public:
  Interruption();
  ~Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;

  /// The signal that came first; 0 while none has come.
  [[nodiscard]] int signal() const;
  [[nodiscard]] explicit operator bool() const { return signal() != 0; }
  /// Can be read once a signal has come.
  [[nodiscard]] int descriptor() const { return pipe_.readEnd.get(); }
  /// Waits until the other descriptor can be read; false when a signal came first.
  [[nodiscard]] bool waitReadable(int other) const;

 private:
  Pipe pipe_ = makePipe();
};

}  // namespace corvane::cli

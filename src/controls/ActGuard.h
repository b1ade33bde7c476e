// Holds an act of the user while it is being carried out. What it does may wait in an event loop of its own,
// for a panel or for a program that runs as root; a second click that comes meanwhile must not begin it
// again.
#pragma once

namespace corvane {

class ActGuard {
 public:
  /// `isActing` must outlive the guard; it is false when no act is being carried out.
  explicit ActGuard(bool& isActing) : isActing_(isActing) { isActing_ = true; }
  ActGuard(const ActGuard&) = delete;
  ActGuard& operator=(const ActGuard&) = delete;
  ~ActGuard() { isActing_ = false; }

 private:
  bool& isActing_;
};

}  // namespace corvane

// Lives while an act of the user is being carried out. The act may wait in an event loop of its own, for a
// panel or for a program that runs as root; a second click that comes meanwhile must not begin it again.
#pragma once

namespace corvane {

class ActInProgress {
 public:
  /// `isActing` must outlive this; it is false when no act is being carried out.
  explicit ActInProgress(bool& isActing) : isActing_(isActing) { isActing_ = true; }
  ActInProgress(const ActInProgress&) = delete;
  ActInProgress& operator=(const ActInProgress&) = delete;
  ~ActInProgress() { isActing_ = false; }

 private:
  bool& isActing_;
};

}  // namespace corvane

// Timers and readable descriptors of the application's event loop, which also runs while a menu is tracked or
// a modal panel is open.
#pragma once

#include <QObject>

#include "platform/linux/LinuxRunLoop.h"

namespace corvane::qt {

class QtRunLoop final : public LinuxRunLoop {
 public:
  [[nodiscard]] std::unique_ptr<Source> scheduleTimer(double interval, bool repeats,
                                                      std::function<void()> fire) override;
  [[nodiscard]] std::unique_ptr<Source> watchDescriptor(int descriptor,
                                                        std::function<void()> readable) override;

 private:
  QObject owner_;  // of what ended but waits for the event loop to delete it
};

}  // namespace corvane::qt

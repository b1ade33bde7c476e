#include "services/QtRunLoop.h"

#include <QPointer>
#include <QSocketNotifier>
#include <QTimer>
#include <algorithm>
#include <cmath>
#include <limits>

namespace corvane::qt {
namespace {

void end(QTimer& timer) { timer.stop(); }
void end(QSocketNotifier& notifier) { notifier.setEnabled(false); }

/// Ends its object at once and leaves the deletion to the event loop: the object may be the one that is
/// calling back now.
template <typename Object>
class QtSource final : public RunLoop::Source {
 public:
  explicit QtSource(Object* object) : object_(object) {}
  QtSource(const QtSource&) = delete;
  QtSource& operator=(const QtSource&) = delete;
  ~QtSource() override {
    if (!object_) return;  // the loop has gone first
    end(*object_);
    object_->disconnect();
    object_->deleteLater();
  }

 private:
  QPointer<Object> object_;
};

int milliseconds(double seconds) {
  constexpr double kMost = std::numeric_limits<int>::max();
  return static_cast<int>(std::lround(std::clamp(seconds * 1000, 0.0, kMost)));
}

}  // namespace

std::unique_ptr<RunLoop::Source> QtRunLoop::scheduleTimer(double interval, bool repeats,
                                                          std::function<void()> fire) {
  auto* timer = new QTimer(&owner_);
  timer->setTimerType(Qt::PreciseTimer);
  timer->setSingleShot(!repeats);
  QObject::connect(timer, &QTimer::timeout, timer, std::move(fire));
  timer->start(milliseconds(interval));
  return std::make_unique<QtSource<QTimer>>(timer);
}

std::unique_ptr<RunLoop::Source> QtRunLoop::watchDescriptor(int descriptor, std::function<void()> readable) {
  auto* notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read, &owner_);
  QObject::connect(notifier, &QSocketNotifier::activated, notifier, std::move(readable));
  return std::make_unique<QtSource<QSocketNotifier>>(notifier);
}

}  // namespace corvane::qt

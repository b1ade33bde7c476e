// The dialogs that the pane is given: alerts wait their turn in one queue with the other sheets of the pane's
// window, so that a platform shows one sheet at a time. The assembly puts it before the platform's dialogs.
//
// An alert that only tells something (one button and nothing to fill in) and is open or waiting already is
// not shown again: its end is the end of them all.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "controls/Window.h"
#include "platform/Dialogs.h"
#include "platform/LateCalls.h"

namespace corvane {

class SheetQueue final : public Dialogs {
 public:
  /// Both must outlive the queue.
  SheetQueue(Dialogs& platform, Window& window);
  SheetQueue(const SheetQueue&) = delete;
  SheetQueue& operator=(const SheetQueue&) = delete;
  ~SheetQueue() override;

  void beginSheet(const AlertDescription& alert, SheetWindow window,
                  std::function<void(const AlertResult&)> ended) override;
  AlertResult runModalAlert(const AlertDescription& alert) override { return platform_.runModalAlert(alert); }
  [[nodiscard]] std::vector<std::string> runOpenPanel(const OpenPanelDescription& panel) override {
    return platform_.runOpenPanel(panel);
  }

 private:
  struct Alert {
    AlertDescription description;
    SheetWindow place;
    std::vector<std::function<void(const AlertResult&)>> ended;
    Window sheet;  // holds the alert's place in the queue of the window
    bool isShown = false;
  };
  void showNext();
  void end(const Alert& alert, const AlertResult& result);

  Dialogs& platform_;
  Window& window_;
  std::vector<std::unique_ptr<Alert>> alerts_;  // the open one and those that wait
  LateCalls calls_;
};

}  // namespace corvane

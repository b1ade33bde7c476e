#include "pane/SheetQueue.h"

#include <algorithm>
#include <utility>

namespace corvane {
namespace {

bool onlyTells(const AlertDescription& alert) { return alert.buttons.size() == 1 && !alert.accessory; }

}  // namespace

SheetQueue::SheetQueue(Dialogs& platform, Window& window) : platform_(platform), window_(window) {
  window_.onSheetChange = [this] { showNext(); };
}

SheetQueue::~SheetQueue() { window_.onSheetChange = nullptr; }

void SheetQueue::beginSheet(const AlertDescription& alert, SheetWindow window,
                            std::function<void(const AlertResult&)> ended) {
  for (const auto& told : alerts_) {
    if (told->description != alert || !onlyTells(alert)) continue;
    told->ended.push_back(std::move(ended));
    return;
  }
  alerts_.push_back(std::make_unique<Alert>());
  Alert& added = *alerts_.back();
  added.description = alert;
  added.place = window;
  added.ended.push_back(std::move(ended));
  window_.beginSheet(added.sheet);
}

void SheetQueue::showNext() {
  const auto open = std::ranges::find_if(
      alerts_, [this](const auto& alert) { return &alert->sheet == window_.attachedSheet(); });
  if (open == alerts_.end() || (*open)->isShown) return;
  Alert& alert = **open;
  alert.isShown = true;
  platform_.beginSheet(alert.description, alert.place,
                       calls_.wrap([this, &alert](const AlertResult& result) { end(alert, result); }));
}

/// What hears of the end may begin the next sheet, which then comes after those that wait already.
void SheetQueue::end(const Alert& alert, const AlertResult& result) {
  const auto place = std::ranges::find_if(alerts_, [&](const auto& each) { return each.get() == &alert; });
  if (place == alerts_.end()) return;
  const std::unique_ptr<Alert> over = std::move(*place);
  alerts_.erase(place);
  for (const auto& ended : over->ended) {
    if (ended) ended(result);
  }
  window_.endSheet(over->sheet);
}

}  // namespace corvane

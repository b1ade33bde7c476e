#import "services/SheetStage.h"

#import "binders/Target.h"

namespace corvane::appkit {

void SheetStage::add(std::shared_ptr<Sheet> sheet) {
  waiting_.push_back(std::move(sheet));
  resume();
}

void SheetStage::resume() {
  callSoon(calls_.wrap([this] { beginNext(); }));
}

void SheetStage::beginNext() {
  if (open_ || waiting_.empty()) return;
  NSWindow* parent = window_();
  if (parent == nil || ![parent isVisible] || [parent attachedSheet] != nil) return;
  open_ = std::move(waiting_.front());
  waiting_.pop_front();
  const std::shared_ptr<Sheet> sheet = open_;  // it may end inside the call
  sheet->begin(parent);
}

void SheetStage::ended(const Sheet& sheet) {
  if (open_.get() != &sheet) return;
  const std::shared_ptr<Sheet> ended = std::move(open_);
  open_ = nullptr;
  callSoon([ended] {});  // it lives until its own calls have returned
  resume();
}

bool SheetStage::withdraw(const Sheet& sheet) {
  return std::erase_if(waiting_, [&](const auto& waiting) { return waiting.get() == &sheet; }) > 0;
}

}  // namespace corvane::appkit

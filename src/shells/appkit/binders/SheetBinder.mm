#import "binders/SheetBinder.h"

#import "Text.h"

@interface CorvaneSheetEnd : NSObject {
 @public
  std::function<void()> ended_;
}
- (void)sheetDidEnd:(NSWindow*)sheet returnCode:(NSInteger)code contextInfo:(void*)info;
@end

@implementation CorvaneSheetEnd

- (void)sheetDidEnd:(NSWindow*)sheet returnCode:(NSInteger)code contextInfo:(void*)info {
  [sheet orderOut:nil];
  const std::function<void()> ended = ended_;
  if (ended) ended();
}

@end

namespace corvane::appkit {

class SheetBinder::OpenSheet final : public SheetStage::Sheet {
 public:
  OpenSheet(SheetStage& queue, NSPanel* panel)
      : queue_(queue), panel_([panel retain]), end_([CorvaneSheetEnd new]) {
    end_->ended_ = [this] { queue_.ended(*this); };
  }
  ~OpenSheet() override {
    end_->ended_ = nullptr;
    [end_ release];
    [panel_ release];
  }
  void begin(NSWindow* parent) override {
    [panel_ makeFirstResponder:[panel_ initialFirstResponder]];
    // Nothing may follow this call: on one system it returns at once, on the other when the sheet has ended.
    [NSApp beginSheet:panel_
        modalForWindow:parent
         modalDelegate:end_
        didEndSelector:@selector(sheetDidEnd:returnCode:contextInfo:)
           contextInfo:nullptr];
  }
  void close() {
    [panel_ makeFirstResponder:nil];
    [NSApp endSheet:panel_];
  }

 private:
  SheetStage& queue_;
  NSPanel* panel_;
  CorvaneSheetEnd* end_;
};

SheetBinder::SheetBinder(Window& sheet, NSPanel* panel, SheetStage& queue)
    : sheet_(sheet), panel_([panel retain]), queue_(queue) {
  sheet_.onChange = [this] { refresh(); };
  refresh();
}

SheetBinder::~SheetBinder() {
  sheet_.onChange = nullptr;
  close();
  [panel_ release];
}

void SheetBinder::refresh() {
  [panel_ setTitle:toNSString(sheet_.title())];
  if (!sheet_.isSheet()) {
    close();
  } else if (shown_ == nullptr) {
    shown_ = std::make_shared<OpenSheet>(queue_, panel_);
    queue_.add(shown_);
  }
}

void SheetBinder::close() {
  const std::shared_ptr<OpenSheet> closed = std::move(shown_);
  shown_ = nullptr;
  if (closed != nullptr && !queue_.withdraw(*closed)) closed->close();
}

}  // namespace corvane::appkit

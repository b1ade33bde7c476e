#import "PaneFrame.h"

#import "Text.h"
#import "binders/AuthorizationViewBinder.h"
#import "binders/TabViewBinder.h"
#import "tabs/ConfigurationPage.h"
#import "tabs/OptionsPage.h"
#import "tabs/PluginsPage.h"
#import "tabs/TimeMachineSheet.h"

namespace corvane::appkit {
namespace {

constexpr CGFloat kHeight = 510;
constexpr CGFloat kMargin = 17;

}  // namespace

PaneFrame::PaneFrame(PaneAssembly& assembly, SheetStage& sheets, NSImage* icon)
    : Page(NSMakeSize(kPaneWidth, kHeight)), pane_(assembly.view()) {
  addHeader();
  addStatus();
  addTabs(assembly, sheets);
  addFooter(icon);
}

PaneFrame::~PaneFrame() { pages_.clear(); }

NSView* PaneFrame::viewOfAny(const Control& control) const {
  if (NSView* found = viewOf(control)) return found;
  for (const auto& page : pages_) {
    if (NSView* found = page->viewOf(control)) return found;
  }
  return nil;
}

void PaneFrame::addHeader() {
  // The room of the header is measured for this font.
  NSFont* font = toNSFont(Font{Font::Family::Arial, 14});
  for (Button* button : {&pane_.greetingButton, &pane_.urlButton}) {
    NSButton* shown = labelButton(*button, toNSRect(button->frame()), kCentered, Placement::Horizontal);
    [shown setFont:font];
  }
}

void PaneFrame::setTabKeys() {
  NSView* tabs = viewOf(pane_.tabView);
  NSView* lock = viewOf(pane_.authView);
  [lock setNextKeyView:viewOf(pane_.quorlenIconButton)];
  [viewOf(pane_.quorlenIconButton) setNextKeyView:viewOf(pane_.urlButton)];
  [viewOf(pane_.urlButton) setNextKeyView:tabs];
  const int shown = pane_.tabView.indexOfSelectedItem();
  if (shown >= 0) pages_[static_cast<std::size_t>(shown)]->setKeysAfter(tabs, lock);
}

// Between header and tabs, in the colour of warnings; the core hides it while all is well.
void PaneFrame::addStatus() {
  NSTextField* status =
      label(pane_.statusField, NSMakeRect(kMargin, 465, kPaneWidth - 2 * kMargin, 15), kCentered);
  [status setFont:smallFont()];
  [status setTextColor:warningTextColor()];
}

void PaneFrame::addFooter(NSImage* icon) {
  CorvaneLockButton* lock =
      [[[CorvaneLockButton alloc] initWithFrame:NSMakeRect(kMargin, 8, 28, 28)] autorelease];
  NSTextField* beside = makeLabel(NSMakeRect(kMargin + 34, 5, 430, 32), kLeftAligned, smallFont());
  put(lock);
  put(beside);
  add(std::make_unique<AuthorizationViewBinder>(pane_.authView, lock, beside));
  [labelButton(pane_.clientVersionButton, NSMakeRect(490, 12, 124, 20), kRightAligned) setFont:smallFont()];
  const CGFloat side = 26;
  const NSRect corner = NSMakeRect(kPaneWidth - kMargin - side, 9, side, side);
  NSButton* shown = labelButton(pane_.quorlenIconButton, corner, kCentered);
  [shown setImage:icon];
  [shown setImagePosition:NSImageOnly];
}

void PaneFrame::addTabs(PaneAssembly& assembly, SheetStage& sheets) {
  NSTabView* tabs = [[[CORVANE_TAB_VIEW alloc] initWithFrame:toNSRect(pane_.tabView.frame())] autorelease];
  [tabs setFont:controlFont()];
  put(tabs);
  const NSSize size = [tabs contentRect].size;
  pages_.push_back(std::make_unique<ConfigurationPage>(assembly.configurationView(), size));
  pages_.push_back(std::make_unique<OptionsPage>(assembly.optionsView(), size));
  pages_.push_back(std::make_unique<PluginsPage>(assembly.pluginsView(), size));
  std::vector<NSView*> views;
  for (const auto& page : pages_) views.push_back(page->view());
  auto binder = std::make_unique<TabViewBinder>(pane_.tabView, tabs, views);
  binder->onShown = [this] { setTabKeys(); };
  add(std::move(binder));
  pages_.push_back(std::make_unique<TimeMachineSheet>(assembly.optionsView(), sheets));
}

}  // namespace corvane::appkit

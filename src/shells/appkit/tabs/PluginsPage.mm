#import "tabs/PluginsPage.h"

#import "binders/OutlineViewBinder.h"

namespace corvane::appkit {

PluginsPage::PluginsPage(PluginsTabView& view, NSSize size) : Page(size) {
  constexpr CGFloat kMargin = 17;
  label(view.pluginsLabel, NSMakeRect(kMargin, size.height - 38, size.width - 2 * kMargin, 20));
  const NSRect frame = NSMakeRect(kMargin, kMargin, size.width - 2 * kMargin, size.height - kMargin - 44);
  const NSRect inside = NSMakeRect(0, 0, NSWidth(frame) - 24, 100);
  CorvaneOutlineTree* tree = [[[CorvaneOutlineTree alloc] initWithFrame:inside] autorelease];
  add(std::make_unique<OutlineViewBinder>(view.pluginsTable, tree));
  scrollView(frame, tree);
}

}  // namespace corvane::appkit

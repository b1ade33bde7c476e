#import "CorvanePrefPane.h"

@implementation CorvanePrefPane

- (id)initWithBundle:(NSBundle*)bundle {
  self = [super initWithBundle:bundle];
  if (self != nil) pane_ = std::make_unique<corvane::appkit::AppKitPane>(bundle);
  return self;
}

// The views are made by code. An interface file would have the pane awake once it is loaded; so does this.
- (NSView*)loadMainView {
  if ([self mainView] != nil) return [self mainView];
  [self setMainView:pane_->frame().view()];
  [self setInitialKeyView:pane_->frame().viewOfAny(pane_->assembly().view().tabView)];
  [self awakeFromNib];
  [self mainViewDidLoad];
  return [self mainView];
}

- (void)awakeFromNib {
  pane_->assembly().awakeFromNib();
}

- (void)mainViewDidLoad {
  pane_->assembly().mainViewDidLoad();
}

- (void)didSelect {
  pane_->frame().setTabKeys();
  pane_->sheets().resume();
}

- (NSPreferencePaneUnselectReply)shouldUnselect {
  return pane_->sheets().isOpen() ? NSUnselectCancel : NSUnselectNow;
}

- (void)willUnselect {
  [[[self mainView] window] makeFirstResponder:nil];  // what is being typed ends
}

- (corvane::appkit::AppKitPane*)pane {
  return pane_.get();
}

@end

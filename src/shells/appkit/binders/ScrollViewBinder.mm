#import "binders/ScrollViewBinder.h"

namespace corvane::appkit {
namespace {

NSScrollElasticity toElasticity(ScrollElasticity elasticity) {
  switch (elasticity) {
    case ScrollElasticity::Automatic:
      break;
    case ScrollElasticity::None:
      return NSScrollElasticityNone;
    case ScrollElasticity::Allowed:
      return NSScrollElasticityAllowed;
  }
  return NSScrollElasticityAutomatic;
}

}  // namespace

ScrollViewBinder::ScrollViewBinder(ScrollView& scrollView, NSScrollView* view)
    : Binder(scrollView, view, Placement::Frame), scrollView_(scrollView), widget_(view) {
  refresh();
}

void ScrollViewBinder::show() {
  [widget_ setHorizontalScrollElasticity:toElasticity(scrollView_.horizontalScrollElasticity())];
  [widget_ setVerticalScrollElasticity:toElasticity(scrollView_.verticalScrollElasticity())];
}

}  // namespace corvane::appkit

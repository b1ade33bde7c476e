#import "AppKitPane.h"

#import "Text.h"

namespace corvane::appkit {
namespace {

NSImage* pictureOf(Bundle& bundle, CGFloat side) {
  NSString* path = toNSString(bundle.pathForResource("Corvane", "icns"));
  NSImage* picture = [[[NSImage alloc] initWithContentsOfFile:path] autorelease];
  [picture setSize:NSMakeSize(side, side)];
  return picture;
}

}  // namespace

AppKitPane::AppKitPane(NSBundle* bundle)
    : bundle_(bundle),
      sheets_([this] { return frame_ != nullptr ? [frame_->view() window] : nil; }),
      dialogs_(sheets_),
      system_(makeSystem({dialogs_, workspace_, bundle_})),
      assembly_(system_->platform(), system_->rootPrefix()) {}

PaneFrame& AppKitPane::frame() {
  if (frame_ == nullptr) frame_ = std::make_unique<PaneFrame>(assembly_, sheets_, pictureOf(bundle_, 26));
  return *frame_;
}

}  // namespace corvane::appkit

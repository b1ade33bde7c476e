// What the product uses of PreferencePanes.
#pragma once
#import <AppKit/AppKit.h>

// https://developer.apple.com/documentation/preferencepanes/nspreferencepane
typedef enum : NSUInteger { NSUnselectCancel = 0, NSUnselectNow = 1 } NSPreferencePaneUnselectReply;
@interface NSPreferencePane : NSObject
@property (readonly) NSBundle* bundle;
@property (readonly) NSPreferencePaneUnselectReply shouldUnselect;
@property NSView* mainView;
@property NSView* initialKeyView;
- (id)initWithBundle:(NSBundle*)bundle;
- (NSView*)loadMainView;
- (void)mainViewDidLoad;
- (void)didSelect;
- (void)willUnselect;
@end

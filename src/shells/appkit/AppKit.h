// The one header that knows against which AppKit the shell is compiled, the one of a Mac or GNUstep's. What
// the two name differently gets one name here; everything else is written once.
#pragma once

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>
#import <PreferencePanes/PreferencePanes.h>

#ifndef __APPLE__
#import "gnustep/GNUstepEntryCell.h"
#import "gnustep/GNUstepOutline.h"
#import "gnustep/GNUstepTabView.h"
#endif

namespace corvane::appkit {

#ifdef __APPLE__
inline constexpr NSAlertStyle kWarningStyle = NSAlertStyleWarning;
inline constexpr NSAlertStyle kInformationalStyle = NSAlertStyleInformational;
inline constexpr NSAlertStyle kCriticalStyle = NSAlertStyleCritical;
inline constexpr NSBezelStyle kRoundedBezel = NSBezelStyleRounded;
inline constexpr NSButtonType kSwitch = NSButtonTypeSwitch;
inline constexpr NSButtonType kMomentaryPushIn = NSButtonTypeMomentaryPushIn;
inline constexpr NSButtonType kMomentaryChange = NSButtonTypeMomentaryChange;
inline constexpr NSInteger kOff = NSControlStateValueOff;
inline constexpr NSInteger kOn = NSControlStateValueOn;
inline constexpr NSInteger kMixed = NSControlStateValueMixed;
inline constexpr NSInteger kPanelOk = NSModalResponseOK;
inline constexpr NSWindowStyleMask kTitled = NSWindowStyleMaskTitled;
inline constexpr NSTextAlignment kLeftAligned = NSTextAlignmentLeft;
inline constexpr NSTextAlignment kCentered = NSTextAlignmentCenter;
inline constexpr NSTextAlignment kRightAligned = NSTextAlignmentRight;

inline NSColor* secondaryTextColor() { return [NSColor secondaryLabelColor]; }
inline NSColor* warningTextColor() { return [NSColor systemRedColor]; }
inline NSColor* linkTextColor() { return [NSColor linkColor]; }
/// The modes in which the pane lives: also while a menu is tracked or a modal panel is open.
inline NSArray* commonModes() { return [NSArray arrayWithObject:NSRunLoopCommonModes]; }
/// Tells assistive technology what a view is called.
inline void setSpokenName(NSView* view, NSString* name) { [view setAccessibilityLabel:name]; }
/// Keeps it from a view that nobody sees.
inline void hideFromSpeech(NSView* view) { [view setAccessibilityElement:NO]; }
#else
inline constexpr NSAlertStyle kWarningStyle = NSWarningAlertStyle;
inline constexpr NSAlertStyle kInformationalStyle = NSInformationalAlertStyle;
inline constexpr NSAlertStyle kCriticalStyle = NSCriticalAlertStyle;
inline constexpr NSBezelStyle kRoundedBezel = NSRoundedBezelStyle;
inline constexpr NSButtonType kSwitch = NSSwitchButton;
inline constexpr NSButtonType kMomentaryPushIn = NSMomentaryPushInButton;
inline constexpr NSButtonType kMomentaryChange = NSMomentaryChangeButton;
inline constexpr NSInteger kOff = NSOffState;
inline constexpr NSInteger kOn = NSOnState;
inline constexpr NSInteger kMixed = NSMixedState;
inline constexpr NSInteger kPanelOk = NSOKButton;
inline constexpr NSUInteger kTitled = NSTitledWindowMask;
inline constexpr NSTextAlignment kLeftAligned = NSLeftTextAlignment;
inline constexpr NSTextAlignment kCentered = NSCenterTextAlignment;
inline constexpr NSTextAlignment kRightAligned = NSRightTextAlignment;

inline NSColor* secondaryTextColor() { return [NSColor darkGrayColor]; }
inline NSColor* warningTextColor() {
  return [NSColor colorWithCalibratedRed:0.75 green:0.1 blue:0.1 alpha:1];
}
inline NSColor* linkTextColor() { return [NSColor colorWithCalibratedRed:0.05 green:0.3 blue:0.8 alpha:1]; }
// A timer that is added for the common modes never fires there; the modes have to be named.
inline NSArray* commonModes() {
  return [NSArray
      arrayWithObjects:NSDefaultRunLoopMode, NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode, nil];
}
inline void setSpokenName(NSView* /*view*/, NSString* /*name*/) {}  // there is no such interface
inline void hideFromSpeech(NSView* /*view*/) {}
#endif

}  // namespace corvane::appkit

// The outline of a Mac has rows of several heights and its triangles where it is told, its tab view takes the
// keyboard, its text cells draw their placeholders. GNUstep declares the protocols of outlines and tab views
// otherwise.
#ifdef __APPLE__
#define CORVANE_OUTLINE_VIEW NSOutlineView
#define CORVANE_TAB_VIEW NSTabView
#define CORVANE_ENTRY_CELL NSTextFieldCell
#define CORVANE_TAB_VIEW_DELEGATE <NSTabViewDelegate>
#define CORVANE_OUTLINE_DELEGATE <NSOutlineViewDataSource, NSOutlineViewDelegate>
#else
#define CORVANE_OUTLINE_VIEW GNUstepOutline
#define CORVANE_TAB_VIEW GNUstepTabView
#define CORVANE_ENTRY_CELL GNUstepEntryCell
#define CORVANE_TAB_VIEW_DELEGATE
#define CORVANE_OUTLINE_DELEGATE
#endif

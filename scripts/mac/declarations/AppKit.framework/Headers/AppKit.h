// What the product uses of AppKit.
#pragma once
#import <Foundation/Foundation.h>

#if defined(__cplusplus)
extern "C" {
#endif

@class NSButtonCell, NSCell, NSClipView, NSMenuItem, NSScrollView, NSColor, NSEvent, NSFont, NSImage, NSMenu, NSOutlineView, NSTableColumn, NSTableHeaderCell, NSTableHeaderView, NSTableView, NSTabView, NSTabViewItem, NSText, NSTextView, NSView, NSWindow;

// https://developer.apple.com/documentation/appkit/nsstandardkeybindingresponding
@protocol NSStandardKeyBindingResponding <NSObject>
@optional
- (void)cancelOperation:(id)sender;
- (void)selectAll:(id)sender;
- (void)complete:(id)sender;
@end

// https://developer.apple.com/documentation/appkit/nsresponder
@interface NSResponder : NSObject <NSStandardKeyBindingResponding>
- (BOOL)becomeFirstResponder;
- (BOOL)resignFirstResponder;
- (void)keyDown:(NSEvent*)event;
- (void)mouseDown:(NSEvent*)event;
@end

// https://developer.apple.com/documentation/objectivec/nsobject/awakefromnib()
@interface NSObject (InterfaceFiles)
- (void)awakeFromNib;
@end

// https://developer.apple.com/documentation/appkit/nsaccessibilityprotocol
@protocol NSAccessibility <NSObject>
- (void)setAccessibilityLabel:(NSString*)label;
- (void)setAccessibilityElement:(BOOL)isElement;
@end

// https://developer.apple.com/documentation/appkit/nsview
@interface NSView : NSResponder <NSAccessibility>
@property (readonly) NSWindow* window;
@property (readonly) NSView* superview;
@property NSRect frame;
@property NSRect bounds;
@property (getter=isHidden) BOOL hidden;
@property BOOL needsDisplay;
@property (readonly, getter=isFlipped) BOOL flipped;
@property (copy) NSString* toolTip;
@property (assign) NSView* nextKeyView;
@property (readonly) NSRect visibleRect;
- (id)initWithFrame:(NSRect)frame;
- (void)addSubview:(NSView*)view;
- (void)removeFromSuperview;
- (void)setFrameOrigin:(NSPoint)origin;
- (void)setFrameSize:(NSSize)size;
- (void)setNeedsDisplayInRect:(NSRect)rect;
- (void)drawRect:(NSRect)rect;
- (void)scrollPoint:(NSPoint)point;
@property (readonly) NSScrollView* enclosingScrollView;
- (NSPoint)convertPoint:(NSPoint)point fromView:(NSView*)view;
@end

// https://developer.apple.com/documentation/appkit/nscontrol
typedef NSInteger NSControlStateValue;
static const NSControlStateValue NSControlStateValueMixed = -1;
static const NSControlStateValue NSControlStateValueOff = 0;
static const NSControlStateValue NSControlStateValueOn = 1;
#if defined(__x86_64__)
typedef enum : NSInteger { NSTextAlignmentLeft = 0, NSTextAlignmentRight = 1, NSTextAlignmentCenter = 2 } NSTextAlignment;
#else
typedef enum : NSInteger { NSTextAlignmentLeft = 0, NSTextAlignmentCenter = 1, NSTextAlignmentRight = 2 } NSTextAlignment;
#endif
@interface NSControl : NSView
@property (assign) id target;
@property SEL action;
@property (getter=isEnabled) BOOL enabled;
@property BOOL refusesFirstResponder;
@property (retain) NSFont* font;
@property NSTextAlignment alignment;
@property (retain) NSFormatter* formatter;
@property (copy) id objectValue;
@property (copy) NSString* stringValue;
@property NSInteger integerValue;
- (void)performClick:(id)sender;
- (NSText*)currentEditor;
- (BOOL)abortEditing;
// deprecated: tables and fields are made of cells here, whose formatters and frames the pane sets
@property (retain) NSCell* cell;
@end

// https://developer.apple.com/documentation/appkit/nscontroltexteditingdelegate
@protocol NSControlTextEditingDelegate <NSObject>
@optional
- (BOOL)control:(NSControl*)control textView:(NSTextView*)view doCommandBySelector:(SEL)selector;
- (void)controlTextDidEndEditing:(NSNotification*)notification;
@end

// https://developer.apple.com/documentation/appkit/nscell
typedef enum : NSUInteger { NSImageOnly = 1, NSImageLeft = 2, NSImageRight = 3 } NSCellImagePosition;
@interface NSCell : NSObject <NSCopying, NSAccessibility>
@property (copy) id objectValue;
@property (copy) NSString* stringValue;
@property NSControlStateValue state;
@property BOOL allowsMixedState;
@property (copy) NSString* title;
@property (retain) NSFont* font;
@property NSTextAlignment alignment;
@property (retain) NSImage* image;
@property (retain) NSFormatter* formatter;
@property (getter=isEnabled) BOOL enabled;
@property (getter=isEditable) BOOL editable;
@property (getter=isSelectable) BOOL selectable;
@property (getter=isBordered) BOOL bordered;
@property (getter=isBezeled) BOOL bezeled;
@property (getter=isScrollable) BOOL scrollable;
@property BOOL refusesFirstResponder;
@property (assign) id target;
@property SEL action;
@property (assign) NSView* controlView;
- (id)initTextCell:(NSString*)text;
- (NSRect)expansionFrameWithFrame:(NSRect)frame inView:(NSView*)view;
@end

// https://developer.apple.com/documentation/appkit/nsactioncell
@interface NSActionCell : NSCell
@end

// https://developer.apple.com/documentation/appkit/nstextfieldcell
@interface NSTextFieldCell : NSActionCell
@property (copy) NSString* placeholderString;
@property (retain) NSColor* textColor;
@property BOOL drawsBackground;
@end

// https://developer.apple.com/documentation/appkit/nsbuttoncell
typedef enum : NSUInteger { NSBezelStyleRounded = 1 } NSBezelStyle;
typedef enum : NSUInteger { NSButtonTypeSwitch = 3, NSButtonTypeMomentaryChange = 5, NSButtonTypeMomentaryPushIn = 7 } NSButtonType;
@interface NSButtonCell : NSActionCell
@property NSBezelStyle bezelStyle;
@property NSCellImagePosition imagePosition;
@property (copy) NSString* keyEquivalent;
@property (copy) NSAttributedString* attributedTitle;
- (void)setButtonType:(NSButtonType)type;
@end

// https://developer.apple.com/documentation/appkit/nsmenuitemcell
@interface NSMenuItemCell : NSButtonCell
@end

// https://developer.apple.com/documentation/appkit/nspopupbuttoncell
@interface NSPopUpButtonCell : NSMenuItemCell
@property (readonly) NSInteger numberOfItems;
@property (readonly) NSInteger indexOfSelectedItem;
@property (retain) NSMenu* menu;
- (id)initTextCell:(NSString*)text pullsDown:(BOOL)pullsDown;
- (void)addItemWithTitle:(NSString*)title;
- (void)removeAllItems;
- (void)selectItemAtIndex:(NSInteger)index;
- (NSString*)itemTitleAtIndex:(NSInteger)index;
- (void)performClickWithFrame:(NSRect)frame inView:(NSView*)view;
@end

// https://developer.apple.com/documentation/appkit/nscomboboxcell
@interface NSComboBoxCell : NSTextFieldCell
@property BOOL completes;
@property (readonly) NSInteger numberOfItems;
@property (readonly) NSInteger indexOfSelectedItem;
- (void)addItemWithObjectValue:(id)value;
- (void)removeAllItems;
- (void)selectItemAtIndex:(NSInteger)index;
@end

// https://developer.apple.com/documentation/appkit/nssecuretextfieldcell
@interface NSSecureTextFieldCell : NSTextFieldCell
@property BOOL echosBullets;
@end

// https://developer.apple.com/documentation/appkit/nsmenu
@interface NSMenu : NSObject
- (void)addItem:(NSMenuItem*)item;
@end

// https://developer.apple.com/documentation/appkit/nsmenuitem
@interface NSMenuItem : NSObject
- (id)initWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)key;
@end

// https://developer.apple.com/documentation/appkit/nsevent
@interface NSEvent : NSObject
@property (readonly, copy) NSString* characters;
@property (readonly) NSPoint locationInWindow;
@end
enum { NSLeftArrowFunctionKey = 0xF702, NSRightArrowFunctionKey = 0xF703 };

// https://developer.apple.com/documentation/appkit/nsbutton
@interface NSButton : NSControl
@property (copy) NSString* title;
@property (copy) NSAttributedString* attributedTitle;
@property (copy) NSString* keyEquivalent;
@property (retain) NSImage* image;
@property (getter=isBordered) BOOL bordered;
@property (getter=isTransparent) BOOL transparent;
@property NSBezelStyle bezelStyle;
@property NSControlStateValue state;
@property BOOL allowsMixedState;
@property NSCellImagePosition imagePosition;
- (void)setButtonType:(NSButtonType)type;
@end

// https://developer.apple.com/documentation/appkit/nspopupbutton
@interface NSPopUpButton : NSButton
@property (readonly) NSInteger indexOfSelectedItem;
- (id)initWithFrame:(NSRect)frame pullsDown:(BOOL)pullsDown;
- (void)addItemWithTitle:(NSString*)title;
- (void)removeAllItems;
- (void)selectItemAtIndex:(NSInteger)index;
@end

// https://developer.apple.com/documentation/appkit/nstextfield
@protocol NSTextFieldDelegate <NSControlTextEditingDelegate>
@end
@interface NSTextField : NSControl
@property (copy) NSString* placeholderString;
@property (retain) NSColor* textColor;
@property BOOL drawsBackground;
@property (getter=isBordered) BOOL bordered;
@property (getter=isBezeled) BOOL bezeled;
@property (getter=isEditable) BOOL editable;
@property (getter=isSelectable) BOOL selectable;
@property (assign) id<NSTextFieldDelegate> delegate;
@end

// https://developer.apple.com/documentation/appkit/nstextdelegate
@protocol NSTextDelegate <NSObject>
@end

// https://developer.apple.com/documentation/appkit/nstext
@interface NSText : NSView
@property (copy) NSString* string;
@property (assign) id<NSTextDelegate> delegate;
@property (getter=isFieldEditor) BOOL fieldEditor;
@end
// deprecated: GNUstep has only this name of it
enum { NSIllegalTextMovement = 0, NSReturnTextMovement = 16 };

// https://developer.apple.com/documentation/appkit/nstextviewdelegate
@protocol NSTextViewDelegate <NSTextDelegate>
@optional
- (BOOL)textView:(NSTextView*)view doCommandBySelector:(SEL)selector;
@end

// https://developer.apple.com/documentation/appkit/nstextview
@interface NSTextView : NSText
@end

// https://developer.apple.com/documentation/appkit/nsbox
typedef enum : NSUInteger { NSBoxSeparator = 2 } NSBoxType;
typedef enum : NSUInteger { NSNoTitle = 0 } NSTitlePosition;
@interface NSBox : NSView
@property NSBoxType boxType;
@property NSTitlePosition titlePosition;
@end

// https://developer.apple.com/documentation/appkit/nsclipview
@interface NSClipView : NSView
@end

// https://developer.apple.com/documentation/appkit/nsscrollview
typedef enum : NSUInteger { NSBezelBorder = 2 } NSBorderType;
typedef enum : NSInteger { NSScrollElasticityAutomatic = 0, NSScrollElasticityNone = 1, NSScrollElasticityAllowed = 2 } NSScrollElasticity;
@interface NSScrollView : NSView
@property (retain) NSClipView* contentView;
@property (retain) NSView* documentView;
@property NSBorderType borderType;
@property BOOL hasVerticalScroller;
@property NSScrollElasticity horizontalScrollElasticity;
@property NSScrollElasticity verticalScrollElasticity;
@end

// https://developer.apple.com/documentation/appkit/nstableviewdatasource
@protocol NSTableViewDataSource <NSObject>
@optional
- (NSInteger)numberOfRowsInTableView:(NSTableView*)table;
- (id)tableView:(NSTableView*)table objectValueForTableColumn:(NSTableColumn*)column row:(NSInteger)row;
@end

// https://developer.apple.com/documentation/appkit/nstableviewdelegate
@protocol NSTableViewDelegate <NSControlTextEditingDelegate>
@optional
- (NSString*)tableView:(NSTableView*)table toolTipForCell:(NSCell*)cell rect:(NSRectPointer)rect tableColumn:(NSTableColumn*)column row:(NSInteger)row mouseLocation:(NSPoint)location;
- (BOOL)selectionShouldChangeInTableView:(NSTableView*)table;
- (BOOL)tableView:(NSTableView*)table shouldSelectRow:(NSInteger)row;
- (void)tableViewSelectionDidChange:(NSNotification*)notification;
@end

// https://developer.apple.com/documentation/appkit/nstableview
@interface NSTableView : NSControl
@property (assign) id<NSTableViewDelegate> delegate;
@property (assign) id<NSTableViewDataSource> dataSource;
@property (readonly, copy) NSArray* tableColumns;
@property (retain) NSTableHeaderView* headerView;
@property CGFloat rowHeight;
@property BOOL allowsColumnReordering;
@property BOOL allowsEmptySelection;
@property BOOL allowsMultipleSelection;
@property (readonly) NSInteger selectedRow;
@property (readonly) NSInteger editedRow;
@property (readonly) NSInteger editedColumn;
@property (readonly) NSInteger numberOfRows;
- (void)addTableColumn:(NSTableColumn*)column;
- (void)reloadData;
- (void)deselectAll:(id)sender;
- (void)selectRowIndexes:(NSIndexSet*)indexes byExtendingSelection:(BOOL)extend;
- (void)scrollRowToVisible:(NSInteger)row;
- (void)editColumn:(NSInteger)column row:(NSInteger)row withEvent:(NSEvent*)event select:(BOOL)select;
- (NSRect)frameOfCellAtColumn:(NSInteger)column row:(NSInteger)row;
- (NSRect)rectOfRow:(NSInteger)row;
- (NSInteger)rowAtPoint:(NSPoint)point;
- (NSInteger)columnAtPoint:(NSPoint)point;
- (void)highlightSelectionInClipRect:(NSRect)rect;
- (void)textDidChange:(NSNotification*)notification;
- (void)textDidEndEditing:(NSNotification*)notification;
@end

// https://developer.apple.com/documentation/appkit/nsoutlineviewdatasource
@protocol NSOutlineViewDataSource <NSObject>
@optional
- (NSInteger)outlineView:(NSOutlineView*)outline numberOfChildrenOfItem:(id)item;
- (id)outlineView:(NSOutlineView*)outline child:(NSInteger)index ofItem:(id)item;
- (BOOL)outlineView:(NSOutlineView*)outline isItemExpandable:(id)item;
- (id)outlineView:(NSOutlineView*)outline objectValueForTableColumn:(NSTableColumn*)column byItem:(id)item;
- (void)outlineView:(NSOutlineView*)outline setObjectValue:(id)value forTableColumn:(NSTableColumn*)column byItem:(id)item;
@end

// https://developer.apple.com/documentation/appkit/nsoutlineviewdelegate
@protocol NSOutlineViewDelegate <NSControlTextEditingDelegate>
@optional
- (NSCell*)outlineView:(NSOutlineView*)outline dataCellForTableColumn:(NSTableColumn*)column item:(id)item;
- (void)outlineView:(NSOutlineView*)outline willDisplayCell:(id)cell forTableColumn:(NSTableColumn*)column item:(id)item;
- (void)outlineView:(NSOutlineView*)outline willDisplayOutlineCell:(id)cell forTableColumn:(NSTableColumn*)column item:(id)item;
- (BOOL)outlineView:(NSOutlineView*)outline shouldEditTableColumn:(NSTableColumn*)column item:(id)item;
- (BOOL)outlineView:(NSOutlineView*)outline shouldShowOutlineCellForItem:(id)item;
- (CGFloat)outlineView:(NSOutlineView*)outline heightOfRowByItem:(id)item;
- (void)outlineViewSelectionDidChange:(NSNotification*)notification;
- (void)outlineViewItemDidExpand:(NSNotification*)notification;
- (void)outlineViewItemDidCollapse:(NSNotification*)notification;
@end

// https://developer.apple.com/documentation/appkit/nsoutlineview
@interface NSOutlineView : NSTableView
@property (assign) id<NSOutlineViewDelegate> delegate;
@property (assign) id<NSOutlineViewDataSource> dataSource;
@property (assign) NSTableColumn* outlineTableColumn;
@property BOOL autoresizesOutlineColumn;
- (BOOL)isItemExpanded:(id)item;
- (void)expandItem:(id)item;
- (void)collapseItem:(id)item;
- (void)collapseItem:(id)item collapseChildren:(BOOL)children;
- (NSRect)frameOfOutlineCellAtRow:(NSInteger)row;
@end

// https://developer.apple.com/documentation/appkit/nstablecolumn
@interface NSTableColumn : NSObject
@property CGFloat width;
@property CGFloat minWidth;
@property CGFloat maxWidth;
@property (copy) NSString* title;
@property (retain) NSTableHeaderCell* headerCell;
@property (getter=isEditable) BOOL editable;
@property (copy) NSString* identifier;
- (id)initWithIdentifier:(NSString*)identifier;
@end

// https://developer.apple.com/documentation/appkit/nstableheaderview
@interface NSTableHeaderView : NSView
@end

// https://developer.apple.com/documentation/appkit/nstableheadercell
@interface NSTableHeaderCell : NSTextFieldCell
@end

// https://developer.apple.com/documentation/appkit/nstabviewdelegate
@protocol NSTabViewDelegate <NSObject>
@optional
- (BOOL)tabView:(NSTabView*)tabs shouldSelectTabViewItem:(NSTabViewItem*)item;
- (void)tabView:(NSTabView*)tabs didSelectTabViewItem:(NSTabViewItem*)item;
@end

// https://developer.apple.com/documentation/appkit/nstabview
@interface NSTabView : NSView
@property (assign) id<NSTabViewDelegate> delegate;
@property (readonly) NSTabViewItem* selectedTabViewItem;
@property (readonly) NSRect contentRect;
@property (retain) NSFont* font;
- (void)addTabViewItem:(NSTabViewItem*)item;
- (void)selectTabViewItemAtIndex:(NSInteger)index;
- (NSInteger)indexOfTabViewItem:(NSTabViewItem*)item;
@end

// https://developer.apple.com/documentation/appkit/nstabviewitem
@interface NSTabViewItem : NSObject
@property (copy) NSString* label;
@property (retain) NSView* view;
@property (assign) NSView* initialFirstResponder;
- (id)initWithIdentifier:(id)identifier;
@end

// https://developer.apple.com/documentation/appkit/nswindow
typedef enum : NSUInteger { NSWindowStyleMaskTitled = 1 } NSWindowStyleMask;
typedef enum : NSUInteger { NSBackingStoreBuffered = 2 } NSBackingStoreType;
@interface NSWindow : NSResponder
@property (retain) NSView* contentView;
@property (readonly) NSRect frame;
@property (copy) NSString* title;
@property (getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property (readonly, getter=isVisible) BOOL visible;
@property (readonly) NSResponder* firstResponder;
@property (assign) NSView* initialFirstResponder;
@property (readonly) NSWindow* attachedSheet;
@property (readonly, copy) NSArray* sheets;
- (id)initWithContentRect:(NSRect)rect styleMask:(NSWindowStyleMask)style backing:(NSBackingStoreType)backing defer:(BOOL)defer;
- (BOOL)makeFirstResponder:(NSResponder*)responder;
- (void)orderOut:(id)sender;
- (void)recalculateKeyViewLoop;
- (void)selectKeyViewFollowingView:(NSView*)view;
@end

// https://developer.apple.com/documentation/appkit/nspanel
@interface NSPanel : NSWindow
@end

// https://developer.apple.com/documentation/appkit/nssavepanel
typedef NSInteger NSModalResponse;
static const NSModalResponse NSModalResponseOK = 1;
@interface NSSavePanel : NSPanel
@property (copy) NSURL* directoryURL;
- (NSModalResponse)runModal;
@end

// https://developer.apple.com/documentation/appkit/nsopenpanel
@interface NSOpenPanel : NSSavePanel
@property (readonly, copy) NSArray* URLs;
@property BOOL canChooseDirectories;
@property BOOL canChooseFiles;
@property BOOL allowsMultipleSelection;
+ (NSOpenPanel*)openPanel;
@end

// https://developer.apple.com/documentation/appkit/nsapplication
@interface NSApplication : NSResponder
// deprecated: the sheet's end comes as a message to a delegate, on a Mac and under GNUstep alike; what followed it takes a block
- (void)beginSheet:(NSWindow*)sheet modalForWindow:(NSWindow*)window modalDelegate:(id)delegate didEndSelector:(SEL)selector contextInfo:(void*)info;
// deprecated: as above
- (void)endSheet:(NSWindow*)sheet;
@end
extern NSApplication* NSApp;

// https://developer.apple.com/documentation/appkit/nsalert
typedef enum : NSUInteger { NSAlertStyleWarning = 0, NSAlertStyleInformational = 1, NSAlertStyleCritical = 2 } NSAlertStyle;
@interface NSAlert : NSObject
@property (copy) NSString* messageText;
@property (copy) NSString* informativeText;
@property (retain) NSImage* icon;
@property NSAlertStyle alertStyle;
@property (retain) NSView* accessoryView;
@property (readonly, copy) NSArray* buttons;
@property (readonly) NSWindow* window;
- (NSButton*)addButtonWithTitle:(NSString*)title;
- (NSModalResponse)runModal;
// deprecated: the alert's end comes as a message to a delegate, on a Mac and under GNUstep alike; what followed it takes a block
- (void)beginSheetModalForWindow:(NSWindow*)window modalDelegate:(id)delegate didEndSelector:(SEL)selector contextInfo:(void*)info;
@end

// https://developer.apple.com/documentation/appkit/nsworkspace
@interface NSWorkspace : NSObject
@property (class, readonly) NSWorkspace* sharedWorkspace;
- (BOOL)openURL:(NSURL*)address;
// deprecated: the icons are named by file type codes, which what followed it does not know
- (NSImage*)iconForFileType:(NSString*)type;
@end

// https://developer.apple.com/documentation/appkit/nsimage
@interface NSImage : NSObject
@property NSSize size;
- (id)initWithContentsOfFile:(NSString*)path;
@end

// https://developer.apple.com/documentation/appkit/nscolor
@interface NSColor : NSObject
@property (class, readonly) NSColor* brownColor;
@property (class, readonly) NSColor* controlBackgroundColor;
@property (class, readonly) NSColor* controlTextColor;
@property (class, readonly) NSColor* disabledControlTextColor;
@property (class, readonly) NSColor* grayColor;
@property (class, readonly) NSColor* linkColor;
@property (class, readonly) NSColor* secondaryLabelColor;
@property (class, readonly) NSColor* selectedControlColor;
@property (class, readonly) NSColor* systemRedColor;
+ (NSColor*)colorWithCalibratedRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha;
- (void)set;
@end

// https://developer.apple.com/documentation/appkit/nsfont
@interface NSFont : NSObject
@property (class, readonly) CGFloat systemFontSize;
@property (class, readonly) CGFloat smallSystemFontSize;
+ (NSFont*)fontWithName:(NSString*)name size:(CGFloat)size;
+ (NSFont*)systemFontOfSize:(CGFloat)size;
+ (NSFont*)boldSystemFontOfSize:(CGFloat)size;
+ (NSFont*)userFontOfSize:(CGFloat)size;
@end

// https://developer.apple.com/documentation/appkit/nsfontmanager
typedef enum : NSUInteger { NSItalicFontMask = 1, NSBoldFontMask = 2 } NSFontTraitMask;
@interface NSFontManager : NSObject
@property (class, readonly) NSFontManager* sharedFontManager;
- (NSFont*)convertFont:(NSFont*)font toHaveTrait:(NSFontTraitMask)trait;
@end

// https://developer.apple.com/documentation/appkit/nsparagraphstyle
@interface NSParagraphStyle : NSObject
@property (class, readonly) NSParagraphStyle* defaultParagraphStyle;
@end

// https://developer.apple.com/documentation/appkit/nsmutableparagraphstyle
@interface NSMutableParagraphStyle : NSParagraphStyle
@property NSTextAlignment alignment;
@end

// https://developer.apple.com/documentation/foundation/nsattributedstring/key
extern const NSAttributedStringKey NSFontAttributeName;
extern const NSAttributedStringKey NSForegroundColorAttributeName;
extern const NSAttributedStringKey NSParagraphStyleAttributeName;
extern const NSAttributedStringKey NSUnderlineStyleAttributeName;
typedef enum : NSInteger { NSUnderlineStyleSingle = 1 } NSUnderlineStyle;

// https://developer.apple.com/documentation/foundation/nsstring/sizewithattributes:
@interface NSString (Drawing)
- (NSSize)sizeWithAttributes:(NSDictionary*)attributes;
@end

// https://developer.apple.com/documentation/foundation/nsattributedstring/size()
@interface NSAttributedString (Drawing)
- (NSSize)size;
- (void)drawAtPoint:(NSPoint)point;
@end

// https://developer.apple.com/documentation/appkit/nsgraphicscontext
@interface NSGraphicsContext : NSObject
+ (void)saveGraphicsState;
+ (void)restoreGraphicsState;
@end

// https://developer.apple.com/documentation/foundation/nsaffinetransform
@interface NSAffineTransform (Drawing)
- (void)concat;
@end

// https://developer.apple.com/documentation/appkit/nsbezierpath
@interface NSBezierPath : NSObject
@property CGFloat lineWidth;
+ (NSBezierPath*)bezierPath;
+ (NSBezierPath*)bezierPathWithRect:(NSRect)rect;
- (void)moveToPoint:(NSPoint)point;
- (void)lineToPoint:(NSPoint)point;
- (void)appendBezierPathWithArcWithCenter:(NSPoint)center radius:(CGFloat)radius startAngle:(CGFloat)start endAngle:(CGFloat)end clockwise:(BOOL)clockwise;
- (void)fill;
- (void)stroke;
@end

// https://developer.apple.com/documentation/appkit/drawing
void NSRectFill(NSRect rect);
void NSFrameRect(NSRect rect);
void NSFrameRectWithWidth(NSRect rect, CGFloat width);

#if defined(__cplusplus)
}
#endif

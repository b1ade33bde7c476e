// What the product uses of Foundation.
#pragma once
#import <CoreGraphics/CoreGraphics.h>
#import <objc/NSObject.h>
#include <limits.h>
#include <stdarg.h>

#if defined(__cplusplus)
extern "C" {
#endif

@class NSArray, NSData, NSDictionary, NSString, NSURL;

// https://developer.apple.com/documentation/foundation/numbers_data_and_basic_values
typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;
typedef NSRect* NSRectPointer;
extern const NSPoint NSZeroPoint;
extern const NSRect NSZeroRect;
static inline NSPoint NSMakePoint(CGFloat x, CGFloat y) { NSPoint point = {x, y}; return point; }
static inline NSSize NSMakeSize(CGFloat width, CGFloat height) { NSSize size = {width, height}; return size; }
static inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height) { NSRect rect = {{x, y}, {width, height}}; return rect; }
static inline CGFloat NSMinX(NSRect rect) { return rect.origin.x; }
static inline CGFloat NSMinY(NSRect rect) { return rect.origin.y; }
static inline CGFloat NSMaxX(NSRect rect) { return rect.origin.x + rect.size.width; }
static inline CGFloat NSMaxY(NSRect rect) { return rect.origin.y + rect.size.height; }
static inline CGFloat NSMidX(NSRect rect) { return rect.origin.x + rect.size.width / 2; }
static inline CGFloat NSMidY(NSRect rect) { return rect.origin.y + rect.size.height / 2; }
static inline CGFloat NSWidth(NSRect rect) { return rect.size.width; }
BOOL NSEqualRects(NSRect left, NSRect right);
NSRect NSInsetRect(NSRect rect, CGFloat x, CGFloat y);
BOOL NSMouseInRect(NSPoint point, NSRect rect, BOOL flipped);

// https://developer.apple.com/documentation/foundation/max
#define MIN(left, right) ((left) < (right) ? (left) : (right))

// https://developer.apple.com/documentation/foundation/nsrange
typedef struct _NSRange { NSUInteger location; NSUInteger length; } NSRange;  // _NSRange
typedef NSRange* NSRangePointer;
static inline NSRange NSMakeRange(NSUInteger location, NSUInteger length) { NSRange range = {location, length}; return range; }

// https://developer.apple.com/documentation/foundation/nsnotfound
enum : NSInteger { };

// https://developer.apple.com/documentation/foundation/nsfastenumeration
typedef struct { unsigned long state; id __unsafe_unretained* itemsPtr; unsigned long* mutationsPtr; unsigned long extra[5]; } NSFastEnumerationState;
@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state objects:(id __unsafe_unretained*)buffer count:(NSUInteger)count;
@end

// https://developer.apple.com/documentation/foundation/nscopying
@protocol NSCopying
@end

// https://developer.apple.com/documentation/foundation/nsrunloopmode
typedef NSString* NSRunLoopMode;
extern const NSRunLoopMode NSRunLoopCommonModes;

// https://developer.apple.com/documentation/foundation/nsrunloop
@interface NSRunLoop : NSObject
@property (class, readonly) NSRunLoop* currentRunLoop;
- (void)performSelector:(SEL)selector target:(id)target argument:(id)argument order:(NSUInteger)order modes:(NSArray*)modes;
@end

// https://developer.apple.com/documentation/foundation/nshfstypecodes
typedef UInt32 OSType;
NSString* NSFileTypeForHFSTypeCode(OSType code);

// https://developer.apple.com/documentation/foundation/nsstring
typedef unsigned short unichar;
typedef NSUInteger NSStringEncoding;
enum { NSUTF8StringEncoding = 4, NSISOLatin1StringEncoding = 5 };
@interface NSString : NSObject <NSCopying>
@property (readonly) NSUInteger length;
@property (readonly) NSString* lowercaseString;
- (id)initWithBytes:(const void*)bytes length:(NSUInteger)length encoding:(NSStringEncoding)encoding;
- (NSData*)dataUsingEncoding:(NSStringEncoding)encoding;
- (unichar)characterAtIndex:(NSUInteger)index;
@property (readonly) NSString* stringByResolvingSymlinksInPath;
@end

// https://developer.apple.com/documentation/foundation/nsconstantstring
@interface NSSimpleCString : NSString
@end
@interface NSConstantString : NSSimpleCString
@end

// https://developer.apple.com/documentation/foundation/nsattributedstring
typedef NSString* NSAttributedStringKey;
@interface NSAttributedString : NSObject
@property (readonly) NSString* string;
- (id)initWithString:(NSString*)string attributes:(NSDictionary*)attributes;
@end

// https://developer.apple.com/documentation/foundation/nsmutableattributedstring
@interface NSMutableAttributedString : NSAttributedString
- (void)appendAttributedString:(NSAttributedString*)other;
@end

// https://developer.apple.com/documentation/foundation/nsarray
@interface NSArray : NSObject <NSFastEnumeration>
@property (readonly) NSUInteger count;
+ (id)array;
+ (id)arrayWithObject:(id)object;
- (id)objectAtIndex:(NSUInteger)index;
- (NSUInteger)indexOfObjectIdenticalTo:(id)object;
@end

// https://developer.apple.com/documentation/foundation/nsdictionary
@interface NSDictionary : NSObject <NSFastEnumeration>
+ (id)dictionary;
+ (id)dictionaryWithObject:(id)object forKey:(id)key;
- (id)objectForKey:(id)key;
@end

// https://developer.apple.com/documentation/foundation/nsmutabledictionary
@interface NSMutableDictionary : NSDictionary
- (void)setObject:(id)object forKey:(id)key;
@end

// https://developer.apple.com/documentation/foundation/nsdata
@interface NSData : NSObject
@property (readonly) NSUInteger length;
@property (readonly) const void* bytes;
@end

// https://developer.apple.com/documentation/foundation/nsvalue
@interface NSValue : NSObject
@end

// https://developer.apple.com/documentation/foundation/nsnumber
@interface NSNumber : NSValue
@property (readonly) NSInteger integerValue;
+ (NSNumber*)numberWithInt:(int)value;
+ (NSNumber*)numberWithInteger:(NSInteger)value;
@end

// https://developer.apple.com/documentation/foundation/nsindexset
@interface NSIndexSet : NSObject
@property (readonly) NSUInteger count;
+ (id)indexSetWithIndex:(NSUInteger)index;
@end

// https://developer.apple.com/documentation/foundation/nsurl
@interface NSURL : NSObject
@property (readonly) NSString* path;
@property (readonly) NSString* scheme;
@property (readonly) NSString* host;
+ (id)URLWithString:(NSString*)text;
+ (NSURL*)fileURLWithPath:(NSString*)path;
@end

// https://developer.apple.com/documentation/foundation/nsbundle
@interface NSBundle : NSObject
@property (readonly) NSDictionary* infoDictionary;
- (NSString*)pathForResource:(NSString*)name ofType:(NSString*)type;
- (NSString*)pathForAuxiliaryExecutable:(NSString*)name;
@end

// https://developer.apple.com/documentation/foundation/nsfilemanager
@interface NSFileManager : NSObject
@property (class, readonly) NSFileManager* defaultManager;
- (BOOL)isExecutableFileAtPath:(NSString*)path;
@end

// https://developer.apple.com/documentation/foundation/nsformatter
@interface NSFormatter : NSObject
- (NSString*)stringForObjectValue:(id)value;
- (BOOL)getObjectValue:(id*)value forString:(NSString*)string errorDescription:(NSString**)error;
- (BOOL)isPartialStringValid:(NSString*)partial newEditingString:(NSString**)newString errorDescription:(NSString**)error;
- (BOOL)isPartialStringValid:(NSString**)partial proposedSelectedRange:(NSRangePointer)proposed originalString:(NSString*)original originalSelectedRange:(NSRange)originalRange errorDescription:(NSString**)error;
@end

// https://developer.apple.com/documentation/foundation/nsnotification
typedef NSString* NSNotificationName;
@interface NSNotification : NSObject
@property (readonly) NSNotificationName name;
@property (readonly) id object;
@property (readonly) NSDictionary* userInfo;
+ (id)notificationWithName:(NSNotificationName)name object:(id)object userInfo:(NSDictionary*)info;
@end

// https://developer.apple.com/documentation/foundation/nsaffinetransform
@interface NSAffineTransform : NSObject
+ (NSAffineTransform*)transform;
- (void)scaleXBy:(CGFloat)x yBy:(CGFloat)y;
- (void)translateXBy:(CGFloat)x yBy:(CGFloat)y;
@end

#if defined(__cplusplus)
}
#endif

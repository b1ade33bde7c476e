// What the product uses of CoreGraphics.
#pragma once
#include <CoreFoundation/CoreFoundation.h>

#if defined(__cplusplus)
extern "C" {
#endif

// https://developer.apple.com/documentation/coregraphics/cgfloat
typedef double CGFloat;

// https://developer.apple.com/documentation/coregraphics/cgpoint
typedef struct CGPoint { CGFloat x; CGFloat y; } CGPoint;

// https://developer.apple.com/documentation/coregraphics/cgsize
typedef struct CGSize { CGFloat width; CGFloat height; } CGSize;

// https://developer.apple.com/documentation/coregraphics/cgrect
typedef struct CGRect { CGPoint origin; CGSize size; } CGRect;

// https://developer.apple.com/documentation/coregraphics/cgevent
typedef struct __CGEvent* CGEventRef;
typedef struct __CGEventSource* CGEventSourceRef;
typedef uint64_t CGEventFlags;
CGEventRef CGEventCreate(CGEventSourceRef source);
CGEventFlags CGEventGetFlags(CGEventRef event);

#if defined(__cplusplus)
}
#endif

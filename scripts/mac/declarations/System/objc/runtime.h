// What the product calls of the Objective-C runtime by its own functions.
#pragma once
#include <objc/objc.h>

#if defined(__cplusplus)
extern "C" {
#endif

// https://developer.apple.com/documentation/objectivec/objective-c_runtime
BOOL sel_isEqual(SEL left, SEL right);

#if defined(__cplusplus)
}
#endif

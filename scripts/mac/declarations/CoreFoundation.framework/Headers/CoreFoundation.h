// What the product uses of CoreFoundation.
#pragma once
#include <stddef.h>
#include <stdint.h>

#if defined(__cplusplus)
extern "C" {
#endif

// https://developer.apple.com/documentation/corefoundation/base_utilities
typedef unsigned char Boolean;
typedef uint8_t UInt8;
typedef uint32_t UInt32;
typedef int32_t OSStatus;
typedef long CFIndex;
typedef unsigned long CFOptionFlags;
typedef const void* CFTypeRef;
typedef struct { CFIndex location; CFIndex length; } CFRange;
static inline CFRange CFRangeMake(CFIndex location, CFIndex length) { CFRange range = {location, length}; return range; }

// https://developer.apple.com/documentation/corefoundation/cftype
void CFRelease(CFTypeRef object);

// https://developer.apple.com/documentation/corefoundation/cfallocator
typedef const struct __CFAllocator* CFAllocatorRef;
extern const CFAllocatorRef kCFAllocatorDefault;

// https://developer.apple.com/documentation/corefoundation/cfstring
typedef const struct __CFString* CFStringRef;
typedef UInt32 CFStringEncoding;
enum { kCFStringEncodingUTF8 = 0x08000100 };  // CFStringBuiltInEncodings
typedef CFOptionFlags CFStringCompareFlags;
enum { kCFCompareCaseInsensitive = 1, kCFCompareNonliteral = 16 };  // CFStringCompareFlags
typedef CFIndex CFComparisonResult;
CFStringRef CFStringCreateWithBytes(CFAllocatorRef allocator, const UInt8* bytes, CFIndex count, CFStringEncoding encoding, Boolean isExternalRepresentation);
CFIndex CFStringGetLength(CFStringRef string);
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);
CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding, UInt8 lossByte, Boolean isExternalRepresentation, UInt8* buffer, CFIndex most, CFIndex* used);
CFComparisonResult CFStringCompare(CFStringRef left, CFStringRef right, CFStringCompareFlags options);

// https://developer.apple.com/documentation/corefoundation/cfarray
typedef const struct __CFArray* CFArrayRef;
typedef const void* (*CFArrayRetainCallBack)(CFAllocatorRef allocator, const void* value);
typedef void (*CFArrayReleaseCallBack)(CFAllocatorRef allocator, const void* value);
typedef CFStringRef (*CFArrayCopyDescriptionCallBack)(const void* value);
typedef Boolean (*CFArrayEqualCallBack)(const void* left, const void* right);
typedef struct { CFIndex version; CFArrayRetainCallBack retain; CFArrayReleaseCallBack release; CFArrayCopyDescriptionCallBack copyDescription; CFArrayEqualCallBack equal; } CFArrayCallBacks;
extern const CFArrayCallBacks kCFTypeArrayCallBacks;
CFIndex CFArrayGetCount(CFArrayRef array);
const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);

// https://developer.apple.com/documentation/corefoundation/cfmutablearray
typedef struct __CFArray* CFMutableArrayRef;
CFMutableArrayRef CFArrayCreateMutable(CFAllocatorRef allocator, CFIndex capacity, const CFArrayCallBacks* callBacks);
void CFArrayAppendValue(CFMutableArrayRef array, const void* value);

// https://developer.apple.com/documentation/corefoundation/time_utilities
typedef double CFTimeInterval;
typedef CFTimeInterval CFAbsoluteTime;
CFAbsoluteTime CFAbsoluteTimeGetCurrent(void);

// https://developer.apple.com/documentation/corefoundation/cfrunloop
typedef struct __CFRunLoop* CFRunLoopRef;
typedef CFStringRef CFRunLoopMode;
typedef struct __CFRunLoopSource* CFRunLoopSourceRef;
typedef struct __CFRunLoopTimer* CFRunLoopTimerRef;
extern const CFRunLoopMode kCFRunLoopCommonModes;
CFRunLoopRef CFRunLoopGetCurrent(void);
CFRunLoopRef CFRunLoopGetMain(void);
void CFRunLoopWakeUp(CFRunLoopRef loop);
void CFRunLoopPerformBlock(CFRunLoopRef loop, CFTypeRef mode, void (^block)(void));
void CFRunLoopAddSource(CFRunLoopRef loop, CFRunLoopSourceRef source, CFRunLoopMode mode);
void CFRunLoopAddTimer(CFRunLoopRef loop, CFRunLoopTimerRef timer, CFRunLoopMode mode);

// https://developer.apple.com/documentation/corefoundation/cfrunlooptimer
typedef struct { CFIndex version; void* info; const void* (*retain)(const void* info); void (*release)(const void* info); CFStringRef (*copyDescription)(const void* info); } CFRunLoopTimerContext;
typedef void (*CFRunLoopTimerCallBack)(CFRunLoopTimerRef timer, void* info);
CFRunLoopTimerRef CFRunLoopTimerCreate(CFAllocatorRef allocator, CFAbsoluteTime fireDate, CFTimeInterval interval, CFOptionFlags flags, CFIndex order, CFRunLoopTimerCallBack callBack, CFRunLoopTimerContext* context);
void CFRunLoopTimerInvalidate(CFRunLoopTimerRef timer);

// https://developer.apple.com/documentation/corefoundation/cffiledescriptor
typedef struct __CFFileDescriptor* CFFileDescriptorRef;
typedef int CFFileDescriptorNativeDescriptor;
typedef struct { CFIndex version; void* info; void* (*retain)(void* info); void (*release)(void* info); CFStringRef (*copyDescription)(void* info); } CFFileDescriptorContext;
typedef void (*CFFileDescriptorCallBack)(CFFileDescriptorRef descriptor, CFOptionFlags types, void* info);
enum { kCFFileDescriptorReadCallBack = 1 };
CFFileDescriptorRef CFFileDescriptorCreate(CFAllocatorRef allocator, CFFileDescriptorNativeDescriptor descriptor, Boolean closeOnInvalidate, CFFileDescriptorCallBack callBack, const CFFileDescriptorContext* context);
void CFFileDescriptorEnableCallBacks(CFFileDescriptorRef descriptor, CFOptionFlags types);
void CFFileDescriptorInvalidate(CFFileDescriptorRef descriptor);
CFRunLoopSourceRef CFFileDescriptorCreateRunLoopSource(CFAllocatorRef allocator, CFFileDescriptorRef descriptor, CFIndex order);

#if defined(__cplusplus)
}
#endif

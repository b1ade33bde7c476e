// What the product uses of CoreServices: file-system events.
#pragma once
#include <CoreFoundation/CoreFoundation.h>

#if defined(__cplusplus)
extern "C" {
#endif

// https://developer.apple.com/documentation/coreservices/file_system_events
typedef struct __FSEventStream* FSEventStreamRef;
typedef const struct __FSEventStream* ConstFSEventStreamRef;
typedef UInt32 FSEventStreamCreateFlags;
typedef UInt32 FSEventStreamEventFlags;
typedef uint64_t FSEventStreamEventId;
enum { kFSEventStreamCreateFlagUseCFTypes = 1 };
enum : FSEventStreamEventId { kFSEventStreamEventIdSinceNow = 0xFFFFFFFFFFFFFFFF };
typedef struct { CFIndex version; void* info; const void* (*retain)(const void* info); void (*release)(const void* info); CFStringRef (*copyDescription)(const void* info); } FSEventStreamContext;
typedef void (*FSEventStreamCallback)(ConstFSEventStreamRef stream, void* info, size_t count, void* paths, const FSEventStreamEventFlags* flags, const FSEventStreamEventId* identifiers);
FSEventStreamRef FSEventStreamCreate(CFAllocatorRef allocator, FSEventStreamCallback callback, FSEventStreamContext* context, CFArrayRef paths, FSEventStreamEventId since, CFTimeInterval latency, FSEventStreamCreateFlags flags);
// deprecated: the stream is the main run loop's, in the common modes; a dispatch queue, which followed it, is not
void FSEventStreamScheduleWithRunLoop(FSEventStreamRef stream, CFRunLoopRef loop, CFStringRef mode);
// deprecated: as above
void FSEventStreamUnscheduleFromRunLoop(FSEventStreamRef stream, CFRunLoopRef loop, CFStringRef mode);
Boolean FSEventStreamStart(FSEventStreamRef stream);
void FSEventStreamStop(FSEventStreamRef stream);
void FSEventStreamRelease(FSEventStreamRef stream);

#if defined(__cplusplus)
}
#endif

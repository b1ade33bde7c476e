// What the product uses of Security: authorization services.
#pragma once
#include <CoreFoundation/CoreFoundation.h>
#include <stdio.h>

#if defined(__cplusplus)
extern "C" {
#endif

// https://developer.apple.com/documentation/security/authorization_services_c
typedef const struct AuthorizationOpaqueRef* AuthorizationRef;
typedef const char* AuthorizationString;
typedef UInt32 AuthorizationFlags;
enum { kAuthorizationFlagDefaults = 0, kAuthorizationFlagInteractionAllowed = 1, kAuthorizationFlagExtendRights = 2, kAuthorizationFlagDestroyRights = 8, kAuthorizationFlagPreAuthorize = 16 };  // AuthorizationFlags
enum { errAuthorizationSuccess = 0 };
typedef struct { AuthorizationString name; size_t valueLength; void* value; UInt32 flags; } AuthorizationItem;
typedef struct { UInt32 count; AuthorizationItem* items; } AuthorizationItemSet;
typedef AuthorizationItemSet AuthorizationRights;
typedef AuthorizationItemSet AuthorizationEnvironment;
#define kAuthorizationEmptyEnvironment NULL
typedef void (^AuthorizationAsyncCallback)(OSStatus status, AuthorizationRights* rights);
OSStatus AuthorizationCreate(const AuthorizationRights* rights, const AuthorizationEnvironment* environment, AuthorizationFlags flags, AuthorizationRef* authorization);
OSStatus AuthorizationFree(AuthorizationRef authorization, AuthorizationFlags flags);
void AuthorizationCopyRightsAsync(AuthorizationRef authorization, const AuthorizationRights* rights, const AuthorizationEnvironment* environment, AuthorizationFlags flags, AuthorizationAsyncCallback callback);
OSStatus AuthorizationFreeItemSet(AuthorizationItemSet* set);
// deprecated: what followed it wants a signed daemon that is installed beside the client
OSStatus AuthorizationExecuteWithPrivileges(AuthorizationRef authorization, const char* tool, AuthorizationFlags options, char* const* arguments, FILE** pipe) __attribute__((deprecated));

#if defined(__cplusplus)
}
#endif

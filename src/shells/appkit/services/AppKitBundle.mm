#import "services/AppKitBundle.h"

#import "Text.h"

namespace corvane::appkit {

std::string AppKitBundle::name() {
  return fromNSString([[bundle_ infoDictionary] objectForKey:@"CFBundleName"]);
}

std::string AppKitBundle::pathForResource(std::string_view name, std::string_view type) {
  NSString* path = [bundle_ pathForResource:toNSString(name) ofType:toNSString(type)];
  // Without links: the helper, which is an auxiliary executable and a resource, has one path.
  return fromNSString([path stringByResolvingSymlinksInPath]);
}

std::string AppKitBundle::pathForAuxiliaryExecutable(std::string_view name) {
  NSString* path = [bundle_ pathForAuxiliaryExecutable:toNSString(name)];
  // GNUstep names also what is not there.
  const bool isThere = path != nil && [[NSFileManager defaultManager] isExecutableFileAtPath:path];
  return isThere ? fromNSString([path stringByResolvingSymlinksInPath]) : std::string();
}

}  // namespace corvane::appkit

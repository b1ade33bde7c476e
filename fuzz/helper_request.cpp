// Feeds bytes to the decoder of requests and what it accepts to the recognition of commands. What is decoded
// encodes to the same bytes, and a command that is not refused names only places that the helper may touch.
#include <cstdlib>

#include "helper/CommandShapes.h"
#include "helper/Request.h"

namespace {

using namespace corvane::helper;

bool isName(const std::string& name) {
  return !name.empty() && name != "." && name != ".." && name.find('/') == std::string::npos &&
         name.find('\0') == std::string::npos;
}
bool isPath(const std::string& path) {
  return path.starts_with('/') && (path + "/").find("/../") == std::string::npos &&
         path.find('\0') == std::string::npos;
}
void require(bool holds) {
  if (!holds) std::abort();
}

struct Check {
  void operator()(const Refusal& refusal) const { require(!refusal.reason.empty()); }
  void operator()(const RemoveStaging& command) const { require(isName(command.name)); }
  void operator()(const WriteTarget& command) const {
    require(isName(command.name) && isPath(command.folder));
  }
  void operator()(const ReadSource& command) const {
    require(isName(command.name) && isPath(command.folder));
  }
  void operator()(const MakeFolders& command) const { require(isPath(command.folder)); }
  void operator()(const ResetModes&) const {}
  void operator()(const RunScript& command) const { require(isPath(command.script)); }
  void operator()(const ValidatePlugin& command) const {
    require(isPath("/" + command.executable) && command.arguments.back() == "--test-mode");
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view packet(reinterpret_cast<const char*>(data), size);
  (void)decodeReply(packet);
  const auto request = decodeRequest(packet);
  if (!request) return 0;
  require(encodeRequest(*request) == packet);
  for (const auto* root : {"", "/a b"})
    std::visit(Check{}, recognize(*request, {.root = root, .helper = "/q"}));
  return 0;
}

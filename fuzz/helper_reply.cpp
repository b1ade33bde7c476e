// Feeds bytes to the parser of a plug-in's reply. A reply that is taken has one line of text in it that stood
// in the reply, behind its first comma.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "plugins/HelperReply.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view reply(reinterpret_cast<const char*>(data), size);
  const auto parsed = corvane::parseHelperReply(reply);
  if (!parsed) return 0;
  const auto comma = reply.find(',');
  if (comma == std::string_view::npos) std::abort();
  if (parsed->message.empty() || parsed->message.find_first_of("\n\r\v\f") != std::string::npos) std::abort();
  if (reply.substr(comma + 1).find(parsed->message) == std::string_view::npos) std::abort();
  return 0;
}

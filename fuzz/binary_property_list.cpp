// Feeds bytes to the reader of the binary format, behind its signature. What it accepts can be written as
// XML, and after that (which drops fractions of seconds) nothing changes any more.
#include <cstdlib>
#include <string>

#include "values/PropertyListCodec.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::string_view signature = "bplist00";
  std::string bytes(reinterpret_cast<const char*>(data), size);
  bytes.replace(0, std::min(signature.size(), bytes.size()), signature);
  const auto value = corvane::readPropertyList(bytes);
  if (!value) return 0;
  const auto written = corvane::writeXmlPropertyList(value);
  if (!written) std::abort();
  const auto again = corvane::readPropertyList(*written);
  if (!again || corvane::writeXmlPropertyList(again) != written) std::abort();
  return 0;
}

// Feeds bytes to the reader. What it accepts is a value that can be written, and what is written reads as
// that value.
#include <cstdlib>

#include "values/PropertyListCodec.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto value = corvane::readPropertyList({reinterpret_cast<const char*>(data), size});
  if (!value) return 0;
  const auto written = corvane::writeXmlPropertyList(value);
  if (!written) std::abort();
  if (corvane::readPropertyList(*written) != value || value.deepCopy() != value) std::abort();
  return 0;
}

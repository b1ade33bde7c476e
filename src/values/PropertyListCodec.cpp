#include "values/PropertyListCodec.h"

#include "values/PropertyListReaders.h"

namespace corvane {

PropertyList readPropertyList(std::string_view bytes) {
  return looksLikeBinaryPropertyList(bytes) ? readBinaryPropertyList(bytes) : readXmlPropertyList(bytes);
}

}  // namespace corvane

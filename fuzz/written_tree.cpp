// Builds a tree in memory as the bytes say, with texts of any bytes, dates of any time, values that stand in
// several places and containers that hold themselves, and writes it. What is written can be read, and says
// the same when it is written again.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "TakeByte.h"
#include "values/PropertyListCodec.h"

namespace {

using namespace corvane;

class Builder {
 public:
  explicit Builder(std::string_view bytes) : bytes_(bytes) {}
  Builder(const Builder&) = delete;
  Builder& operator=(const Builder&) = delete;
  /// Containers that hold themselves would never go.
  ~Builder() {
    for (const PropertyList& value : values_) {
      value.asArray().replaceAll({});
      for (const std::string& key : value.asDictionary().keys()) value.asDictionary().remove(key);
    }
  }

  PropertyList build() {
    constexpr int most = 400;  // values that stand in several places could else stand for hours
    for (int i = 0; i < most && !bytes_.empty(); ++i) add();
    return values_.empty() ? PropertyList() : values_.back();
  }

 private:
  std::uint8_t byte() { return fuzz::takeByte(bytes_); }
  std::string text() {
    const std::string_view taken = bytes_.substr(0, byte() % 40);
    bytes_.remove_prefix(std::min(bytes_.size(), taken.size()));
    return std::string(taken);
  }
  template <typename Number>
  Number number() {
    Number value{};
    const std::string_view taken = bytes_.substr(0, sizeof value);
    std::memcpy(&value, taken.data(), taken.size());
    bytes_.remove_prefix(taken.size());
    return value;
  }
  PropertyList any() { return values_.empty() ? PropertyList() : values_[byte() % values_.size()]; }

  void add() {
    switch (byte() % 12) {
      case 0:
        return values_.push_back(PropertyList::string(text()));
      case 1:
        return values_.push_back(PropertyList::integer(number<std::int64_t>()));
      case 2:
        return values_.push_back(PropertyList::unsignedInteger(number<std::uint64_t>()));
      case 3:
        return values_.push_back(PropertyList::real(number<double>()));
      case 4:
        return values_.push_back(PropertyList::boolean(byte() % 2 == 0));
      case 5:
        return values_.push_back(PropertyList::date({number<double>()}));
      case 6: {
        const std::string bytes = text();
        return values_.push_back(PropertyList::data({bytes.begin(), bytes.end()}));
      }
      case 7:
        return values_.push_back(Array::make());
      case 8:
        return values_.push_back(Dictionary::make());
      case 9: {
        Array array = Array::make();
        for (int i = byte() % 5; i > 0; --i) array.append(any());
        return values_.push_back(array);
      }
      case 10: {
        Dictionary dictionary = Dictionary::make();
        for (int i = byte() % 5; i > 0; --i) dictionary.set(text(), any());
        return values_.push_back(dictionary);
      }
      default: {
        const PropertyList target = any();
        target.asArray().append(any());
        target.asDictionary().set(text(), any());
      }
    }
  }

  std::string_view bytes_;
  std::vector<PropertyList> values_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Builder builder(std::string_view(reinterpret_cast<const char*>(data), size));
  const auto value = builder.build();
  const auto written = writeXmlPropertyList(value);
  if (!written) return 0;
  const auto read = readPropertyList(*written);
  if (!read || writeXmlPropertyList(read) != written) std::abort();
  return 0;
}

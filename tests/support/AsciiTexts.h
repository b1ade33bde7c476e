// Comparison of texts that knows the letters of ASCII only, for tests of those who sort; how the real ones
// compare is tested with them.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "platform/TextComparison.h"

namespace corvane::test {

class AsciiTexts final : public TextComparison {
 public:
  int caseInsensitiveCompare(std::string_view left, std::string_view right) override {
    return lower(left).compare(lower(right));
  }

 private:
  static std::string lower(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char character) {
      return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
    });
    return result;
  }
};

}  // namespace corvane::test

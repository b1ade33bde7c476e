// Values for the comparisons with other programs' readers and writers: the same on every run.
#pragma once

#include <random>
#include <string>

#include "values/PropertyList.h"

namespace corvane {

class RandomPropertyList {
 public:
  explicit RandomPropertyList(unsigned seed) : engine_(seed) {}

  PropertyList value(int depth = 0) {
    const bool mayNest = depth < 5;
    switch (below(mayNest ? 9 : 7)) {
      case 0:
        return PropertyList::string(text());
      case 1:
        return PropertyList::integer(static_cast<std::int64_t>(engine_() << 32 | engine_()) >> below(64));
      case 2:
        return PropertyList::real(static_cast<double>(below(2000)) / 16 - 60);
      case 3:
        return PropertyList::boolean(below(2) == 0);
      case 4:
        return PropertyList::date({static_cast<double>(below(2'000'000'000))});
      case 5:
        return PropertyList::data(bytes());
      case 6:
        return PropertyList::integer(static_cast<std::int64_t>(below(1000)) - 500);
      case 7:
        return array(depth + 1);
      default:
        return dictionary(depth + 1);
    }
  }

  PropertyList dictionary(int depth = 0) {
    auto result = Dictionary::make();
    for (std::size_t i = below(12); i > 0; --i) result.set(text(), value(depth));
    return result;
  }

 private:
  std::size_t below(std::size_t limit) { return engine_() % limit; }

  PropertyList array(int depth) {
    auto result = Array::make();
    for (std::size_t i = below(12); i > 0; --i) result.append(value(depth));
    return result;
  }

  std::string text() {
    static const std::string pieces[] = {"a",
                                         "Z",
                                         "5",
                                         " ",
                                         "<",
                                         ">",
                                         "&",
                                         "'",
                                         "\"",
                                         "\t",
                                         "\n",
                                         "word",
                                         "\xC3\xA9",
                                         "\xE2\x82\xAC",
                                         "\xEF\xBF\xBD",
                                         "\xF0\x9F\x98\x80"};
    std::string result = "x";  // some readers drop the blanks of a blank text
    for (std::size_t i = below(30); i > 0; --i) result += pieces[below(std::size(pieces))];
    return result + "y";
  }

  PropertyList::Bytes bytes() {
    PropertyList::Bytes result(1 + below(200));
    for (auto& byte : result) byte = static_cast<std::uint8_t>(engine_());
    return result;
  }

  std::mt19937_64 engine_;
};

}  // namespace corvane

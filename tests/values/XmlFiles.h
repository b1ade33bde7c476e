// XML property lists for tests of the reader.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "values/PropertyListCodec.h"

namespace corvane {

/// A whole file around one value.
inline std::string file(const std::string& body) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
         "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
         "<plist version=\"1.0\">\n" +
         body + "\n</plist>\n";
}

inline PropertyList text(const std::string& s) { return PropertyList::string(s); }
inline PropertyList number(std::int64_t n) { return PropertyList::integer(n); }

struct Case {
  std::string body;
  PropertyList value;
};

inline void expectValues(const std::vector<Case>& cases) {
  for (const auto& [body, value] : cases) {
    const PropertyList found = readPropertyList(file(body));
    EXPECT_TRUE(found) << body;
    EXPECT_EQ(found, value) << body;
  }
}

inline void expectUnreadable(const std::vector<std::string>& bodies) {
  for (const auto& body : bodies) EXPECT_FALSE(readPropertyList(file(body))) << body;
}

}  // namespace corvane

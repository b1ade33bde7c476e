// Stands in for the desktop's handler of addresses.
#pragma once

#include <string>
#include <vector>

namespace corvane::test {

/// All addresses that the program has wanted to open; a test clears it first.
std::vector<std::string>& openedUrls();

}  // namespace corvane::test

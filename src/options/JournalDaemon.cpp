#include "options/JournalDaemon.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>

#include "values/Conversions.h"
#include "values/Encodings.h"

namespace corvane {
namespace {

/// A larger file counts as unreadable, as a settings file does.
constexpr std::size_t kPidFileLimit = std::size_t{64} * 1024 * 1024;  // bytes

bool isAscii(std::string_view text) {
  return std::ranges::all_of(text,
                             [](char character) { return static_cast<unsigned char>(character) < 0x80; });
}

/// Whether the integer value of a line is the number. The piece after the last line break is a line as well.
bool hasLineWithValue(std::string_view text, std::int32_t number) {
  for (std::size_t start = 0;;) {
    const std::size_t end = text.find('\n', start);
    if (intValue(text.substr(start, end - start)) == number) return true;
    if (end == std::string_view::npos) return false;
    start = end + 1;
  }
}

}  // namespace

bool JournalDaemon::isDiskJournalPIDRunning() const {
  if (!platform_.files.exists(pidFile_)) return false;
  const auto text = platform_.files.contents(pidFile_, kPidFileLimit);
  if (!text || text->empty() || !isAscii(*text)) return false;
  const std::int32_t pid = intValue(*text);
  const auto listing = platform_.processes.listProcesses();
  // The listing's header reads as 0, so a pid file without digits counts as running. This is intended.
  return listing && isUtf8(*listing) && hasLineWithValue(*listing, pid);
}

}  // namespace corvane

#include "platform/linux/LinuxProcessListing.h"

#include <algorithm>

#include <fcntl.h>

#include "posix/FolderReader.h"

namespace corvane {
namespace {

constexpr std::size_t kColumnWidth = 7;  // of the ids and of their heading, both at the right

void appendLine(std::string& text, std::string_view word) {
  text.append(kColumnWidth - std::min(word.size(), kColumnWidth), ' ').append(word) += '\n';
}

bool isProcess(std::string_view name) {
  return std::ranges::all_of(name, [](char character) { return character >= '0' && character <= '9'; });
}

}  // namespace

std::optional<std::string> LinuxProcessListing::listProcesses() {
  FolderReader table(FolderReader::open(AT_FDCWD, "/proc"));
  if (!table.isOpen()) return std::nullopt;
  std::string text;
  appendLine(text, "PID");
  while (const auto entry = table.next()) {
    if (isProcess(entry->name)) appendLine(text, entry->name);
  }
  return text;
}

}  // namespace corvane

#include "Output.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <limits>

#include <unistd.h>
#include <utf8proc.h>

#include "ExitStatus.h"
#include "posix/LogLine.h"
#include "posix/SystemError.h"

namespace corvane::cli {
namespace {

constexpr const char* kName = "corvanectl: ";
constexpr std::size_t kPiece = std::size_t{64} * 1024;  // bytes
constexpr std::size_t kGap = 2;                         // columns between two columns of a table

std::string printable(std::string_view text) {
  return escapedLogLine(text, std::numeric_limits<std::size_t>::max());
}

/// The columns that the text takes on a terminal.
std::size_t widthOf(std::string_view text) {
  std::size_t width = 0;
  const auto* next = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
  auto left = static_cast<utf8proc_ssize_t>(text.size());
  while (left > 0) {
    utf8proc_int32_t character = 0;
    const auto length = utf8proc_iterate(next, left, &character);
    if (length <= 0) break;
    width += static_cast<std::size_t>(std::max(0, utf8proc_charwidth(character)));
    next += length;
    left -= length;
  }
  return width;
}

const char* codeOf(Colour colour) {
  switch (colour) {
    case Colour::Strong:
      return "\033[1m";
    case Colour::Good:
      return "\033[32m";
    case Colour::Warning:
      return "\033[33m";
    case Colour::Bad:
      return "\033[31m";
    case Colour::Faint:
      return "\033[2m";
    case Colour::None:
      break;
  }
  return nullptr;
}

bool isSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

bool takesColours() {
  const char* terminal = std::getenv("TERM");
  return terminal != nullptr && std::string_view(terminal) != "dumb" && !isSet("NO_COLOR");
}

/// The errno of a write that failed; 0 when all was written.
int writeAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(descriptor, text.data(), text.size());
    if (written >= 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      return errno;
    }
  }
  return 0;
}

}  // namespace

Output::Output(Options options)
    : options_(options),
      isTerminal_(::isatty(STDOUT_FILENO) == 1),
      isColoured_(isTerminal_ && takesColours()) {}

void Output::add(std::string_view text) {
  waiting_ += text;
  if (waiting_.size() >= kPiece) (void)flush();
}

void Output::line(std::string_view text) { add(printable(text) + "\n"); }

void Output::text(std::string_view lines) {
  while (lines.ends_with('\n')) lines.remove_suffix(1);
  add(std::string(lines) + "\n");
}

std::string Output::dressed(const Cell& cell) const {
  const char* code = isColoured_ ? codeOf(cell.colour) : nullptr;
  const std::string text = printable(cell.text);
  return code != nullptr && !text.empty() ? code + text + "\033[0m" : text;
}

void Output::table(const std::vector<Row>& rows) {
  std::vector<std::size_t> widths;
  for (const Row& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t column = 0; column < row.size(); ++column)
      widths[column] = std::max(widths[column], widthOf(printable(row[column].text)));
  }
  for (const Row& row : rows) {
    std::string line;
    for (std::size_t column = 0; column < row.size(); ++column) {
      line += dressed(row[column]);
      if (column + 1 == row.size()) break;
      const std::size_t width = widthOf(printable(row[column].text));
      line += isTerminal_ ? std::string(widths[column] - width + kGap, ' ') : "\t";
    }
    while (isTerminal_ && line.ends_with(' ')) line.pop_back();
    add(line + "\n");
  }
}

void Output::document(const Json& json) {
  // Bytes of a file that are no text become the replacement character; nothing is raised for them.
  add(json.dump(options_.oneLineEach ? -1 : 2, ' ', false, Json::error_handler_t::replace) + "\n");
}

int Output::flush() {
  if (error_ == 0) error_ = writeAll(STDOUT_FILENO, waiting_);
  waiting_.clear();
  if (error_ == 0) return kDone;
  if (error_ == EPIPE) return kOutputClosed;
  return kOutputFailed;
}

void Output::complain(std::string_view about, std::string_view text) {
  std::string line = kName;
  if (!about.empty()) line += printable(about) + ": ";
  line += printable(text) + "\n";
  // One call, so that lines of two programs on one terminal do not mix. There is nobody to tell when it
  // fails.
  (void)writeAll(STDERR_FILENO, line);
}

void Output::ask(std::string_view question) { (void)writeAll(STDERR_FILENO, printable(question)); }

}  // namespace corvane::cli

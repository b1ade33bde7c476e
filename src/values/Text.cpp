#include "values/Text.h"

#include <algorithm>
#include <utility>

namespace corvane {
namespace {

[[nodiscard]] char lowerAscii(char character) noexcept {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

std::string_view withoutTrailingSlashes(std::string_view path) {
  while (path.size() > 1 && path.back() == '/') path.remove_suffix(1);
  return path;
}

}  // namespace

std::string formatText(std::string_view format, std::initializer_list<std::string_view> arguments) {
  std::string result;
  const auto* next = arguments.begin();
  for (std::size_t i = 0; i < format.size(); ++i) {
    if (format[i] != '%' || i + 1 == format.size()) {
      result += format[i];
      continue;
    }
    ++i;
    if (format[i] == '%') {
      result += '%';
    } else {
      result += next == arguments.end() ? std::string_view("(null)") : *next++;
    }
  }
  return result;
}

std::size_t utf16Length(std::string_view text) noexcept {
  std::size_t units = 0;
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if ((byte & 0xC0U) != 0x80U) ++units;  // every first byte of a character
    if (byte >= 0xF0U) ++units;            // outside the basic plane
  }
  return units;
}

bool hasPrefixIgnoringCase(std::string_view text, std::string_view prefix) noexcept {
  return std::ranges::equal(text.substr(0, prefix.size()), prefix, {}, lowerAscii, lowerAscii);
}

std::vector<std::string> split(std::string_view text, char separator) {
  std::vector<std::string> pieces;
  for (;;) {
    const auto end = text.find(separator);
    pieces.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) return pieces;
    text.remove_prefix(end + 1);
  }
}

std::string replaceAll(std::string_view text, std::string_view from, std::string_view to) {
  if (from.empty()) return std::string(text);
  std::string result;
  for (;;) {
    const auto found = text.find(from);
    result += text.substr(0, found);
    if (found == std::string_view::npos) return result;
    result += to;
    text.remove_prefix(found + from.size());
  }
}

std::string lastPathComponent(std::string_view path) {
  path = withoutTrailingSlashes(path);
  if (path == "/") return "/";
  const auto slash = path.rfind('/');
  return std::string(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

std::string deletingLastPathComponent(std::string_view path) {
  path = withoutTrailingSlashes(path);
  const auto slash = path.rfind('/');
  if (slash == std::string_view::npos) return {};
  return std::string(withoutTrailingSlashes(path.substr(0, std::max<std::size_t>(slash, 1))));
}

std::string pathExtension(std::string_view path) {
  const std::string name = lastPathComponent(path);
  const auto dot = name.rfind('.');
  return dot == std::string::npos || dot == 0 ? std::string() : name.substr(dot + 1);
}

std::string deletingPathExtension(std::string_view path) {
  const std::string extension = pathExtension(path);
  path = withoutTrailingSlashes(path);
  const std::string name = lastPathComponent(path);
  const bool hasDot = name.rfind('.') != std::string::npos && name.rfind('.') != 0;
  return std::string(hasDot ? path.substr(0, path.size() - extension.size() - 1) : path);
}

std::string appendingPathComponent(std::string_view path, std::string_view component) {
  if (path.empty()) return std::string(component);
  std::string result(withoutTrailingSlashes(path));
  while (component.starts_with('/')) component.remove_prefix(1);
  if (result != "/") result += '/';
  result += withoutTrailingSlashes(component);
  return result;
}

std::string standardizingPath(std::string_view path) {
  const bool absolute = path.starts_with('/');
  std::vector<std::string> kept;
  for (std::string& part : split(path, '/')) {
    if (part.empty() || part == ".") continue;
    if (part == ".." && !kept.empty() && kept.back() != "..") {
      kept.pop_back();
    } else if (part != ".." || !absolute) {
      kept.push_back(std::move(part));
    }
  }
  std::string result = absolute ? "/" : "";
  for (const std::string& part : kept) {
    if (!result.empty() && result.back() != '/') result += '/';
    result += part;
  }
  return result;
}

}  // namespace corvane

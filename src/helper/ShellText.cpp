#include "helper/ShellText.h"

#include <algorithm>

namespace corvane::helper {
namespace {

/// Characters that stand for themselves outside quotes, wherever they stand in a word that begins with a
/// slash.
bool isHarmless(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
         std::string_view("/._-+,:@%").find(c) != std::string_view::npos;
}

}  // namespace

std::string quotedForShell(std::string_view text) {
  if (std::ranges::all_of(text, isHarmless)) return std::string(text);
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'') {
      quoted += "'\\''";
    } else {
      quoted += c;
    }
  }
  return quoted + "'";
}

std::optional<std::vector<std::string>> shellWords(std::string_view text) {
  if (text.find(kPattern) != std::string_view::npos) return std::nullopt;
  std::vector<std::string> words;
  bool inWord = false;
  const auto put = [&](char c) {
    if (!inWord) words.emplace_back();
    inWord = true;
    words.back() += c;
  };
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == ' ') {
      inWord = false;
    } else if (c == '\'' || c == '"') {
      const auto end = text.find(c, i + 1);
      if (end == std::string_view::npos) return std::nullopt;
      const auto inside = text.substr(i + 1, end - i - 1);
      if (c == '"' && inside.find_first_of("\\$`!") != std::string_view::npos) return std::nullopt;
      for (const char literal : inside) put(literal);
      i = end;
    } else if (c == '\\') {
      if (++i == text.size() || text[i] == '\n') return std::nullopt;
      put(text[i]);
    } else if (c == '*') {
      put(kPattern);
    } else if (isHarmless(c)) {
      put(c);
    } else {
      return std::nullopt;
    }
  }
  return words;
}

}  // namespace corvane::helper

// A text with fonts, colours and underlines on parts of it: what labels, rows and button titles are made of.
// Colours are named by role so that a shell can give each its value in light and dark.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvane {

struct Font {
  enum class Family { User, System, Arial };
  Family family = Family::User;
  double size = 13;  // points
  bool bold = false;
  bool italic = false;
  friend bool operator==(const Font&, const Font&) = default;
};

/// The system font size of the regular control size, in points.
inline constexpr double kSystemFontSize = 13;

enum class TextColor { Gray, DarkGray, Red, Blue };
enum class TextAlignment { Left, Center, Right };

/// Attributes that are not given are the control's own.
struct TextAttributes {
  std::optional<Font> font;
  std::optional<TextColor> color;
  std::optional<TextAlignment> alignment;
  bool underlined = false;
  friend bool operator==(const TextAttributes&, const TextAttributes&) = default;
};

/// Text with runs of attributes; a run counts bytes of the UTF-8 text. Runs do not overlap and stand in
/// order.
struct AttributedText {
  struct Run {
    std::size_t start = 0;
    std::size_t length = 0;
    TextAttributes attributes;
    friend bool operator==(const Run&, const Run&) = default;
  };

  std::string text;
  std::vector<Run> runs;

  AttributedText() = default;
  explicit AttributedText(std::string plain) : text(std::move(plain)) {}
  /// The whole text in one style.
  AttributedText(std::string styled, TextAttributes attributes) : text(std::move(styled)) {
    runs.push_back({0, text.size(), attributes});
  }
  friend bool operator==(const AttributedText&, const AttributedText&) = default;
};

}  // namespace corvane

// The tokens of XML property lists, over text in UTF-8. The format is a small subset of XML that a Mac reads
// by rules of its own (attributes are passed over, what follows the last element does not matter, comments
// end a text); this scanner follows those rules, goes through the text once, and copies nothing but the
// contents of texts.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

class XmlScanner {
 public:
  enum class Tag : std::uint8_t {
    File,
    Dictionary,
    Array,
    Key,
    String,
    Integer,
    Real,
    True,
    False,
    Date,
    Data
  };
  struct OpeningTag {
    Tag tag;
    bool isEmpty;  // <like this/>
  };
  enum class Next : std::uint8_t { Opening, Closing, Failed };

  explicit XmlScanner(std::string_view text) noexcept : rest_(text) {}

  /// Goes to the first element, past blanks, comments, instructions and a document type.
  [[nodiscard]] bool skipProlog() noexcept;
  /// Goes to the next tag, past blanks, comments and instructions; nothing else may stand there.
  [[nodiscard]] Next next() noexcept;
  /// Takes the opening tag that `next` went to; nothing when it is not one of the format's.
  [[nodiscard]] std::optional<OpeningTag> takeOpeningTag() noexcept;
  /// Takes the closing tag; false when anything else stands here.
  [[nodiscard]] bool takeClosingTag(Tag tag) noexcept;

  struct RawText {
    std::string_view text;
    bool isPlain;  // ASCII without ampersands: it stands for itself
  };
  /// Takes everything up to the next tag, as it stands.
  [[nodiscard]] RawText takeRawText() noexcept;
  /// Takes everything up to the next tag and appends it with escapes and character data resolved; false when
  /// they or the encoding are not valid.
  [[nodiscard]] bool takeText(std::string& text);

 private:
  void skipBlanks() noexcept;
  [[nodiscard]] bool skipPast(std::string_view end) noexcept;
  [[nodiscard]] bool skipDocumentType() noexcept;

  std::string_view rest_;
};

}  // namespace corvane

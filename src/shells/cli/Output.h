// What the program says: text for people or JSON on standard output, one line for each error on standard
// error. On a terminal text is aligned and coloured; elsewhere the columns are separated by tabs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

namespace corvane::cli {

using Json = nlohmann::ordered_json;

enum class Colour { None, Strong, Good, Warning, Bad, Faint };

struct Cell {
  Cell(std::string_view shown, Colour dressed = Colour::None) : text(shown), colour(dressed) {}
  Cell(const char* shown, Colour dressed = Colour::None) : text(shown), colour(dressed) {}
  Cell(std::string shown, Colour dressed = Colour::None) : text(std::move(shown)), colour(dressed) {}
  std::string text;
  Colour colour = Colour::None;
};
using Row = std::vector<Cell>;

class Output {
 public:
  struct Options {
    bool json = false;
    bool oneLineEach = false;  // a JSON document is one line, since more follow
  };
  explicit Output(Options options);

  [[nodiscard]] bool isJson() const { return options_.json; }
  /// A line of text, with what could harm a terminal written out.
  void line(std::string_view text);
  /// Lines of the program's own.
  void text(std::string_view lines);
  void table(const std::vector<Row>& rows);
  void document(const Json& json);
  /// Ends in an error when standard output takes no more; 0 when all was written.
  [[nodiscard]] int flush();
  /// Whether the reader of standard output has gone.
  [[nodiscard]] bool isClosed() const { return error_ != 0; }

  /// One line on standard error. `about` names the tree or the file that it is about; it may be empty.
  static void complain(std::string_view about, std::string_view text);
  /// A question on a terminal, whose answer comes behind it.
  static void ask(std::string_view question);

 private:
  void add(std::string_view text);
  [[nodiscard]] std::string dressed(const Cell& cell) const;

  Options options_;
  bool isTerminal_ = false;
  bool isColoured_ = false;
  std::string waiting_;
  int error_ = 0;  // errno
};

}  // namespace corvane::cli

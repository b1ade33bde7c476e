// What an entry field asks of the formatter that guards it: text for a value, a value for a text, and whether
// a text may stand in the field while it is being typed. Several fields may share one formatter and its
// state; they hear when that state changes how their values are shown.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "values/PropertyList.h"

namespace corvane {

/// The answer to a text that the user is typing.
struct PartialStringCheck {
  bool valid = false;
  /// When not valid: the text that the field takes instead; nothing leaves the field as it was.
  std::optional<std::string> newEditingString;
};

class Formatter {
 public:
  /// A field whose value the formatter shows.
  class Client {
   public:
    virtual ~Client() = default;
    virtual void formatterDisplayDidChange() = 0;
  };

  Formatter() = default;
  Formatter(const Formatter&) = delete;
  Formatter& operator=(const Formatter&) = delete;
  virtual ~Formatter() = default;
  [[nodiscard]] virtual std::optional<std::string> stringForObjectValue(const PropertyList& value) const = 0;
  [[nodiscard]] virtual PropertyList objectValueForString(const std::string& text) const = 0;
  [[nodiscard]] virtual PartialStringCheck isPartialStringValid(const std::string& partial) = 0;

  /// The value that a typed text stands for when its editing ends: the value of the text that will then be
  /// shown, so that what is stored is what is seen.
  [[nodiscard]] PropertyList objectValueForTypedText(const std::string& text) const;

  /// A client removes itself before it goes.
  void addClient(Client& client);
  void removeClient(Client& client);

 protected:
  /// Values are shown differently from now on.
  void displayDidChange() const;

 private:
  std::vector<Client*> clients_;
};

}  // namespace corvane

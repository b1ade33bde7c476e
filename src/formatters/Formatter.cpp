#include "formatters/Formatter.h"

#include <algorithm>

namespace corvane {

PropertyList Formatter::objectValueForTypedText(const std::string& text) const {
  const PropertyList value = objectValueForString(text);
  const std::optional<std::string> shown = stringForObjectValue(value);
  return shown && *shown != text ? objectValueForString(*shown) : value;
}

void Formatter::addClient(Client& client) { clients_.push_back(&client); }

void Formatter::removeClient(Client& client) {
  const auto found = std::find(clients_.begin(), clients_.end(), &client);
  if (found != clients_.end()) clients_.erase(found);
}

void Formatter::displayDidChange() const {
  const std::vector<Client*> clients = clients_;
  for (Client* client : clients) {
    // A client may take another one off while it hears of the change.
    if (std::find(clients_.begin(), clients_.end(), client) != clients_.end()) {
      client->formatterDisplayDidChange();
    }
  }
}

}  // namespace corvane

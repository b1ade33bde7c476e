#include "pane/ClientHeader.h"

#include <array>
#include <cmath>

#include "pane/ClientKeys.h"
#include "pane/Deployment.h"
#include "pane/OpenAddress.h"
#include "values/Text.h"

namespace corvane {
namespace {

constexpr std::array<std::string_view, 3> kSchemes = {"mailto:", "http://", "https://"};

TextAttributes plainStyle() {
  TextAttributes style;
  style.font = Font{Font::Family::Arial, 14};
  style.alignment = TextAlignment::Left;
  return style;
}

TextAttributes linkStyle() {
  TextAttributes style = plainStyle();
  style.color = TextColor::Blue;
  style.underlined = true;
  return style;
}

bool holdsKeys(const QLDefaultsController& store) {
  return store.values() != nullptr && !store.values()->empty();
}

std::optional<std::string> stringValue(const Dictionary& dictionary, const char* key) {
  const std::string* text = dictionary.string(key);
  return text != nullptr ? std::optional(*text) : std::nullopt;
}

std::optional<std::string> stringValue(const QLDefaultsController& store, const char* key) {
  return store.values() != nullptr ? stringValue(store.values()->contents(), key) : std::nullopt;
}

/// The address without its scheme. As many leading characters are dropped as the scheme has, by intention
/// also where the scheme was found further in.
std::string linkTitle(const std::string& address) {
  for (const std::string_view scheme : kSchemes) {
    if (address.find(scheme) == std::string::npos) continue;
    std::size_t begin = 0;
    for (std::size_t dropped = 0; dropped < scheme.size() && begin < address.size(); ++dropped) {
      do ++begin;
      while (begin < address.size() && (static_cast<unsigned char>(address[begin]) & 0xC0U) == 0x80U);
    }
    return address.substr(begin);
  }
  return address;
}

std::string versionText(const QLDefaultsController& store) {
  return formatText("Version %@", {stringValue(store, client_key::kClientVersion).value_or("unknown")});
}

}  // namespace

void ClientHeader::showClientSettings(const QLDefaultsController& settings,
                                      const QLDefaultsController& backup) {
  supportAddress_.reset();
  if (holdsKeys(settings)) {
    showFromSettings(settings);
  } else if (holdsKeys(backup)) {
    showFromBackup(backup);
  } else {
    platform_.log.write("Neither the ClientSettings.plist nor the BackupClientSettings.plist exist");
    versionNumber_ = "Error";
  }
  layOut();
  view_.clientVersionButton.setTitle(versionNumber_);
}

void ClientHeader::showFromSettings(const QLDefaultsController& settings) {
  const auto greeting = stringValue(settings, client_key::kGreeting);
  view_.greetingButton.setAttributedTitle(
      AttributedText(greeting ? *greeting : view_.greetingButton.title(), plainStyle()));
  if (showSupportAddress(settings)) {
    view_.urlButton.setHidden(false);
    view_.greetingButton.setHidden(false);
  } else {
    hideGreetingAndLink();
  }
  versionNumber_ = versionText(settings);
}

void ClientHeader::showFromBackup(const QLDefaultsController& backup) {
  // The greeting is left as it is, and what is hidden stays hidden.
  if (!showSupportAddress(backup)) hideGreetingAndLink();
  versionNumber_ = versionText(backup);
}

bool ClientHeader::showSupportAddress(const QLDefaultsController& store) {
  supportAddress_ = stringValue(store, client_key::kSupportAddress);
  if (!supportAddress_ || supportAddress_->empty()) return false;
  view_.urlButton.setAttributedTitle(AttributedText(linkTitle(*supportAddress_), linkStyle()));
  return true;
}

void ClientHeader::hideGreetingAndLink() {
  view_.urlButton.setHidden(true);
  view_.greetingButton.setHidden(true);
}

void ClientHeader::layOut() {
  const auto widthOf = [this](const Button& button, const TextAttributes& style) {
    return std::trunc(platform_.workspace.textWidth(button.title(), *style.font) + 5.0);
  };
  const double greetingWidth = widthOf(view_.greetingButton, plainStyle());
  const double linkWidth = widthOf(view_.urlButton, linkStyle());
  const Rect& tabs = view_.tabView.frame();
  const double centre = std::trunc(tabs.x + tabs.width / 2);

  Rect greeting = view_.greetingButton.frame();
  greeting.x = centre - (greetingWidth + linkWidth + 2) / 2;
  greeting.width = greetingWidth;
  Rect link = view_.urlButton.frame();
  link.x = greeting.x + greetingWidth + 2;
  link.width = linkWidth;
  view_.greetingButton.setFrame(greeting);
  view_.urlButton.setFrame(link);
}

void ClientHeader::urlButtonAction() {
  if (!supportAddress_) return;
  for (const std::string_view scheme : kSchemes) {
    if (supportAddress_->find(scheme) != std::string::npos) {
      openAddress(platform_, *supportAddress_);
      return;
    }
  }
  openAddress(platform_, formatText("http://%@", {*supportAddress_}));
}

void ClientHeader::quorlenIconButtonAction() {
  if ((platform_.workspace.modifierFlags() & (kControlKeyFlag | kOptionKeyFlag)) == 0) return;
  const Dictionary settings = platform_.propertyLists.read(paths_.clientSettings).asDictionary();
  if (!settings) return;
  auto server = stringValue(settings, client_key::kServerAddress);
  if (server) server = replaceAll(*server, deployment::kServerSuffix, deployment::kWebSuffix);
  auto identifier = stringValue(settings, client_key::kQuorlenId);
  if (!identifier) identifier = stringValue(settings, client_key::kClientId);
  if (!server || !identifier) {
    platform_.log.write(formatText("Server Address (%@) and/or QuorlenID (%@) is/are nil.",
                                   {server.value_or("(null)"), identifier.value_or("(null)")}));
    return;
  }
  openAddress(platform_, formatText("https://%@/computers/%@", {*server, *identifier}));
}

}  // namespace corvane

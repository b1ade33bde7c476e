// Ties a control to one key of a settings store: the control follows the value, an edit of the control
// becomes one change of the key and so one write of the whole file. A value of the wrong type shows as
// absent; an edit for which there is no valid store is taken back.
#pragma once

#include <string>

#include "controls/Button.h"
#include "controls/TextField.h"
#include "pane/QLDefaultsController.h"

namespace corvane {

class SettingsBinding final : private KeyObserver {
 public:
  enum class Kind {
    Text,     // a string; a cleared field takes the key away
    Integer,  // an integer of 32 bits
  };
  /// The control must outlive the binding.
  SettingsBinding(TextField& field, std::string key, Kind kind);
  /// A check box over a boolean.
  SettingsBinding(Button& checkBox, std::string key);
  SettingsBinding(const SettingsBinding&) = delete;
  SettingsBinding& operator=(const SettingsBinding&) = delete;
  ~SettingsBinding() override;

  /// Follows this store from now on. A store goes only after `unbind`, or after `bindTo` with another one.
  void bindTo(QLDefaultsController& store);
  void unbind();
  [[nodiscard]] const std::string& key() const { return key_; }

 private:
  void observeValueForKey(const std::string& key, const PropertyList& newValue) override;
  void show();
  void commit();
  [[nodiscard]] PropertyList editedValue() const;
  [[nodiscard]] PropertyList storedValue() const;

  TextField* field_ = nullptr;
  Button* checkBox_ = nullptr;
  std::string key_;
  Kind kind_ = Kind::Text;
  QLDefaultsController* store_ = nullptr;
};

}  // namespace corvane

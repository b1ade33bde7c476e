#include "pane/SettingsBinding.h"

#include <utility>

#include "values/Conversions.h"

namespace corvane {

SettingsBinding::SettingsBinding(TextField& field, std::string key, Kind kind)
    : field_(&field), key_(std::move(key)), kind_(kind) {
  field.onUserEdit = [this] { commit(); };
}

SettingsBinding::SettingsBinding(Button& checkBox, std::string key)
    : checkBox_(&checkBox), key_(std::move(key)) {
  checkBox.onUserEdit = [this] { commit(); };
}

SettingsBinding::~SettingsBinding() {
  unbind();
  if (field_ != nullptr) field_->onUserEdit = nullptr;
  if (checkBox_ != nullptr) checkBox_->onUserEdit = nullptr;
}

void SettingsBinding::bindTo(QLDefaultsController& store) {
  unbind();
  store_ = &store;
  if (store.values() != nullptr) store.values()->addObserver(*this, key_);
  show();
}

void SettingsBinding::unbind() {
  if (store_ != nullptr && store_->values() != nullptr) store_->values()->removeObserver(*this, key_);
  store_ = nullptr;
}

void SettingsBinding::observeValueForKey(const std::string& /*key*/, const PropertyList& /*newValue*/) {
  show();
}

PropertyList SettingsBinding::storedValue() const {
  return store_ != nullptr ? store_->value(key_) : PropertyList();
}

void SettingsBinding::show() {
  const PropertyList stored = storedValue();
  if (checkBox_ != nullptr) {
    checkBox_->setState(isNumber(stored) && boolValue(stored) ? ButtonState::On : ButtonState::Off);
    return;
  }
  const bool fits = kind_ == Kind::Text ? stored.asString() != nullptr : isNumber(stored);
  // What is being typed counts; it is stored when it is finished.
  field_->setObjectValueBehindEditing(fits ? stored : PropertyList());
}

PropertyList SettingsBinding::editedValue() const {
  if (checkBox_ != nullptr) return PropertyList::boolean(checkBox_->state() != ButtonState::Off);
  if (kind_ == Kind::Integer) return PropertyList::integer(field_->intValue());
  return field_->stringValue().empty() ? PropertyList() : PropertyList::string(field_->stringValue());
}

void SettingsBinding::commit() {
  if (store_ == nullptr) return;
  if (!store_->validValues()) {
    show();  // nothing can be stored, so nothing else may seem to be
    return;
  }
  PropertyList edited = editedValue();
  if (edited == storedValue()) return;
  store_->setValueForKey(key_, std::move(edited));
}

}  // namespace corvane

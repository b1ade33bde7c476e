#include "pane/QLDefaultsController.h"

#include "pane/ClientKeys.h"
#include "values/Text.h"

namespace corvane {
namespace {

constexpr std::string_view kKeyPathFormat = "values.%@";
constexpr std::string_view kAutoDiskMountName = "autodiskmount.plist";

}  // namespace

std::string QLDefaultsController::keyPath(std::string_view key) { return formatText(kKeyPathFormat, {key}); }

QLDefaultsController::QLDefaultsController(std::string file, Files& files, PropertyListFiles& propertyLists)
    : file_(std::move(file)), files_(files), propertyLists_(propertyLists), fileExists_(files.exists(file_)) {
  Dictionary contents = fileExists_ ? propertyLists_.read(file_).asDictionary() : Dictionary::make();
  if (!contents) return;
  // The system makes this file only when the setting was changed, so its absence means the default.
  if (contents.empty() && lastPathComponent(file_) == kAutoDiskMountName) {
    contents.set(client_key::kAutomountDisks, PropertyList::boolean(false));
  }
  KeyObserver& owner = *this;
  values_ = std::make_unique<ObservableDictionary>(std::move(contents), owner);
}

PropertyList QLDefaultsController::value(std::string_view key) const {
  return values_ ? values_->value(key) : PropertyList();
}

void QLDefaultsController::setValueForKey(const std::string& key, PropertyList value) {
  if (values_) values_->setObserved(key, std::move(value));
}

void QLDefaultsController::refreshValues() {
  const Dictionary fresh = propertyLists_.read(file_).asDictionary();
  // Keys that the file has lost keep their values: a refresh only adds and replaces. This is intended.
  if (values_) values_->replaceFrom(fresh);
  fileExists_ = files_.exists(file_);
}

void QLDefaultsController::commitChanges() {
  if (delegate_ != nullptr && values_) delegate_->setPlistFileValues(file_, values_->contents());
}

void QLDefaultsController::observeValueForKey(const std::string& key, const PropertyList& /*newValue*/) {
  observeValueForKeyPath(keyPath(key));
}

void QLDefaultsController::observeValueForKeyPath(const std::string& changedPath) {
  // A cleared group is written as an empty text, never dropped.
  if (values_ && changedPath == keyPath(client_key::kClientGroup) &&
      !values_->contains(client_key::kClientGroup)) {
    values_->setQuietly(client_key::kClientGroup, PropertyList::string({}));
  }
  commitChanges();
}

}  // namespace corvane

#include "pane/SettingsFile.h"

namespace corvane {

SettingsFile::SettingsFile(Platform& platform, std::string file)
    : platform_(platform), file_(std::move(file)), store_(makeStore()) {}

SettingsFile::~SettingsFile() = default;

std::unique_ptr<QLDefaultsController> SettingsFile::makeStore() const {
  auto store = std::make_unique<QLDefaultsController>(file_, platform_.files, platform_.propertyLists);
  store->setDelegate(delegate_);
  return store;
}

void SettingsFile::setDelegate(PlistWriter* delegate) {
  delegate_ = delegate;
  store_->setDelegate(delegate);
}

void SettingsFile::refresh() {
  if (!store_->validValues()) {
    for (const auto& binding : bindings_) binding->unbind();
    store_ = makeStore();
    for (const auto& binding : bindings_) binding->bindTo(*store_);
  }
  store_->refreshValues();
}

}  // namespace corvane

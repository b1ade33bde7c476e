#include "options/OptionsStore.h"

namespace corvane {

OptionsStore::OptionsStore(Platform& platform, std::string file)
    : platform_(platform), file_(std::move(file)), store_(makeStore()) {}

OptionsStore::~OptionsStore() = default;

std::unique_ptr<QLDefaultsController> OptionsStore::makeStore() const {
  auto store = std::make_unique<QLDefaultsController>(file_, platform_.files, platform_.propertyLists);
  store->setDelegate(delegate_);
  return store;
}

void OptionsStore::setDelegate(PlistWriter* delegate) {
  delegate_ = delegate;
  store_->setDelegate(delegate);
}

void OptionsStore::refresh() {
  if (!store_->validValues()) {
    for (const auto& binding : bindings_) binding->unbind();
    store_ = makeStore();
    for (const auto& binding : bindings_) binding->bindTo(*store_);
  }
  store_->refreshValues();
}

}  // namespace corvane

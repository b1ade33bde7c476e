// One settings file of the Options tab: its store, and the bindings of controls to its keys. A store that
// could not be read is replaced by a new one at the next refresh, and the bindings move over to it.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "pane/QLDefaultsController.h"
#include "pane/SettingsBinding.h"
#include "platform/Platform.h"

namespace corvane {

class OptionsStore {
 public:
  /// Reads the file at the absolute path. The platform must outlive the store.
  OptionsStore(Platform& platform, std::string file);
  OptionsStore(const OptionsStore&) = delete;
  OptionsStore& operator=(const OptionsStore&) = delete;
  ~OptionsStore();

  /// Who writes the file, also for the stores that may come in place of this one.
  void setDelegate(PlistWriter* delegate);
  /// Ties a control to a key with the arguments of one of the constructors of `SettingsBinding`.
  template <typename... Arguments>
  void bind(Arguments&&... arguments) {
    bindings_.push_back(std::make_unique<SettingsBinding>(std::forward<Arguments>(arguments)...));
    bindings_.back()->bindTo(*store_);
  }

  /// Replaces an invalid store, then reads the file again.
  void refresh();

  [[nodiscard]] QLDefaultsController& store() { return *store_; }
  [[nodiscard]] const QLDefaultsController& store() const { return *store_; }
  [[nodiscard]] bool validValues() const { return store_->validValues(); }

 private:
  [[nodiscard]] std::unique_ptr<QLDefaultsController> makeStore() const;

  Platform& platform_;
  std::string file_;
  PlistWriter* delegate_ = nullptr;
  std::unique_ptr<QLDefaultsController> store_;
  std::vector<std::unique_ptr<SettingsBinding>> bindings_;
};

}  // namespace corvane

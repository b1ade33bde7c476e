// One settings file that the pane keeps open: its store, and the bindings of controls to its keys. The pane
// has seven of them. A store that could not be read is replaced by a new one over the same file at the next
// refresh, and the bindings move over to it.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "pane/QLDefaultsController.h"
#include "pane/SettingsBinding.h"
#include "platform/Platform.h"

namespace corvane {

class SettingsFile {
 public:
  /// Reads the file at the absolute path. The platform must outlive this.
  SettingsFile(Platform& platform, std::string file);
  SettingsFile(const SettingsFile&) = delete;
  SettingsFile& operator=(const SettingsFile&) = delete;
  ~SettingsFile();

  /// Who writes the file, also for the stores that may come in place of this one. Null: it is not written.
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
  /// Its absolute path.
  [[nodiscard]] const std::string& file() const { return file_; }

 private:
  [[nodiscard]] std::unique_ptr<QLDefaultsController> makeStore() const;

  Platform& platform_;
  std::string file_;
  PlistWriter* delegate_ = nullptr;
  std::unique_ptr<QLDefaultsController> store_;
  std::vector<std::unique_ptr<SettingsBinding>> bindings_;
};

}  // namespace corvane

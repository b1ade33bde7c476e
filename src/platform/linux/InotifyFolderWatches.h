// Folder watches by one inotify instance.
#pragma once

#include <cstdint>
#include <functional>

#include "platform/linux/FolderWatches.h"
#include "platform/linux/InotifyEvents.h"
#include "posix/FileDescriptor.h"

namespace corvane {

class InotifyFolderWatches : public FolderWatches {
 public:
  /// The mask says which events of the entries of a folder are wanted.
  explicit InotifyFolderWatches(std::uint32_t mask);

  /// False when the system gave no instance; `error` is its reason.
  [[nodiscard]] bool isOpen() const { return static_cast<bool>(instance_); }
  [[nodiscard]] int error() const { return error_; }
  [[nodiscard]] int descriptor() const { return instance_.get(); }

  [[nodiscard]] AddOutcome add(const std::string& folder, Links links) override;
  void remove(int watch) override;
  [[nodiscard]] std::optional<Listing> list(const std::string& folder) override;
  [[nodiscard]] Entry lookAt(const std::string& path) override;

 private:
  FileDescriptor instance_;
  std::uint32_t mask_;
  int error_ = 0;
};

}  // namespace corvane

// The pane's own bundle.
#pragma once

#import "AppKit.h"
#include "platform/Bundle.h"

namespace corvane::appkit {

class AppKitBundle final : public Bundle {
 public:
  explicit AppKitBundle(NSBundle* bundle) : bundle_([bundle retain]) {}
  AppKitBundle(const AppKitBundle&) = delete;
  AppKitBundle& operator=(const AppKitBundle&) = delete;
  ~AppKitBundle() override { [bundle_ release]; }

  [[nodiscard]] std::string name() override;
  [[nodiscard]] std::string pathForResource(std::string_view name, std::string_view type) override;
  [[nodiscard]] std::string pathForAuxiliaryExecutable(std::string_view name) override;

 private:
  NSBundle* bundle_;
};

}  // namespace corvane::appkit

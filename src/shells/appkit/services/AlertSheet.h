// Alerts: how a description becomes one of the toolkit's, and one that is shown as a sheet.
#pragma once

#include <functional>
#include <memory>

#include "platform/Dialogs.h"
#include "services/SheetStage.h"

@class CorvaneAlertEnd;

namespace corvane::appkit {

/// An alert of the toolkit, made of its description.
class Alert {
 public:
  explicit Alert(const AlertDescription& description);
  Alert(const Alert&) = delete;
  Alert& operator=(const Alert&) = delete;
  ~Alert();
  /// Shows it before everything else and returns when it was answered.
  [[nodiscard]] AlertResult runModal();
  /// Shows it as a sheet; the delegate hears of its end.
  void beginSheet(NSWindow* parent, CorvaneAlertEnd* delegate);
  /// What the user has answered when the toolkit reports the code.
  [[nodiscard]] AlertResult resultOf(NSInteger code) const;

 private:
  NSAlert* alert_;
  NSButton* accessory_;     // nil for none
  NSButton* escape_ = nil;  // nil for none
  NSInteger escapeCode_ = 0;
};

class AlertSheet final : public SheetStage::Sheet {
 public:
  using Ended = std::function<void(const AlertResult&)>;

  AlertSheet(SheetStage& stage, const AlertDescription& description, Ended ended);
  ~AlertSheet() override;

  void begin(NSWindow* parent) override;

 private:
  void finish(NSInteger code);

  SheetStage& stage_;
  AlertDescription description_;
  Ended ended_;
  std::unique_ptr<Alert> alert_;
  CorvaneAlertEnd* end_;
};

}  // namespace corvane::appkit

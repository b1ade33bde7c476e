// What every control has: whether it is enabled and hidden, its frame, its texts for people, and the one hook
// through which a shell learns that something changed. Controls are owned by the views of the tabs;
// controllers set them, a shell shows them and hands the user's acts back as calls. Acts on a disabled or
// hidden control do nothing.
#pragma once

#include <functional>
#include <string>

namespace corvane {

/// In points; the origin is the lower left corner of the enclosing view, as the layout rules of the pane
/// count.
struct Rect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  friend bool operator==(const Rect&, const Rect&) = default;
};

class Control {
 public:
  Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control() = default;

  [[nodiscard]] bool enabled() const { return enabled_; }
  void setEnabled(bool enabled);
  [[nodiscard]] bool hidden() const { return hidden_; }
  void setHidden(bool hidden);
  [[nodiscard]] const Rect& frame() const { return frame_; }
  void setFrame(const Rect& frame);
  [[nodiscard]] const std::string& toolTip() const { return toolTip_; }
  void setToolTip(std::string text);
  /// What assistive technology calls the control; unique within the pane. Where the control shows a text,
  /// that text speaks and there is no name, unless it would not be understood alone: then the name contains
  /// it, so that what is seen can be said.
  [[nodiscard]] virtual std::string accessibleName() const { return accessibleName_; }
  void setAccessibleName(std::string name);

  /// For the shell: called after any change of what is shown.
  std::function<void()> onChange;
  /// For a binding to a settings store: called after the user gave the control a new value.
  std::function<void()> onUserEdit;

 protected:
  void didChange() const {
    if (onChange) onChange();
  }
  [[nodiscard]] bool takesUserActs() const { return enabled_ && !hidden_; }

 private:
  bool enabled_ = true;
  bool hidden_ = false;
  Rect frame_;
  std::string toolTip_;
  std::string accessibleName_;
};

}  // namespace corvane

#include "controls/Control.h"

#include <utility>

namespace corvane {

void Control::setEnabled(bool enabled) {
  if (enabled == enabled_) return;
  enabled_ = enabled;
  didChange();
}

void Control::setHidden(bool hidden) {
  if (hidden == hidden_) return;
  hidden_ = hidden;
  didChange();
}

void Control::setFrame(const Rect& frame) {
  if (frame == frame_) return;
  frame_ = frame;
  didChange();
}

void Control::setToolTip(std::string text) {
  if (text == toolTip_) return;
  toolTip_ = std::move(text);
  didChange();
}

void Control::setAccessibleName(std::string name) {
  if (name == accessibleName_) return;
  accessibleName_ = std::move(name);
  didChange();
}

}  // namespace corvane

// What every binder does: it ties one control of the core to one widget, shows the control after each change
// (enabled, hidden, tool tip, accessible name, and what its kind adds) and hands the user's acts back. A
// binder lives as long as its widget, the control must live longer. A binder holds no values and decides
// nothing.
#pragma once

#include <QObject>
#include <QWidget>

#include "controls/Control.h"

namespace corvane::qt {

/// Who places the widget.
enum class Placement {
  Layout,      // the interface file
  Horizontal,  // x and width are the control's frame, the rest the interface file's
  Frame,       // the control's frame; the vertical axis is turned round
};

class Binder : public QObject {
  Q_OBJECT

 public:
  ~Binder() override;
  void setPlacement(Placement placement);

 protected:
  Binder(Control& control, QWidget& widget);
  /// Called by the constructor of each kind when everything is wired, then after each change.
  void refresh();
  /// Shows what the kind adds.
  virtual void show() = 0;
  /// Which widget has the control's accessible name; a kind may show its control in several.
  [[nodiscard]] virtual QWidget& namedWidget() { return widget_; }
  /// Whether an act that reached the widget may reach the control: not while the widget is hidden or a
  /// sheet or a panel stands before it. Mouse and keyboard don't get there then; assistive technology does.
  [[nodiscard]] bool isInReach() const;
  /// Whether the widget takes acts at all; a kind may take some while its control is disabled.
  [[nodiscard]] virtual bool takesActs() const { return control_.enabled(); }
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void enableOrDisable();
  void showOrHide();
  void place();

  Control& control_;
  QWidget& widget_;
  Placement placement_ = Placement::Layout;
};

}  // namespace corvane::qt

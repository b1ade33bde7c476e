// What every binder does: it ties one control of the core to one widget, shows the control after each change
// (enabled, hidden, tool tip, accessible name, and what its kind adds) and hands the user's acts back. A
// binder lives as long as its widget, the control must live longer. A binder holds no values and decides
// nothing.
#pragma once

#include <QObject>
#include <QWidget>

#include "controls/Control.h"

namespace corvane::qt {

class Binder : public QObject {
  Q_OBJECT

 public:
  ~Binder() override;
  /// From now on x and width are those of the control's frame; the rest stays the interface file's.
  void placeHorizontally();

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
  void showToolTip();
  void enableOrDisable();
  void showOrHide();
  void place();

  Control& control_;
  QWidget& widget_;
  bool isPlacedHorizontally_ = false;
};

}  // namespace corvane::qt

// Takes down which controls the mouse or the keyboard has really met, from the events themselves: a story
// cannot claim to have used what it never touched.
#pragma once

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QTabBar>
#include <QWidget>
#include <set>
#include <string>

namespace corvane::test {

class UseRecorder final : public QObject {
 public:
  UseRecorder() { qApp->installEventFilter(this); }

  std::set<std::string> clicked;   // pressed and released with the mouse
  std::set<std::string> assisted;  // acted on by assistive technology, which says so itself
  std::set<std::string> typedIn;   // met by a key other than those that only go from control to control

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr) return false;
    if (event->type() == QEvent::MouseButtonRelease) clicked.insert(nameOf(*widget));
    if (event->type() == QEvent::KeyPress && widget->window()->focusWidget() == widget) {
      const int key = static_cast<QKeyEvent*>(event)->key();
      if (key != Qt::Key_Tab && key != Qt::Key_Backtab) typedIn.insert(nameOf(*widget));
    }
    return false;
  }

 private:
  /// The name in the interface file: the bar stands for its tab view, the viewport for its list.
  [[nodiscard]] static std::string nameOf(const QWidget& widget) {
    const bool isPart = qobject_cast<const QTabBar*>(&widget) != nullptr ||
                        widget.objectName() == QLatin1String("qt_scrollarea_viewport");
    const QWidget* named = isPart && widget.parentWidget() != nullptr ? widget.parentWidget() : &widget;
    return named->objectName().toStdString();
  }
};

}  // namespace corvane::test

// The sheet of one window: it slides down from the window's top and stays attached to it until it is closed.
// While it is open the window behind takes no acts, and nothing waits: whoever opens a sheet hears of its end
// by its own means. One sheet at a time; the core lets further ones wait.
#pragma once

#include <QPointer>
#include <QWidget>

class QPropertyAnimation;
class QVBoxLayout;

namespace corvane::qt {

class SheetPanel;

class SheetHost final : public QWidget {
  Q_OBJECT

 public:
  explicit SheetHost(QWidget* window);
  ~SheetHost() override;

  /// Shows the contents as the sheet. They belong to the window from now on.
  void open(QWidget* contents);
  /// Takes the sheet away if it shows these contents, which stay alive, hidden.
  void close(QWidget* contents);
  /// The contents of the sheet that is open, or null.
  [[nodiscard]] QWidget* current() const { return current_; }
  /// Whether it is still on its way down.
  [[nodiscard]] bool isSliding() const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void place();
  void keepFocus(QWidget* now);

  SheetPanel* panel_;
  QPropertyAnimation* slide_;
  QPointer<QWidget> current_;
  QPointer<QWidget> focusBefore_;   // in the window, before the sheet
  QPointer<QWidget> focusInSheet_;  // the last one
};

}  // namespace corvane::qt

// A bar of tabs in the middle of the upper edge of a box that holds the pages. It only shows: which tab is
// selected is set by the binder, the user's choice is reported and taken back when it is refused.
#pragma once

#include <QWidget>

class QStackedWidget;
class QTabBar;

namespace corvane::qt {

class TabPane final : public QWidget {
  Q_OBJECT

 public:
  explicit TabPane(QWidget* parent = nullptr);

  [[nodiscard]] QTabBar& bar() const { return *bar_; }
  [[nodiscard]] int count() const;
  void addTab(const QString& label);
  /// Puts the page in the place of what the tab has shown so far; takes it over.
  void setPage(int index, QWidget* page);
  [[nodiscard]] QWidget* page(int index) const;
  void showTab(int index);
  /// The user goes on by so many tabs; after the last one comes the first.
  void chooseNext(int step);
  [[nodiscard]] int shownTab() const;

 signals:
  void tabChosen(int index);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QTabBar* bar_;
  QStackedWidget* pages_;
};

}  // namespace corvane::qt

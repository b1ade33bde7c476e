// The page of the Options tab: its widgets in their layout, each bound to the control of the same name. The
// box with the settings of a volume lies over the table, where the core has placed it; the sheet opens in the
// window that holds the page.
#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>

#include "options/OptionsTabView.h"

namespace Ui {
class OptionsTabPage;
class TimeMachineSheet;
}  // namespace Ui

namespace corvane::qt {

class SheetHost;

class OptionsTabPage final : public QWidget {
  Q_OBJECT

 public:
  /// The controls must live longer than the page.
  OptionsTabPage(OptionsTabView& view, SheetHost& sheets, QWidget* parent = nullptr);
  ~OptionsTabPage() override;

 private:
  void bindVolumes();
  void bindRows();
  void bindSheet(SheetHost& sheets);
  void placeBox();
  bool eventFilter(QObject* watched, QEvent* event) override;

  OptionsTabView& view_;
  std::unique_ptr<Ui::OptionsTabPage> ui_;
  std::unique_ptr<Ui::TimeMachineSheet> sheetUi_;
  QPointer<QWidget> sheet_;  // the window's sheet host owns it
};

}  // namespace corvane::qt

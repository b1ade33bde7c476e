// Narrows an outline to the rows that contain what is typed in a field: rows of the top level and of the
// level below them, by their words and by the names that they are stored under. It hides rows of the widget
// alone. The core's rows are all there; those of the top level that had to be opened for what is found below
// them are closed again at the end.
#pragma once

#include <QObject>
#include <set>
#include <string>

#include "controls/OutlineView.h"

class QLabel;
class QLineEdit;
class QModelIndex;

namespace corvane::qt {

class OutlineTree;

class OutlineFinder final : public QObject {
  Q_OBJECT

 public:
  /// After the outline's binder, whose rows these are. Escape in the field ends the finding, Return and the
  /// Down key go to the first row that was found. `nothing` is shown in place of the rows when there are
  /// none.
  OutlineFinder(OutlineView& outline, OutlineTree& tree, QLineEdit& field, QLabel& nothing);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void narrow();
  /// Whether anything in the row of the top level, or below it, was found.
  bool narrowRow(const OutlineItem& item, int row);
  [[nodiscard]] bool contains(const OutlineItem& item) const;
  void closeWhatWasOpened();
  void goToFirst();

  OutlineView& outline_;
  OutlineTree& tree_;
  QLineEdit& field_;
  QLabel& nothing_;
  std::set<std::string> opened_;  // rows of the top level, by their persistent names
};

}  // namespace corvane::qt

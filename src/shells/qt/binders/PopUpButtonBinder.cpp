#include "binders/PopUpButtonBinder.h"

#include <QAbstractItemView>
#include <QSignalBlocker>

#include "Text.h"

namespace corvane::qt {

PopUpButtonBinder::PopUpButtonBinder(PopUpButton& button, QComboBox& widget)
    : Binder(button, widget), button_(button), widget_(widget) {
  for (const std::string& item : button_.items()) widget_.addItem(toQString(item));
  connect(&widget_, &QComboBox::currentIndexChanged, this, &PopUpButtonBinder::choose);
  connect(widget_.view()->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this](const QItemSelection& selected) {
            // Assistive technology chooses in the closed list. In the open one the mark follows the mouse.
            if (!widget_.view()->isVisible() && !selected.isEmpty()) choose(selected.indexes().first().row());
          });
  refresh();
}

void PopUpButtonBinder::choose(int index) {
  if (isInReach()) button_.choose(index);
  refresh();  // the control may have refused the choice
}

void PopUpButtonBinder::show() {
  const QSignalBlocker blocker(widget_);
  widget_.setCurrentIndex(button_.indexOfSelectedItem());
  showInList();
}

// The toolkit marks the chosen item only when it opens the list, but the closed one is read out as well.
void PopUpButtonBinder::showInList() {
  QItemSelectionModel& marks = *widget_.view()->selectionModel();
  const QModelIndex chosen = widget_.model()->index(widget_.currentIndex(), widget_.modelColumn());
  if (widget_.view()->isVisible() || marks.selectedIndexes() == QModelIndexList{chosen}) return;
  const QSignalBlocker blocker(marks);
  marks.select(chosen, QItemSelectionModel::ClearAndSelect);
}

}  // namespace corvane::qt

// The tree widget of an outline. It draws a disclosure triangle only for the rows that are to show one,
// tracks presses on the controls that are drawn in the cells, and reports what the user does instead of
// acting by itself.
#pragma once

#include <QElapsedTimer>
#include <QPersistentModelIndex>
#include <QTreeView>
#include <functional>

namespace corvane::qt {

/// What a press at a point of a cell does.
enum class CellAct {
  None,
  Press,  // a button: acts when the mouse is released over it
  Edit,   // a field or a menu: opens at once
};

struct CellTarget {
  CellAct act = CellAct::None;
  QRect place;  // all points where a press does this, in the viewport
};

class OutlineTree final : public QTreeView {
  Q_OBJECT

 public:
  explicit OutlineTree(QWidget* parent = nullptr);

  /// Asked for what is to be kept while a picture of the rows is drawn.
  std::function<std::shared_ptr<const void>()> drawsRows;
  /// Which rows show the triangle.
  std::function<bool(const QModelIndex&)> showsTriangle;
  /// What a press of the mouse would do at this point of the viewport. Asked for a press alone: finding out
  /// may read what is stored.
  std::function<CellTarget(const QModelIndex&, const QPoint&)> targetAt;
  /// What the mouse looks like at this point: a hand over a link, a bar over what is typed in.
  std::function<Qt::CursorShape(const QModelIndex&, const QPoint&)> shapeAt;

  /// Whether the button in the cell is held down now.
  [[nodiscard]] bool isPressed(const QModelIndex& index) const { return isOverPressed_ && index == pressed_; }
  /// Whether the user is in the middle of something: types in a cell or holds the mouse button.
  [[nodiscard]] bool isBusy() const { return isMouseDown_ || state() == EditingState; }
  /// What the row says, without the blanks around it.
  [[nodiscard]] QString wordsOf(const QModelIndex& row) const;
  /// Whether the row is hidden among its neighbours, or one that it stands below is.
  [[nodiscard]] bool isLeftOut(const QModelIndex& index) const;
  /// Makes the cell the current one without moving the rows.
  void setCurrentCell(const QModelIndex& index);
  /// Goes to the next row that begins with what is being typed; the same letter again goes on to the next
  /// one.
  void keyboardSearch(const QString& letters) override;
  /// Lays the rows out when their places are needed next, once for all that changes until then.
  using QTreeView::scheduleDelayedItemsLayout;
  /// Gives the keyboard to the control before or after the tree.
  void leave(bool forward) { focusNextPrevChild(forward); }

  /// Shown while there are no rows.
  void setPlaceholder(const QString& text) { placeholder_ = text; }

 signals:
  /// The triangle of the row was clicked, or its key was pressed.
  void triangleClicked(const QModelIndex& index);
  /// The button in the cell was clicked.
  void cellClicked(const QModelIndex& index);
  /// The field or menu in the cell was pressed at this point of the viewport.
  void editorPressed(const QModelIndex& index, const QPoint& point);
  /// Space, Return or F2 on the current row.
  void rowActivated(const QModelIndex& index);
  /// An editor in the cell was left with the Tab key.
  void editorTabbed(const QModelIndex& index, bool forward);
  /// `isBusy` may have changed.
  void busyChanged();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
  void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
  bool viewportEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

 private:
  [[nodiscard]] bool hasTriangle(const QModelIndex& index) const;
  /// The row whose triangle is at this point.
  [[nodiscard]] QModelIndex triangleAt(const QPoint& point) const;
  /// True when the press was on a triangle or a control and has been dealt with.
  bool takePress(const QMouseEvent& event);
  /// The button in the cell is no longer held down.
  void endPress();
  void stepSideways(bool opens);
  /// Tells assistive technology which row the keyboard is on.
  void tellFocus();
  void setMouseDown(bool isDown);
  void setMarksCurrentRow(bool marks);
  void showShapeAt(const QPoint& point);
  void activateCurrentRow();
  /// Whether the next letter goes on with a word that is being typed.
  [[nodiscard]] bool isSearching() const;
  QString placeholder_;
  QPersistentModelIndex pressed_;
  QRect pressedPlace_;  // of the button that is held down, from its cell's corner
  bool isOverPressed_ = false;
  bool isMouseDown_ = false;
  bool tookPress_ = false;        // of the left button, which is still held: its moves select no rows
  bool marksCurrentRow_ = false;  // the keyboard is being used
  QString sought_;                // the letters typed so far
  QElapsedTimer sinceLetter_;     // invalid: none is typed
};

}  // namespace corvane::qt

// The tree widget of an outline. It draws a disclosure triangle only for the rows that are to show one and
// reports what the user does to them instead of acting by itself.
#pragma once

#include <QTreeView>
#include <functional>

namespace corvane::qt {

class OutlineTree final : public QTreeView {
  Q_OBJECT

 public:
  explicit OutlineTree(QWidget* parent = nullptr);

  /// Which rows show the triangle.
  std::function<bool(const QModelIndex&)> showsTriangle;

 signals:
  /// The triangle of the row was clicked, or its key was pressed.
  void triangleClicked(const QModelIndex& index);
  /// Space or Return on the current cell.
  void cellPressed(const QModelIndex& index);

 protected:
  void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  [[nodiscard]] bool hasTriangle(const QModelIndex& index) const;
  /// The row whose triangle is at this point.
  [[nodiscard]] QModelIndex triangleAt(const QPoint& point) const;
};

}  // namespace corvane::qt

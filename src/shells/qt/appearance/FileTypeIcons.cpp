#include "appearance/FileTypeIcons.h"

#include <QPainter>
#include <QPainterPath>

namespace corvane::qt {
namespace {

// All on a square of 16 units.

void drawFolder(QPainter& painter) {
  QPainterPath folder;
  folder.moveTo(1.5, 4);
  folder.lineTo(1.5, 13);
  folder.lineTo(14.5, 13);
  folder.lineTo(14.5, 4.8);
  folder.lineTo(8, 4.8);
  folder.lineTo(6.6, 3);
  folder.lineTo(1.5, 3);
  folder.closeSubpath();
  painter.setPen(QPen(QColor(0x3c, 0x7d, 0xb8), 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(QColor(0x7f, 0xbd, 0xee));
  painter.drawPath(folder);
}

void drawDocument(QPainter& painter) {
  QPainterPath sheet;
  sheet.moveTo(3, 1.5);
  sheet.lineTo(9.5, 1.5);
  sheet.lineTo(13, 5);
  sheet.lineTo(13, 14.5);
  sheet.lineTo(3, 14.5);
  sheet.closeSubpath();
  painter.setPen(QPen(QColor(0x80, 0x84, 0x8c), 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(QColor(0xfb, 0xfb, 0xfd));
  painter.drawPath(sheet);
  painter.drawPolyline(QPolygonF({QPointF(9.5, 1.5), QPointF(9.5, 5), QPointF(13, 5)}));
  painter.drawLine(QPointF(5.2, 8), QPointF(10.8, 8));
  painter.drawLine(QPointF(5.2, 10.8), QPointF(10.8, 10.8));
}

void drawWasteBin(QPainter& painter, const QColor& color) {
  painter.setPen(QPen(color, 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(Qt::NoBrush);
  painter.drawLine(QPointF(2.5, 4), QPointF(13.5, 4));
  painter.drawPolyline(QPolygonF({QPointF(6, 3.8), QPointF(6.4, 2), QPointF(9.6, 2), QPointF(10, 3.8)}));
  painter.drawPolyline(
      QPolygonF({QPointF(3.8, 4.2), QPointF(4.6, 14), QPointF(11.4, 14), QPointF(12.2, 4.2)}));
  painter.drawLine(QPointF(6.6, 6.6), QPointF(6.9, 11.6));
  painter.drawLine(QPointF(9.4, 6.6), QPointF(9.1, 11.6));
}

}  // namespace

void drawFileTypeIcon(QPainter& painter, const QRect& rect, const FileTypeIcon& icon, const QPalette& palette,
                      bool enabled) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  if (!enabled) painter.setOpacity(0.5);
  painter.translate(rect.topLeft());
  painter.scale(rect.width() / 16.0, rect.height() / 16.0);
  if (icon.typeCode == "fldr") {
    drawFolder(painter);
  } else if (icon.typeCode == "docu") {
    drawDocument(painter);
  } else if (icon.typeCode == "trsh") {
    drawWasteBin(painter, palette.color(QPalette::Active, QPalette::PlaceholderText));
  }
  painter.restore();
}

}  // namespace corvane::qt

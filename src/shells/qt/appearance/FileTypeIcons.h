// Small pictures for the classic file type codes.
#pragma once

#include <QPalette>
#include <QRect>

#include "platform/Workspace.h"

class QPainter;

namespace corvane::qt {

/// "fldr" a folder, "docu" a document, "trsh" a waste bin; any other code draws nothing. Own drawings, so
/// that they look the same on every desktop.
void drawFileTypeIcon(QPainter& painter, const QRect& rect, const FileTypeIcon& icon, const QPalette& palette,
                      bool enabled);

}  // namespace corvane::qt

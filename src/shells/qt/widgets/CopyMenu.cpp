#include "widgets/CopyMenu.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QWidget>
#include <utility>

namespace corvane::qt {

void offerCopy(QWidget& shown, std::function<QString()> wholeText) {
  auto* copy = new QAction(QStringLiteral("Copy"), &shown);
  shown.addAction(copy);
  shown.setContextMenuPolicy(Qt::ActionsContextMenu);
  if (shown.focusPolicy() != Qt::NoFocus) {
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
  }
  QObject::connect(copy, &QAction::triggered, &shown, [wholeText = std::move(wholeText)] {
    if (const QString text = wholeText(); !text.isEmpty()) QGuiApplication::clipboard()->setText(text);
  });
}

}  // namespace corvane::qt

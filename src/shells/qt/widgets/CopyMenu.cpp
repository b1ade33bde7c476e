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
  QObject::connect(copy, &QAction::triggered, &shown, [wholeText = std::move(wholeText)] {
    QGuiApplication::clipboard()->setText(wholeText());
  });
}

}  // namespace corvane::qt

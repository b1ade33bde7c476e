#include "services/TestingPanel.h"

#include <QDialog>
#include <QSocketNotifier>

#include "ui_TestingPanel.h"

namespace corvane::qt {

bool waitReadable(QWidget* window, int descriptor) {
  QDialog panel(window);
  Ui::TestingPanel ui;
  ui.setupUi(&panel);
  panel.setWindowModality(Qt::ApplicationModal);
  panel.setWindowTitle(QStringLiteral("Testing settings…"));
  ui.message->setText(panel.windowTitle());
  ui.progress->setAccessibleName(panel.windowTitle());
  ui.cancelButton->setText(QStringLiteral("Cancel"));
  QObject::connect(ui.cancelButton, &QPushButton::clicked, &panel, &QDialog::reject);

  QSocketNotifier notifier(descriptor, QSocketNotifier::Read);
  QObject::connect(&notifier, &QSocketNotifier::activated, &panel, [&] {
    notifier.setEnabled(false);
    panel.accept();
  });
  return panel.exec() == QDialog::Accepted;
}

}  // namespace corvane::qt

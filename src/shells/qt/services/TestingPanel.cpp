#include "services/TestingPanel.h"

#include <QDialog>
#include <QSocketNotifier>

#include "Fonts.h"
#include "Text.h"
#include "ui_TestingPanel.h"
#include "widgets/ButtonKeys.h"

namespace corvane::qt {
namespace {

/// No key presses "Cancel" but Escape, and Space on the button itself: the Return that has begun the test may
/// come twice.
class TestingPanel final : public QDialog {
 public:
  using QDialog::QDialog;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (!pressButtonOf(*this, *event)) QDialog::keyPressEvent(event);
  }
};

}  // namespace

bool waitReadable(QWidget* window, int descriptor, const QString& tree) {
  TestingPanel panel(window);
  Ui::TestingPanel ui;
  ui.setupUi(&panel);
  scaleToFont(panel);
  panel.setWindowModality(Qt::ApplicationModal);
  panel.setWindowTitle(QStringLiteral("Testing settings…"));
  ui.message->setText(panel.windowTitle());
  ui.tree->setText(tree);
  ui.tree->setToolTip(plainToolTip(fromQString(tree)));
  ui.tree->setVisible(!tree.isEmpty());
  ui.progress->setAccessibleName(panel.windowTitle());
  ui.cancelButton->setText(QStringLiteral("Cancel"));
  QObject::connect(ui.cancelButton, &QPushButton::clicked, &panel, &QDialog::reject);
  ui.cancelButton->setFocus();

  QSocketNotifier notifier(descriptor, QSocketNotifier::Read);
  QObject::connect(&notifier, &QSocketNotifier::activated, &panel, [&] {
    notifier.setEnabled(false);
    panel.accept();
  });
  return panel.exec() == QDialog::Accepted;
}

}  // namespace corvane::qt

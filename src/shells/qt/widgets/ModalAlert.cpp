#include "widgets/ModalAlert.h"

#include <QDialog>
#include <QVBoxLayout>

#include "Text.h"
#include "widgets/AlertPanel.h"
#include "widgets/ButtonKeys.h"

namespace corvane::qt {
namespace {

/// Ends only through its buttons: the window's own ways to close it press the button that leaves everything
/// as it is.
class ModalAlert final : public QDialog {
 public:
  ModalAlert(const AlertDescription& alert, const QString& note, QWidget* parent)
      : QDialog(parent), panel_(new AlertPanel(alert, note)) {
    setObjectName(QStringLiteral("modalAlert"));
    setWindowTitle(toQString(alert.messageText));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(panel_);
    connect(panel_, &AlertPanel::ended, this, [this](const AlertResult& result) {
      result_ = result;
      accept();
    });
  }
  void reject() override { panel_->cancel(); }
  [[nodiscard]] const AlertResult& alertResult() const { return result_; }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (!pressButtonOf(*this, *event)) QDialog::keyPressEvent(event);
  }

 private:
  AlertPanel* panel_;
  AlertResult result_;
};

}  // namespace

AlertResult runModalAlert(const AlertDescription& alert, const QString& note, QWidget* window) {
  ModalAlert dialog(alert, note, window);
  dialog.exec();
  return dialog.alertResult();
}

}  // namespace corvane::qt

#include "widgets/AlertPanel.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTextBoundaryFinder>
#include <algorithm>

#include "Fonts.h"
#include "Text.h"
#include "appearance/Appearance.h"
#include "appearance/Shapes.h"
#include "ui_AlertPanel.h"
#include "widgets/CheckBox.h"
#include "widgets/PushButton.h"
#include "widgets/ScrollingText.h"

namespace corvane::qt {
namespace {

// In points.
constexpr double kIconSize = 64;
constexpr double kSmallestButton = 84;

QPixmap alertIcon(const AlertDescription& alert, qreal scale) {
  const QIcon icon = alert.iconPath.empty() ? productIcon() : QIcon(toQString(alert.iconPath));
  const int side = toPixels(kIconSize);
  QPixmap picture = icon.pixmap(QSize(side, side), scale);
  if (alert.style == AlertStyle::Critical && !picture.isNull()) {
    QPainter painter(&picture);
    drawCaution(painter, QRectF(side * 0.53, side * 0.56, side * 0.47, side * 0.44));
  }
  return picture;
}

/// The text with places to break its longest words at, such as paths: a label breaks lines between words only
/// and would cut them off.
QString breakable(const QString& text) {
  constexpr int kFittingWord = 30;
  const QChar mayBreakHere(0x200b);
  QString result;
  QTextBoundaryFinder letters(QTextBoundaryFinder::Grapheme, text);
  int wordStart = 0;
  for (qsizetype from = 0, to = letters.toNextBoundary(); to > from;
       from = to, to = letters.toNextBoundary()) {
    if (text.at(from).isSpace()) wordStart = static_cast<int>(to);
    if (from - wordStart >= kFittingWord) result += mayBreakHere;
    result += QStringView(text).mid(from, to - from);
  }
  return result;
}

}  // namespace

AlertPanel::AlertPanel(const AlertDescription& alert, const QString& note, QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::AlertPanel>()) {
  ui_->setupUi(this);
  scaleToFont(*this);
  setFocusPolicy(Qt::ClickFocus);
  setWindowTitle(toQString(alert.messageText));
  ui_->icon->setPixmap(alertIcon(alert, devicePixelRatioF()));
  ui_->message->setText(toQString(alert.messageText));
  QFont bold = font();
  bold.setBold(true);
  ui_->message->setFont(bold);
  // A trailing line break is part of some texts; it would only show as an empty line.
  QString informative = toQString(alert.informativeText);
  while (informative.endsWith(QLatin1Char('\n'))) informative.chop(1);
  ui_->informative->setText(breakable(informative));
  ui_->informative->setAccessibleName(informative);
  setAccessibleDescription(note.isEmpty() ? informative : informative + QLatin1Char('\n') + note);
  ui_->informativeScroll->setVisible(!informative.isEmpty());
  ui_->note->setText(breakable(note));
  ui_->note->setAccessibleName(note);
  ui_->note->setVisible(!note.isEmpty());
  if (alert.accessory) addAccessory(*alert.accessory);
  addButtons(alert);
}

AlertPanel::~AlertPanel() = default;

void AlertPanel::addAccessory(const AlertCheckBox& checkBox) {
  const QString title = withoutShortcuts(toQString(checkBox.title));
  // What never has the keyboard is switched by its first letter with Alt.
  accessory_ = new CheckBox(checkBox.refusesFirstResponder ? QLatin1Char('&') + title : title, this);
  accessory_->setObjectName(QStringLiteral("accessory"));
  accessory_->setAccessibleName(toQString(checkBox.title));
  accessory_->setChecked(checkBox.on);
  accessory_->setMinimumSize(toPixels(checkBox.width), toPixels(checkBox.height));
  if (checkBox.refusesFirstResponder) accessory_->setFocusPolicy(Qt::NoFocus);
  ui_->accessoryLayout->addWidget(accessory_);
}

void AlertPanel::addButtons(const AlertDescription& alert) {
  for (std::size_t index = 0; index < alert.buttons.size(); ++index) {
    const AlertButton& description = alert.buttons[index];
    auto* button = new PushButton(withoutShortcuts(toQString(description.title)), this);
    button->setObjectName(toQString("button " + description.title));
    button->setAccessibleName(toQString(description.title));
    button->setMinimumWidth(toPixels(kSmallestButton));
    ui_->buttonLayout->insertWidget(1, button);  // the first button ends up rightmost
    connect(button, &QAbstractButton::clicked, this, [this, index] { finish(static_cast<int>(index)); });
    buttons_.push_back(button);
    // By the platform's rule the first button has the Return key unless the alert says otherwise.
    const std::string key = description.keyEquivalent.value_or(index == 0 ? kReturnKey : "");
    if (key == kReturnKey && default_ == nullptr) default_ = button;
    if (&description == escapeButton(alert)) cancel_ = button;
  }
  if (cancel_ != nullptr) cancel_->setEscapes(true);
  // The Tab key goes from the left to the right.
  for (std::size_t index = buttons_.size(); index-- > 1;) setTabOrder(buttons_[index], buttons_[index - 1]);
  if (default_ != nullptr) {
    default_->setDefault(true);
    setFocusProxy(default_);
  }
}

void AlertPanel::finish(int index) {
  if (ended_) return;
  ended_ = true;
  AlertResult result;
  result.returnCode = kAlertFirstButtonReturn + index;
  result.accessoryOn = accessory_ != nullptr && accessory_->isChecked();
  emit ended(result);
}

void AlertPanel::cancel() {
  if (cancel_ != nullptr) cancel_->click();
}

void AlertPanel::keyPressEvent(QKeyEvent* event) {
  QScrollBar* bar = ui_->informativeScroll->verticalScrollBar();
  switch (event->key()) {
    case Qt::Key_PageUp:
      bar->triggerAction(QAbstractSlider::SliderPageStepSub);
      return;
    case Qt::Key_PageDown:
      bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace corvane::qt

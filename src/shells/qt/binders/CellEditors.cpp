#include "binders/CellEditors.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QListView>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QStringListModel>
#include <QStyleOption>
#include <QWheelEvent>

#include "Text.h"
#include "widgets/EntryField.h"
#include "widgets/MenuBox.h"

namespace corvane::qt {
namespace {

/// The cell is asked about every text before it is taken.
EntryField::Owner ownerOf(const CellReference& cell) {
  return [cell](const QString& proposed) -> std::optional<QString> {
    const PartialStringCheck check = OutlineView::checkPartialString(*cell, fromQString(proposed));
    if (check.valid) return proposed;
    if (check.newEditingString) return toQString(*check.newEditingString);
    return std::nullopt;
  };
}

/// Hands the press that opened the editor on to it, so that a menu opens under the mouse.
void passOnPress(QWidget& editor, const QPoint& point) {
  QMouseEvent press(QEvent::MouseButtonPress, point, editor.mapToGlobal(point), Qt::LeftButton,
                    Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&editor, &press);
}

class FieldEditor final : public EntryField, public CellEditor {
 public:
  FieldEditor(const CellReference& cell, const std::string& text, const std::string& placeholder,
              QWidget* parent)
      : EntryField(parent), before_(toQString(text)) {
    setPlaceholderText(toQString(placeholder));
    showText(before_);
    setOwner(ownerOf(cell));
  }
  void begin(std::optional<QPoint> /*press*/) override { selectAll(); }
  [[nodiscard]] std::optional<PropertyList> newValue() const override {
    if (standingText() == before_) return std::nullopt;
    return PropertyList::string(fromQString(standingText()));
  }

 private:
  QString before_;
};

class NumberEditor final : public MenuBox, public CellEditor {
 public:
  NumberEditor(const CellReference& cell, const ComboBoxCell& numbers, QWidget* parent)
      : MenuBox(parent), field_(new EntryField), before_(toQString(numbers.text)) {
    setLineEdit(field_);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);  // would put numbers in that nobody has typed
    // A range may hold very many numbers: none of them is measured.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    if (auto* list = qobject_cast<QListView*>(view())) list->setUniformItemSizes(true);
    QStringList items;
    for (const std::int32_t number : numbers.items) items.append(QString::number(number));
    setModel(new QStringListModel(items, this));
    setCurrentIndex(static_cast<int>(items.indexOf(before_)));
    field_->showText(before_);
    field_->setOwner(ownerOf(cell));
    connect(this, &QComboBox::activated, this, [this] {
      if (!isTyping_ && onChosen) onChosen();
    });
  }
  void begin(std::optional<QPoint> press) override {
    field_->selectAll();
    if (press && isOnArrow(*press)) passOnPress(*this, *press);
  }
  [[nodiscard]] std::optional<PropertyList> newValue() const override {
    if (field_->standingText() == before_) return std::nullopt;
    return PropertyList::string(fromQString(field_->standingText()));
  }

 protected:
  // The arrow keys go through the numbers without ending the editing.
  void keyPressEvent(QKeyEvent* event) override {
    const QScopedValueRollback<bool> typing(isTyping_, true);
    QComboBox::keyPressEvent(event);
  }
  void wheelEvent(QWheelEvent* event) override { event->ignore(); }

 private:
  [[nodiscard]] bool isOnArrow(const QPoint& point) const {
    QStyleOptionComboBox option;
    initStyleOption(&option);
    return style()->hitTestComplexControl(QStyle::CC_ComboBox, &option, point, this) ==
           QStyle::SC_ComboBoxArrow;
  }

  EntryField* field_;
  QString before_;
  bool isTyping_ = false;
};

class PopUpEditor final : public MenuBox, public CellEditor {
 public:
  PopUpEditor(const PopUpButtonCell& menu, QWidget* parent) : MenuBox(parent) {
    for (const std::string& item : menu.items) addItem(toQString(item));
    setCurrentIndex(menu.selectedIndex);
    connect(this, &QComboBox::activated, this, [this](int index) {
      chosen_ = index;
      if (onChosen) onChosen();
    });
  }
  void begin(std::optional<QPoint> press) override {
    if (press) {
      passOnPress(*this, *press);
    } else {
      showPopup();
    }
    view()->window()->installEventFilter(this);
  }
  /// The item that is shown already is a choice too: it may be shown because nothing is stored.
  [[nodiscard]] std::optional<PropertyList> newValue() const override {
    return chosen_ < 0 ? std::nullopt : std::optional(PropertyList::integer(chosen_));
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Hide && watched == view()->window()) {
      // A choice comes right after the menu has closed.
      QMetaObject::invokeMethod(
          this,
          [this] {
            if (onDismissed) onDismissed();
          },
          Qt::QueuedConnection);
    }
    return QComboBox::eventFilter(watched, event);
  }
  void wheelEvent(QWheelEvent* event) override { event->ignore(); }

 private:
  int chosen_ = -1;
};

}  // namespace

bool isTypedIn(const Cell& cell) {
  if (const auto* text = std::get_if<TextFieldCell>(&cell)) return text->editable;
  if (const auto* secret = std::get_if<SecureTextFieldCell>(&cell)) return secret->editable;
  if (const auto* numbers = std::get_if<ComboBoxCell>(&cell)) return numbers->editable;
  return false;
}

bool isEditedInPlace(const Cell& cell) {
  const auto* menu = std::get_if<PopUpButtonCell>(&cell);
  return isTypedIn(cell) || (menu != nullptr && !menu->items.empty());
}

QWidget* makeCellEditor(const CellReference& cell, QWidget* parent) {
  if (!isEditedInPlace(*cell)) return nullptr;
  if (const auto* menu = std::get_if<PopUpButtonCell>(cell.get())) return new PopUpEditor(*menu, parent);
  if (const auto* numbers = std::get_if<ComboBoxCell>(cell.get()))
    return new NumberEditor(cell, *numbers, parent);
  if (const auto* secret = std::get_if<SecureTextFieldCell>(cell.get())) {
    auto* field = new FieldEditor(cell, secret->text, secret->placeholder, parent);
    field->setEchoMode(secret->echosBullets ? QLineEdit::Password : QLineEdit::NoEcho);
    return field;
  }
  const auto& text = std::get<TextFieldCell>(*cell);
  return new FieldEditor(cell, text.text, text.placeholder, parent);
}

}  // namespace corvane::qt

// Who uses the window in a story: the same acts, done with the mouse or with the keyboard alone. An act goes
// where a person would put it (the place of a control, the control that has the keyboard), never to the
// control's own functions, and does not wait for what it leads to.
#pragma once

#include <QAbstractItemView>
#include <QModelIndex>
#include <set>
#include <string>

#include "Events.h"
#include "PaneWindow.h"
#include "widgets/OutlineTree.h"

namespace corvane::test {

/// A row of the Plugins tab: a plug-in, one of its options, or a value row of that option.
struct TreeRow {
  const char* plugin;
  const char* option = nullptr;
  int value = -1;
};

/// Part of a row that a person acts on.
enum class Spot { Tick, Control, Trash };

class Person {
 public:
  explicit Person(qt::PaneWindow& window) : window_(window) {}
  Person(const Person&) = delete;
  Person& operator=(const Person&) = delete;
  virtual ~Person() = default;

  /// Presses a button, a check box, the lock or a link.
  virtual void press(const char* control, Qt::KeyboardModifiers modifiers = {}) = 0;
  /// Puts a text in the place of what a field shows.
  virtual void fill(const char* field, const char* text) = 0;
  /// Presses Return in the field that is being typed in.
  virtual void confirm();
  /// Chooses an item of a menu.
  virtual void pick(const char* menu, const char* item) = 0;
  /// Chooses the tab; whatever stands before it is to be answered.
  virtual void chooseTab(int index) = 0;
  /// Selects the first row of a table that begins with the text.
  virtual void selectRow(const char* table, const char* text) = 0;
  /// Switches a check box of an alert that never has the keyboard.
  virtual void switchAccessory() = 0;

  // The rows of the Plugins tab. A row is brought into sight, and its plug-in opened, first.
  virtual void actOn(const TreeRow& row, Spot spot = Spot::Control) = 0;
  /// Opens the field of the row, puts the text in the place of what it holds, and ends the typing.
  virtual void fillCell(const TreeRow& row, const char* text) = 0;
  /// Chooses an item of the row's menu or list.
  virtual void pickInCell(const TreeRow& row, const char* item) = 0;

  /// Chooses an entry of the folder that an open panel shows.
  virtual void chooseEntry(QWidget& panel, const char* name) = 0;
  /// Presses the only button of a panel.
  virtual void cancelPanel(QWidget& panel) = 0;

  /// The list of a menu that is open now.
  [[nodiscard]] static QAbstractItemView* openList();

 protected:
  /// The control of this name that can be seen.
  [[nodiscard]] QWidget& visible(const char* name) const;
  [[nodiscard]] qt::OutlineTree& tree() const { return find<qt::OutlineTree>(window_, "pluginsTable"); }
  [[nodiscard]] QModelIndex pluginRow(const char* name) const;
  /// The row's cell with its text; invalid while its plug-in is closed.
  [[nodiscard]] QModelIndex cellOf(const TreeRow& row) const;
  /// What stands in the first line of a row.
  [[nodiscard]] static QString firstLine(const QModelIndex& row);
  /// The editor that is open in a cell.
  template <typename Editor>
  [[nodiscard]] Editor* editor() const {
    for (auto* widget : tree().viewport()->findChildren<Editor*>(QStringLiteral("cellEditor"))) {
      if (widget->isVisible()) return widget;
    }
    return nullptr;
  }
  /// The entry of the folder that an open panel shows, once it is listed.
  [[nodiscard]] static QModelIndex listedEntry(const QWidget& panel, const char* name);
  qt::PaneWindow& window_;
};

class MousePerson final : public Person {
 public:
  using Person::Person;
  void press(const char* control, Qt::KeyboardModifiers modifiers) override;
  void fill(const char* field, const char* text) override;
  void pick(const char* menu, const char* item) override;
  void chooseTab(int index) override;
  void selectRow(const char* table, const char* text) override;
  void switchAccessory() override;
  void actOn(const TreeRow& row, Spot spot) override;
  void fillCell(const TreeRow& row, const char* text) override;
  void pickInCell(const TreeRow& row, const char* item) override;
  void chooseEntry(QWidget& panel, const char* name) override;
  void cancelPanel(QWidget& panel) override;

 private:
  /// Turns the wheel over the view until the cell is in sight.
  static void scrollTo(QAbstractItemView& view, const QModelIndex& cell);
  static void chooseInOpenList(const char* item);
  [[nodiscard]] QModelIndex bringUp(const TreeRow& row);
};

class KeyboardPerson final : public Person {
 public:
  using Person::Person;
  void press(const char* control, Qt::KeyboardModifiers modifiers) override;
  void fill(const char* field, const char* text) override;
  void pick(const char* menu, const char* item) override;
  void chooseTab(int index) override;
  void selectRow(const char* table, const char* text) override;
  void switchAccessory() override;
  void actOn(const TreeRow& row, Spot spot) override;
  void fillCell(const TreeRow& row, const char* text) override;
  void pickInCell(const TreeRow& row, const char* item) override;
  void chooseEntry(QWidget& panel, const char* name) override;
  void cancelPanel(QWidget& panel) override;

 private:
  /// Goes on with the Tab key until the control has the keyboard.
  void tabTo(const QWidget& control);
  /// Where a key goes: to what is open above the window first.
  [[nodiscard]] QWidget* keyboardOwner() const;
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const;
  void keys(const QString& text) const;
  void goToRow(const TreeRow& row);
  void goDownTo(const QModelIndex& row);
};

}  // namespace corvane::test

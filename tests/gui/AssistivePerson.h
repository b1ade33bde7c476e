// A person who has nothing but assistive technology: things are found by what they are called, and acted on
// without mouse and keys.
#pragma once

#include <set>
#include <string>

#include "Assistive.h"
#include "Person.h"

namespace corvane::test {

class AssistivePerson final : public Person {
 public:
  /// Takes down there what was acted on, by its name in the interface file.
  AssistivePerson(qt::PaneWindow& window, std::set<std::string>& used) : Person(window), used_(used) {}

  void press(const char* control, Qt::KeyboardModifiers modifiers) override;
  void fill(const char* field, const char* text) override;
  /// A text is set as a whole; there is no end of the typing.
  void confirm() override {}
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
  /// What is called as this control is, found from the top of its window.
  [[nodiscard]] QAccessibleInterface& thing(const char* control);
  [[nodiscard]] static QAccessibleInterface& found(QWidget& control);
  /// Presses or switches, whichever the thing offers.
  static void use(QAccessibleInterface& thing);
  static void setText(QAccessibleInterface& field, const char* text);
  [[nodiscard]] QAccessibleInterface& rowOf(const TreeRow& row);

  std::set<std::string>& used_;
};

}  // namespace corvane::test

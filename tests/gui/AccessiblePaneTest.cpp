// What assistive technology finds in the whole pane, and what it hears while the pane is used.
#include <QAbstractItemView>
#include <QLineEdit>
#include <map>
#include <set>

#include "Assistive.h"
#include "GuiFixture.h"
#include "support/DemoClient.h"
#include "widgets/TabPane.h"

namespace corvane::test {
namespace {

class AccessiblePane : public GuiTest {
 protected:
  void SetUp() override { open(demo.root); }

  void enterTab(int index) {
    clickTab(index);
    if (sheet() != nullptr) answerSheet("Continue");
    ASSERT_EQ(window().tabs().shownTab(), index);
  }
  [[nodiscard]] static std::set<std::string> setOf(const QStringList& names) {
    std::set<std::string> set;
    for (const QString& name : names) set.insert(name.toStdString());
    return set;
  }

  DemoClient demo{"0"};
};

TEST_F(AccessiblePane, UnlockingTellsOfNoNameThatHasNotChanged) {
  enterTab(1);
  const Listener listener;
  openLock();
  const QString opened = QString::fromStdString(pane->assembly().view().authView.label());
  EXPECT_EQ(listener.toldNames(QAccessible::NameChanged),
            (QStringList{QStringLiteral("Lock, waiting"), QStringLiteral("Waiting for permission…"),
                         QStringLiteral("Lock, open"), opened}));
}

TEST_F(AccessiblePane, NothingButWhatHasTheKeyboardTellsOfAFocus) {
  openLock();
  widget("runIntervalTextField").setFocus();
  const Listener listener;
  pane->assembly().options().refresh();
  pane->assembly().pane().refresh();
  click(widget("authView"));
  EXPECT_EQ(setOf(listener.namesOf(QAccessible::Focus)).count("volumesTable"), 0U);
  EXPECT_EQ(setOf(listener.namesOf(QAccessible::SelectionAdd)), std::set<std::string>());
}

/// Things that are there to be used, and not to hold others or to be read.
bool isToBeUsed(QAccessibleInterface& thing) {
  switch (thing.role()) {
    case QAccessible::Button:
    case QAccessible::CheckBox:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::Link:
    case QAccessible::PageTab:
    case QAccessible::PageTabList:
    case QAccessible::Table:
    case QAccessible::Tree:
    case QAccessible::Dialog:
      return true;
    default:
      return false;
  }
}

TEST_F(AccessiblePane, WhatIsToBeUsedHasANameOfItsOwnAndWhatIsToBeReadHasItsText) {
  openLock();
  for (int tab = 0; tab < 3; ++tab) {
    enterTab(tab);
    std::map<QString, int> uses;
    for (QAccessibleInterface* thing : everythingBelow(accessible(window()))) {
      const QString name = nameOf(*thing);
      EXPECT_FALSE(thing->role() == QAccessible::StaticText && name.isEmpty()) << "a text without a text";
      if (!isToBeUsed(*thing)) continue;
      EXPECT_FALSE(name.isEmpty()) << (thing->object() != nullptr
                                           ? thing->object()->objectName().toStdString()
                                           : "")
                                   << " in tab " << tab;
      if (thing->object() != nullptr) ++uses[name];
    }
    for (const auto& [name, count] : uses) EXPECT_EQ(count, 1) << name.toStdString();
    EXPECT_GE(uses.size(), 5U);
  }
}

}  // namespace
}  // namespace corvane::test

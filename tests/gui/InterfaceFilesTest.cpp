// The interface files against the core: whatever a file puts into the window is a control that can be named,
// reached and shown by the core object of the same name, and every core object has its place in a file.
#include <QAbstractButton>
#include <QLabel>
#include <QTabBar>
#include <map>
#include <set>

#include "Assistive.h"
#include "GuiFixture.h"
#include "InterfaceFile.h"
#include "support/DemoClient.h"
#include "support/NamedControls.h"
#include "widgets/LabelButton.h"
#include "widgets/TabPane.h"

namespace corvane::test {
namespace {

using Names = std::set<std::string>;

/// The named widgets of an interface file.
Names widgetsOf(const char* interfaceFile) {
  Names names;
  for (const auto& [name, kind] : widgetsOfInterfaceFile(QStringLiteral(CORVANE_INTERFACE_FOLDER "/") +
                                                         QString::fromLatin1(interfaceFile))) {
    names.insert(name);
  }
  return names;
}

constexpr const char* kWindowFile = "PaneWindow.ui";
constexpr const char* kPageFiles[] = {"tabs/ConfigurationTabPage.ui", "tabs/OptionsTabPage.ui",
                                      "tabs/PluginsTabPage.ui"};
constexpr const char* kSheetFile = "tabs/TimeMachineSheet.ui";

Names allWidgets() {
  Names all = widgetsOf(kWindowFile);
  all.merge(widgetsOf(kSheetFile));
  for (const char* file : kPageFiles) all.merge(widgetsOf(file));
  return all;
}

/// Labels that show a text of a control that has a widget of its own, or of a window.
const Names kTextsOfOthers = {"authLabel", "sheetTitle", "treeField"};
/// Windows and areas: they are no widgets of the files, or only a frame there.
const Names kNoWidgets = {"mainWindow", "timeMachineAdvancedWindow", "volumesScrollView", "volumeOptionsBox"};

class InterfaceFiles : public GuiTest {
 protected:
  void SetUp() override {
    open(demo.root);
    openLock();
    enterTab(2);
    enterTab(0);
  }

  void enterTab(int index) {
    pane->assembly().view().tabView.selectTabViewItemAtIndex(index);
    if (sheet() != nullptr) answerSheet("Continue");
    ASSERT_EQ(window().tabs().shownTab(), index);
  }
  /// What the keyboard is given to: the tab view's is its bar.
  [[nodiscard]] QWidget& focusWidget(const std::string& name) {
    auto& found = widget(name.c_str());
    const auto* tabs = qobject_cast<qt::TabPane*>(&found);
    return tabs != nullptr ? tabs->bar() : found;
  }
  /// A text that takes no acts; it speaks for itself.
  [[nodiscard]] bool isPlainLabel(const std::string& name) {
    const auto& found = widget(name.c_str());
    return qobject_cast<const QLabel*>(&found) != nullptr ||
           (qobject_cast<const qt::LabelButton*>(&found) != nullptr && found.focusPolicy() == Qt::NoFocus);
  }
  void showAndEnableEverything() {
    for (const auto& [name, control] : namedControls(pane->assembly())) {
      control->setHidden(false);
      control->setEnabled(true);
    }
  }
  /// Walks with the Tab key until everything was reached, at most once round.
  void expectReached(const Names& names) {
    Names missing;
    for (const std::string& name : names) {
      if (!isPlainLabel(name)) missing.insert(name);
    }
    constexpr int kMoreThanThereAre = 80;
    for (int step = 0; step < kMoreThanThereAre && !missing.empty(); ++step) {
      press(window(), Qt::Key_Tab);
      const QWidget* reached = window().focusWidget();
      std::erase_if(missing, [&](const std::string& name) { return &focusWidget(name) == reached; });
    }
    for (const std::string& name : missing) ADD_FAILURE() << "the Tab key never reaches " << name;
  }

  DemoClient demo{"0"};
};

TEST_F(InterfaceFiles, EveryWidgetShowsTheControlOfItsNameAndEveryControlHasAWidget) {
  Names widgets = allWidgets();
  for (const std::string& name : kTextsOfOthers) EXPECT_EQ(widgets.erase(name), 1U) << name;
  Names controls;
  for (const auto& named : namedControls(pane->assembly())) controls.insert(named.name);
  for (const std::string& name : kNoWidgets) EXPECT_EQ(controls.erase(name), 1U) << name;
  EXPECT_EQ(widgets, controls);
}

TEST_F(InterfaceFiles, AChangeOfAControlReachesItsWidgetAtOnce) {
  window().setFocus();  // what has the keyboard is hidden a moment later
  for (const auto& [name, control] : namedControls(pane->assembly())) {
    if (kNoWidgets.contains(name)) continue;
    SCOPED_TRACE(name);
    const QWidget& shown = widget(name.c_str());
    control->setToolTip("about " + name);
    EXPECT_TRUE(shown.toolTip().contains(QString::fromStdString("about " + name)));
    control->setHidden(!control->hidden());
    EXPECT_EQ(shown.isHidden(), control->hidden());
    control->setHidden(!control->hidden());
    EXPECT_EQ(shown.isHidden(), control->hidden());
  }
}

TEST_F(InterfaceFiles, EveryWidgetIsANamedControlForTheKeyboardOrALabelThatSpeaksForItself) {
  for (const std::string& name : allWidgets()) {
    SCOPED_TRACE(name);
    QWidget& found = focusWidget(name);
    if (const auto* label = qobject_cast<const QLabel*>(&found)) {
      EXPECT_TRUE(found.accessibleName().isEmpty()) << "it would hide the label's text";
      EXPECT_TRUE(label->isHidden() || !label->text().isEmpty());
    } else if (isPlainLabel(name)) {
      EXPECT_FALSE(qobject_cast<const QAbstractButton*>(&found)->text().isEmpty());
    } else {
      EXPECT_FALSE(spokenName(found).isEmpty());
      EXPECT_TRUE(found.focusPolicy() & Qt::TabFocus);
    }
  }
}

TEST_F(InterfaceFiles, TheTabKeyReachesEveryControlOfTheWindowAndOfEachPage) {
  for (int tab = 0; tab < static_cast<int>(std::size(kPageFiles)); ++tab) {
    enterTab(tab);
    showAndEnableEverything();
    Names names = widgetsOf(kWindowFile);
    names.merge(widgetsOf(kPageFiles[tab]));
    SCOPED_TRACE(kPageFiles[tab]);
    expectReached(names);
  }
}

TEST_F(InterfaceFiles, TheTabKeyReachesEveryControlOfTheSheet) {
  enterTab(1);
  pane->assembly().options().advancedButtonAction();
  ASSERT_NE(sheet(), nullptr);
  expectReached(widgetsOf(kSheetFile));
}

}  // namespace
}  // namespace corvane::test

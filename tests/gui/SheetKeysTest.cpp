// The keyboard on the buttons of sheets and panels. These tests also run under a display server as different
// desktops, whose themes differ in what Return does to a button that has the keyboard.
#include <QCheckBox>
#include <QPushButton>
#include <ostream>

#include "WindowFixture.h"
#include "widgets/CheckBox.h"
#include "widgets/LockButton.h"
#include "widgets/PushButton.h"

namespace corvane::test {
namespace {

class SheetKeys : public WindowTest {
 protected:
  void begin(std::vector<AlertButton> buttons, bool withCheckBox = false) {
    AlertDescription description;
    description.style = AlertStyle::Critical;
    description.messageText = "Please confirm removal.";
    description.buttons = std::move(buttons);
    if (withCheckBox)
      description.accessory = AlertCheckBox{"Allow client to report removal.", 200, 40, true, true};
    dialogs.beginSheet(description, SheetWindow::PaneWindow,
                       [this](const AlertResult& result) { codes.push_back(result.returnCode); });
    ASSERT_TRUE(eventually([this] { return sheet()->isAncestorOf(window.focusWidget()); }));
  }
  QPushButton& button(const char* title) {
    return find<QPushButton>(*sheet(), (std::string("button ") + title).c_str());
  }
  std::vector<int> codes;
};

/// Whether the theme of this desktop has Return press the button that has the keyboard.
bool returnPressesTheToolkitsOwnButton() {
  QPushButton plain;
  plain.setAutoDefault(false);
  bool pressed = false;
  QObject::connect(&plain, &QPushButton::clicked, [&] { pressed = true; });
  QTest::keyClick(&plain, Qt::Key_Return);
  return pressed;
}

struct Question {
  const char* name;
  const char* act;
  bool hasCheckBox;
};
void PrintTo(const Question& question, std::ostream* stream) { *stream << question.name; }

TEST_F(SheetKeys, ReturnPressesTheSheetsButtonAlsoWhereACheckBoxHasTheKeyboard) {
  AlertDescription description;
  description.messageText = "Please confirm.";
  description.buttons = {{"OK", std::nullopt}};
  description.accessory = AlertCheckBox{"Report it.", 200, 40, true, false};
  std::vector<bool> ticks;
  dialogs.beginSheet(description, SheetWindow::PaneWindow,
                     [&](const AlertResult& result) { ticks.push_back(result.accessoryOn); });
  auto& box = find<QCheckBox>(*sheet(), "accessory");
  box.setFocus();
  press(window, Qt::Key_Space);
  EXPECT_FALSE(box.isChecked());
  press(window, Qt::Key_Return);
  EXPECT_EQ(ticks, (std::vector<bool>{false}));
}

/// The sheets whose first button can't be taken back: its only key is Space, on itself.
class SheetKeysOfQuestions : public SheetKeys, public ::testing::WithParamInterface<Question> {
 protected:
  void ask() { begin({{GetParam().act, ""}, {"Cancel", kReturnKey, true}}, GetParam().hasCheckBox); }
};

TEST_P(SheetKeysOfQuestions, ReturnCancelsWhicheverButtonHasTheKeyboard) {
  if (qEnvironmentVariableIsSet("CORVANE_TEST_RETURN_PRESSES")) {
    ASSERT_TRUE(returnPressesTheToolkitsOwnButton()) << "this desktop proves nothing";
  }
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    codes.clear();
    ask();
    press(window, Qt::Key_Tab);
    ASSERT_TRUE(button(GetParam().act).hasFocus());
    press(window, key);
    EXPECT_EQ(codes, (std::vector<int>{1001}));
  }
}

TEST_P(SheetKeysOfQuestions, SpacePressesTheButtonThatHasTheKeyboard) {
  ask();
  press(window, Qt::Key_Tab);
  press(window, Qt::Key_Space);
  EXPECT_EQ(codes, (std::vector<int>{1000}));
}

TEST_P(SheetKeysOfQuestions, AKeyThatIsHeldDownPressesNothing) {
  ask();
  for (const bool onTheAct : {false, true}) {
    if (onTheAct) press(window, Qt::Key_Tab);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Escape})
      hold(window, key);
  }
  EXPECT_TRUE(codes.empty());
  EXPECT_NE(sheet(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(All, SheetKeysOfQuestions,
                         ::testing::Values(Question{"Removal", "Remove", false},
                                           Question{"Caution", "Continue", false},
                                           Question{"Uninstall", "Uninstall", true}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(SheetKeys, AKeyThatIsHeldDownDoesNotAnswerTheNextSheetEither) {
  begin({{"OK", std::nullopt}});
  AlertDescription second;
  second.messageText = "Next";
  second.buttons = {{"OK", std::nullopt}};
  dialogs.beginSheet(second, SheetWindow::PaneWindow, [this](const AlertResult&) { codes.push_back(2); });
  press(window, Qt::Key_Return);
  EXPECT_EQ(codes, (std::vector<int>{1000}));
  hold(window, Qt::Key_Return);
  EXPECT_EQ(codes.size(), 1U);
  press(window, Qt::Key_Return);
  EXPECT_EQ(codes.size(), 2U);
}

TEST_F(SheetKeys, OutsideOfPanelsReturnAndSpacePressTheButtonThatHasTheKeyboardOnce) {
  QWidget plain;
  QAbstractButton* const buttons[] = {new qt::PushButton(QStringLiteral("Run"), &plain),
                                      new qt::CheckBox(QStringLiteral("Warn"), &plain),
                                      new qt::LockButton(&plain)};
  showActive(plain);
  for (QAbstractButton* button : buttons) {
    int clicks = 0;
    QObject::connect(button, &QAbstractButton::clicked, [&] { ++clicks; });
    button->setFocus();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
      clicks = 0;
      press(plain, key);
      hold(plain, key);
      EXPECT_EQ(clicks, 1) << key << " on " << button->metaObject()->className();
    }
    button->disconnect();
  }
}

}  // namespace
}  // namespace corvane::test

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <ostream>

#include "WindowFixture.h"

namespace corvane::test {
namespace {

class AlertSheet : public WindowTest {
 protected:
  static AlertDescription alert(std::vector<AlertButton> buttons) {
    AlertDescription description;
    description.messageText = "Proceed?";
    description.informativeText = "Something will happen.\n";
    description.buttons = std::move(buttons);
    return description;
  }
  void begin(const AlertDescription& description) {
    dialogs.beginSheet(description, SheetWindow::PaneWindow, [this](const AlertResult& result) {
      codes.push_back(result.returnCode);
      accessories.push_back(result.accessoryOn);
    });
  }
  QPushButton& button(const char* title) {
    return find<QPushButton>(*sheet(), (std::string("button ") + title).c_str());
  }

  std::vector<int> codes;
  std::vector<bool> accessories;
};

TEST_F(AlertSheet, DoesNotBlockAndShowsItsTextsWithoutTheTrailingLineBreak) {
  begin(alert({{"OK", std::nullopt}}));
  ASSERT_NE(sheet(), nullptr);
  EXPECT_TRUE(codes.empty());
  EXPECT_EQ(find<QLabel>(*sheet(), "message").text(), QStringLiteral("Proceed?"));
  EXPECT_TRUE(find<QLabel>(*sheet(), "message").font().bold());
  EXPECT_EQ(find<QLabel>(*sheet(), "informative").text(), QStringLiteral("Something will happen."));
  EXPECT_FALSE(find<QLabel>(*sheet(), "icon").pixmap().isNull());
}

TEST_F(AlertSheet, BreaksAWordThatIsLongerThanALine) {
  const std::string path = "/Users/Shared/" + std::string(300, 'x') + "/é.conf";
  AlertDescription description = alert({{"OK", std::nullopt}});
  description.informativeText = path + " already exists in the list.";
  begin(description);
  auto& label = find<QLabel>(*sheet(), "informative");
  QString text = label.text();
  EXPECT_EQ(text.remove(QChar(0x200b)).toStdString(), description.informativeText);
  EXPECT_EQ(label.accessibleName().toStdString(), description.informativeText);
  const int lines = label.fontMetrics().horizontalAdvance(text) / label.width() + 1;
  EXPECT_GE(lines, 5);
  EXPECT_GE(label.height(), lines * label.fontMetrics().height());
}

TEST_F(AlertSheet, ATextThatIsTooLongForTheWindowScrollsAndTheButtonStaysInReach) {
  AlertDescription description = alert({{"OK", std::nullopt}});
  for (int line = 0; line < 80; ++line) description.informativeText += "Line " + std::to_string(line) + "\n";
  begin(description);
  auto& panel = find(window, "sheet");
  ASSERT_TRUE(eventually([&] { return panel.y() == 0; }));
  auto& area = find<QScrollArea>(*sheet(), "informativeScroll");
  auto& label = find<QLabel>(*sheet(), "informative");
  const auto shows = [&](int y) {
    return area.viewport()->rect().contains(label.mapTo(area.viewport(), QPoint(0, y)));
  };
  EXPECT_EQ(label.height(), label.heightForWidth(label.width())) << "as long as the text";
  EXPECT_LE(panel.height(), window.height());
  const QRect ok(button("OK").mapTo(&window, QPoint()), button("OK").size());
  EXPECT_TRUE(window.rect().contains(ok));
  EXPECT_TRUE(shows(1));
  EXPECT_FALSE(shows(label.height() - 2));
  for (int page = 0; page < 20; ++page) press(window, Qt::Key_PageDown);
  EXPECT_TRUE(shows(label.height() - 2));
  press(window, Qt::Key_PageUp);
  EXPECT_FALSE(shows(label.height() - 2));
  press(window, Qt::Key_Return);
  EXPECT_EQ(codes, (std::vector<int>{1000}));
}

TEST_F(AlertSheet, ATextThatFitsHasNoScrollBar) {
  AlertDescription description = alert({{"OK", std::nullopt}});
  description.informativeText =
      "A verdict of a plug-in that is longer than one line of the sheet, and goes on for more.";
  begin(description);
  ASSERT_TRUE(eventually([&] { return find(window, "sheet").y() == 0; }));
  auto& area = find<QScrollArea>(*sheet(), "informativeScroll");
  EXPECT_FALSE(area.verticalScrollBar()->isVisible());
  EXPECT_EQ(area.height(), find<QLabel>(*sheet(), "informative").height());
}

TEST_F(AlertSheet, TheWindowsOwnWordsStandBelowThoseOfTheirAlertAloneAndOnce) {
  shown.addNote("Proceed?", QStringLiteral("It was you."));
  AlertDescription another = alert({{"OK", std::nullopt}});
  another.messageText = "Another";
  begin(another);
  EXPECT_FALSE(find<QLabel>(*sheet(), "note").isVisible());
  click(button("OK"));
  begin(alert({{"OK", std::nullopt}}));
  EXPECT_EQ(find<QLabel>(*sheet(), "informative").text(), QStringLiteral("Something will happen."));
  EXPECT_EQ(find<QLabel>(*sheet(), "note").text(), QStringLiteral("It was you."));
  EXPECT_TRUE(find<QLabel>(*sheet(), "note").isVisible());
  click(button("OK"));
  begin(alert({{"OK", std::nullopt}}));
  EXPECT_FALSE(find<QLabel>(*sheet(), "note").isVisible());
}

TEST_F(AlertSheet, HangsFromTheTopInTheMiddleOfTheWindow) {
  begin(alert({{"OK", std::nullopt}}));
  auto& panel = find(window, "sheet");
  EXPECT_LT(panel.y(), 0);  // on its way down
  EXPECT_TRUE(eventually([&] { return panel.y() == 0; }));
  EXPECT_NEAR(panel.geometry().center().x(), window.rect().center().x(), 1);
}

TEST_F(AlertSheet, TheFirstButtonStandsRightmost) {
  begin(alert({{"Continue", std::nullopt}, {"Cancel", std::nullopt, true}, {"Help", std::nullopt}}));
  EXPECT_TRUE(eventually([&] { return button("Help").x() > 0; }));
  EXPECT_GT(button("Continue").x(), button("Cancel").x());
  EXPECT_GT(button("Cancel").x(), button("Help").x());
}

TEST_F(AlertSheet, AClickReportsTheNumberOfTheButtonOnceAndClosesTheSheet) {
  begin(alert({{"Continue", std::nullopt}, {"Cancel", std::nullopt, true}}));
  QPushButton& cancel = button("Cancel");
  click(cancel);
  click(cancel);
  EXPECT_EQ(codes, (std::vector<int>{1001}));
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_FALSE(window.sheets().isVisible());
}

struct KeyRule {
  const char* behaviour;
  std::vector<AlertButton> buttons;
  Qt::Key key;
  std::vector<int> codes;
};
void PrintTo(const KeyRule& rule, std::ostream* stream) { *stream << rule.behaviour; }

class AlertSheetKeys : public AlertSheet, public ::testing::WithParamInterface<KeyRule> {};

TEST_P(AlertSheetKeys, PressesTheRightButton) {
  begin(alert(GetParam().buttons));
  ASSERT_TRUE(eventually([&] { return sheet()->isAncestorOf(window.focusWidget()) || sheet()->hasFocus(); }));
  press(window, GetParam().key);
  EXPECT_EQ(codes, GetParam().codes);
  EXPECT_EQ(sheet() == nullptr, !GetParam().codes.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Rules, AlertSheetKeys,
    ::testing::Values(KeyRule{"ReturnPressesTheFirstButton",
                              {{"OK", std::nullopt}, {"Cancel", std::nullopt, true}},
                              Qt::Key_Return,
                              {1000}},
                      KeyRule{"EnterPressesTheFirstButton",
                              {{"OK", std::nullopt}, {"Cancel", std::nullopt, true}},
                              Qt::Key_Enter,
                              {1000}},
                      KeyRule{"ReturnPressesTheButtonThatHasItsKey",
                              {{"Continue", ""}, {"Cancel", kReturnKey, true}},
                              Qt::Key_Return,
                              {1001}},
                      KeyRule{
                          "AButtonWithoutAKeyIsNeverPressedByReturn", {{"Continue", ""}}, Qt::Key_Return, {}},
                      KeyRule{"EscapePressesTheButtonThatCancelsWhateverItsTitle",
                              {{"Cancel", ""}, {"Leave It", kReturnKey, true}},
                              Qt::Key_Escape,
                              {1001}},
                      KeyRule{"EscapePressesTheOnlyButton", {{"OK", std::nullopt}}, Qt::Key_Escape, {1000}},
                      KeyRule{"EscapeDoesNothingWithoutACancelButton",
                              {{"Yes", std::nullopt}, {"No", std::nullopt}},
                              Qt::Key_Escape,
                              {}}),
    [](const auto& test) { return std::string(test.param.behaviour); });

TEST_F(AlertSheet, TheDefaultButtonHasTheFocusSoThatSpaceIsSafeToo) {
  begin(alert({{"Continue", ""}, {"Cancel", kReturnKey, true}}));
  EXPECT_TRUE(eventually([&] { return button("Cancel").hasFocus(); }));
  EXPECT_TRUE(button("Cancel").isDefault());
  EXPECT_FALSE(button("Continue").isDefault());
}

TEST_F(AlertSheet, TheTabKeyStaysInsideTheSheet) {
  begin(alert({{"Continue", ""}, {"Cancel", kReturnKey, true}}));
  ASSERT_TRUE(eventually([&] { return button("Cancel").hasFocus(); }));
  press(window, Qt::Key_Tab);
  EXPECT_TRUE(button("Continue").hasFocus());
  press(window, Qt::Key_Tab);
  EXPECT_TRUE(button("Cancel").hasFocus());
  press(window, Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_TRUE(button("Continue").hasFocus());
}

TEST_F(AlertSheet, TheWindowBehindTakesNoClickAndNoFocus) {
  begin(alert({{"OK", std::nullopt}}));
  auto& lock = find(window, "authView");
  const QPoint place = lock.mapTo(&window, lock.rect().center());
  QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, place);
  EXPECT_EQ(view.authView.state(), AuthorizationView::State::Closed);
  lock.setFocus();
  EXPECT_TRUE(eventually([&] { return button("OK").hasFocus(); }));
}

TEST_F(AlertSheet, ASecondSheetWaitsForTheFirst) {
  begin(alert({{"First", std::nullopt}}));
  AlertDescription second = alert({{"Second", std::nullopt}});
  second.messageText = "Next";
  begin(second);
  EXPECT_EQ(find<QLabel>(*sheet(), "message").text(), QStringLiteral("Proceed?"));
  click(button("First"));
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(find<QLabel>(*sheet(), "message").text(), QStringLiteral("Next"));
  click(button("Second"));
  EXPECT_EQ(codes, (std::vector<int>{1000, 1000}));
  EXPECT_EQ(sheet(), nullptr);
}

TEST_F(AlertSheet, WhatIsAlreadySaidOrAboutToBeIsNotSaidTwice) {
  AlertDescription second = alert({{"OK", std::nullopt}});
  second.messageText = "Next";
  begin(alert({{"OK", std::nullopt}}));
  begin(second);
  begin(alert({{"OK", std::nullopt}}));
  begin(second);
  click(button("OK"));
  EXPECT_EQ(codes, (std::vector<int>{1000, 1000})) << "one end is the end of both";
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(find<QLabel>(*sheet(), "message").text(), QStringLiteral("Next"));
  click(button("OK"));
  EXPECT_EQ(codes.size(), 4U);
  EXPECT_EQ(sheet(), nullptr);
  begin(second);
  EXPECT_NE(sheet(), nullptr) << "what was read and closed is said again";
}

TEST_F(AlertSheet, AlertsThatDifferOrLeaveSomethingToDecideAreAllShown) {
  AlertDescription otherText = alert({{"OK", std::nullopt}});
  otherText.informativeText = "Something else will happen.";
  AlertDescription fillIn = alert({{"OK", std::nullopt}});
  fillIn.accessory = AlertCheckBox{"Report", 200, 40, true, true};
  const std::vector<AlertButton> choice = {{"OK", std::nullopt}, {"Cancel", std::nullopt, true}};
  const std::vector<AlertDescription> all = {
      alert({{"OK", std::nullopt}}), otherText, fillIn, fillIn, alert(choice), alert(choice)};
  for (const AlertDescription& description : all) begin(description);
  for (std::size_t answered = 1; answered <= all.size(); ++answered) {
    ASSERT_NE(sheet(), nullptr);
    click(button("OK"));
    EXPECT_EQ(codes.size(), answered);
  }
  EXPECT_EQ(sheet(), nullptr);
}

TEST_F(AlertSheet, AnEndHandlerMayBeginTheNextSheet) {
  dialogs.beginSheet(alert({{"OK", std::nullopt}}), SheetWindow::PaneWindow, [this](const AlertResult&) {
    begin(alert({{"Again", std::nullopt}}));
  });
  click(button("OK"));
  ASSERT_NE(sheet(), nullptr);
  click(button("Again"));
  EXPECT_EQ(codes, (std::vector<int>{1000}));
}

TEST_F(AlertSheet, TheAccessoryCheckBoxIsReportedAndTakesNoFocusWhenItRefuses) {
  AlertDescription description = alert({{"Uninstall", ""}, {"Cancel", kReturnKey, true}});
  description.accessory = AlertCheckBox{"Allow client to report removal.", 200, 40, true, true};
  begin(description);
  auto& box = find<QCheckBox>(*sheet(), "accessory");
  EXPECT_TRUE(box.isChecked());
  EXPECT_EQ(box.focusPolicy(), Qt::NoFocus);
  EXPECT_GE(box.width(), 200);
  ASSERT_TRUE(eventually([&] { return button("Cancel").hasFocus(); }));
  QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(10, box.height() / 2));
  EXPECT_FALSE(box.isChecked());
  EXPECT_TRUE(button("Cancel").hasFocus());
  click(button("Uninstall"));
  EXPECT_EQ(codes, (std::vector<int>{1000}));
  EXPECT_EQ(accessories, (std::vector<bool>{false}));
}

TEST_F(AlertSheet, AModalAlertIsTitledByItsMessageAndAnswersWithTheButton) {
  QString title;
  QTimer::singleShot(0, &window, [&] {
    auto* dialog = QApplication::activeModalWidget();
    ASSERT_NE(dialog, nullptr);
    title = dialog->windowTitle();
    QTest::keyClick(dialog->findChild<QPushButton*>(), Qt::Key_Return);
  });
  const AlertResult result = dialogs.runModalAlert(alert({{"OK", std::nullopt}}));
  EXPECT_EQ(result.returnCode, 1000);
  EXPECT_EQ(title, QStringLiteral("Proceed?"));
}

TEST_F(AlertSheet, TheKeyboardSwitchesAnAccessoryThatTakesNoFocusWithItsFirstLetter) {
  AlertDescription description = alert({{"Uninstall", ""}, {"Cancel", kReturnKey, true}});
  description.accessory = AlertCheckBox{"Allow client to report removal.", 200, 40, true, true};
  begin(description);
  auto& box = find<QCheckBox>(*sheet(), "accessory");
  press(window, Qt::Key_A, Qt::AltModifier);
  EXPECT_TRUE(eventually([&] { return !box.isChecked(); }));
  EXPECT_TRUE(button("Cancel").hasFocus());
  press(window, Qt::Key_Return);
  EXPECT_EQ(accessories, (std::vector<bool>{false}));
}

}  // namespace
}  // namespace corvane::test

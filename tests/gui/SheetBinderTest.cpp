#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "WindowFixture.h"
#include "binders/SheetBinder.h"
#include "widgets/PushButton.h"

namespace corvane::test {
namespace {

class SheetBinder : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    auto* layout = new QVBoxLayout(contents);
    layout->addWidget(field);
    layout->addWidget(cancel);
    layout->addWidget(ok);
    ok->setAutoDefault(false);
    ok->setDefault(true);
    cancel->setEscapes(true);
    QObject::connect(ok, &QPushButton::clicked, contents, [this] { pressed.emplace_back("OK"); });
    QObject::connect(cancel, &QPushButton::clicked, contents, [this] { pressed.emplace_back("Cancel"); });
    new qt::SheetBinder(advanced, *contents, window.sheets());
  }

  Window advanced{"Advanced"};
  QWidget* contents = new QWidget;
  QLineEdit* field = new QLineEdit(contents);
  qt::PushButton* cancel = new qt::PushButton(contents);
  qt::PushButton* ok = new qt::PushButton(contents);
  std::vector<std::string> pressed;
};

TEST_F(SheetBinder, OpensAndClosesWithTheCoresWindow) {
  EXPECT_FALSE(contents->isVisible());
  ASSERT_TRUE(view.mainWindow.beginSheet(advanced));
  EXPECT_EQ(sheet(), contents);
  EXPECT_TRUE(contents->isVisible());
  EXPECT_EQ(contents->windowTitle(), QStringLiteral("Advanced"));
  view.mainWindow.endSheet(advanced);
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_FALSE(contents->isVisible());
  ASSERT_TRUE(view.mainWindow.beginSheet(advanced));  // as often as wanted
  EXPECT_TRUE(contents->isVisible());
  view.mainWindow.endSheet(advanced);
}

TEST_F(SheetBinder, TheFirstFieldHasTheFocusAndReturnAndEscapePressTheSheetsButtons) {
  ASSERT_TRUE(view.mainWindow.beginSheet(advanced));
  ASSERT_TRUE(eventually([this] { return field->hasFocus(); }));
  press(window, Qt::Key_Return);
  press(window, Qt::Key_Escape);
  EXPECT_EQ(pressed, (std::vector<std::string>{"OK", "Cancel"}));
  view.mainWindow.endSheet(advanced);
}

TEST_F(SheetBinder, TheTextOfTheFirstFieldIsTypedOver) {
  field->setText(QStringLiteral("3"));
  ASSERT_TRUE(view.mainWindow.beginSheet(advanced));
  ASSERT_TRUE(eventually([this] { return field->hasFocus(); }));
  press(window, Qt::Key_4);
  EXPECT_EQ(field->text(), QStringLiteral("4"));
  view.mainWindow.endSheet(advanced);
}

TEST_F(SheetBinder, AnAlertThatComesMeanwhileWaitsForTheSheet) {
  ASSERT_TRUE(view.mainWindow.beginSheet(advanced));
  AlertDescription alert;
  alert.messageText = "Meanwhile";
  alert.buttons = {{"OK", std::nullopt}};
  dialogs.beginSheet(alert, SheetWindow::PaneWindow,
                     [this](const AlertResult&) { pressed.emplace_back("alert"); });
  EXPECT_EQ(sheet(), contents);
  view.mainWindow.endSheet(advanced);
  ASSERT_NE(sheet(), nullptr);
  click(find<QPushButton>(*sheet(), "button OK"));
  EXPECT_EQ(pressed, (std::vector<std::string>{"alert"}));
}

TEST_F(SheetBinder, ASheetThatEndsBeforeItWasShownNeverComes) {
  AlertDescription alert;
  alert.messageText = "First";
  alert.buttons = {{"OK", std::nullopt}};
  dialogs.beginSheet(alert, SheetWindow::PaneWindow, {});
  ASSERT_TRUE(view.mainWindow.beginSheet(advanced));
  view.mainWindow.endSheet(advanced);
  click(find<QPushButton>(*sheet(), "button OK"));
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_FALSE(contents->isVisible());
}

}  // namespace
}  // namespace corvane::test

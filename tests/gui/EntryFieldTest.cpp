#include <QAccessible>
#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <memory>
#include <ostream>

#include "Events.h"
#include "InputMethod.h"
#include "widgets/EntryField.h"

namespace corvane::test {
namespace {

/// Takes up to five characters and no "x"; what it is asked is written down.
class EntryField : public ::testing::Test {
 protected:
  void SetUp() override {
    field->setGeometry(10, 10, 200, 28);
    field->setOwner([this](const QString& proposed) { return answer(proposed); });
    window.resize(240, 60);
    showActive(window);
    field->setFocus();
    ASSERT_TRUE(eventually([this] { return field->hasFocus(); }));
  }
  std::optional<QString> answer(const QString& proposed) {
    asked.push_back(proposed.toStdString());
    if (proposed == QLatin1String("?")) return QStringLiteral("why");
    if (proposed.size() > 5 || proposed.contains(QLatin1Char('x'))) return std::nullopt;
    return proposed;
  }
  void paste(const char* text) {
    QGuiApplication::clipboard()->setText(QString::fromUtf8(text));
    press(window, Qt::Key_V, Qt::ControlModifier);
  }
  void drop(const char* text) {
    QMimeData data;
    data.setText(QString::fromUtf8(text));
    const QPoint place(2, field->height() / 2);
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(field, &enter);
    QDropEvent dropped(place, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(field, &dropped);
  }
  [[nodiscard]] std::string shown() const {
    EXPECT_EQ(field->text(), field->standingText());
    return field->text().toStdString();
  }

  std::vector<std::string> asked;
  QWidget window;
  qt::EntryField* field = new qt::EntryField(&window);
};

TEST_F(EntryField, IsAskedAboutEachTextBeforeTheToolkitHasIt) {
  std::vector<std::string> before;
  field->setOwner([&](const QString& proposed) -> std::optional<QString> {
    before.push_back(field->standingText().toStdString());
    return proposed;
  });
  std::vector<std::string> told;
  QObject::connect(field, &QLineEdit::textChanged,
                   [&](const QString& text) { told.push_back(text.toStdString()); });
  type(*field, "ab");
  EXPECT_EQ(before, (std::vector<std::string>{"", "a"}));
  EXPECT_EQ(told, (std::vector<std::string>{"a", "ab"}));
}

TEST_F(EntryField, IsAskedOnceAlsoAboutTheSameTextThatIsTypedOverTheOneBefore) {
  field->showText(QStringLiteral("a"));
  field->selectAll();
  type(*field, "a");
  EXPECT_EQ(asked, (std::vector<std::string>{"a"}));
  type(*field, "b");
  EXPECT_EQ(asked, (std::vector<std::string>{"a", "ab"}));
  EXPECT_EQ(shown(), "ab");
}

TEST_F(EntryField, NobodyHearsOfATextThatIsRefused) {
  type(*field, "ab");
  std::vector<std::string> told;
  QObject::connect(field, &QLineEdit::textChanged,
                   [&](const QString& text) { told.push_back(text.toStdString()); });
  type(*field, "x");
  EXPECT_EQ(shown(), "ab");
  EXPECT_TRUE(told.empty());
}

/// Every way in which a text comes into a field; each puts the same text in where the caret stands, in place
/// of the selection.
enum class Way { Keys, InputMethod, Pasting, Assistance };
void PrintTo(Way way, std::ostream* stream) {
  *stream << std::array{"Keys", "InputMethod", "Pasting", "Assistance"}.at(static_cast<std::size_t>(way));
}

class EntryFieldWays : public EntryField,
                       public ::testing::WithParamInterface<std::tuple<Way, QLineEdit::EchoMode>> {
 protected:
  void SetUp() override {
    EntryField::SetUp();
    field->setEchoMode(std::get<1>(GetParam()));
  }
  /// To the toolkit an act of assistive technology is a new text from the first letter to the last.
  static bool setsWholeTexts() { return std::get<0>(GetParam()) == Way::Assistance; }
  void put(const char* text) {
    switch (std::get<0>(GetParam())) {
      case Way::Keys:
        QTest::sendKeyEvent(QTest::Click, field, Qt::Key_unknown, QString::fromUtf8(text), {});
        break;
      case Way::InputMethod:
        compose(*field, "…");
        commit(*field, text);
        break;
      case Way::Pasting:
        paste(text);
        break;
      case Way::Assistance:
        if (QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(field)) {
          interface->editableTextInterface()->replaceText(
              field->hasSelectedText() ? field->selectionStart() : field->cursorPosition(),
              field->hasSelectedText() ? field->selectionEnd() : field->cursorPosition(),
              QString::fromUtf8(text));
        }
        break;
    }
  }
};

TEST_P(EntryFieldWays, ATextThatIsTakenStands) {
  put("é");
  EXPECT_EQ(shown(), "é");
  EXPECT_EQ(asked, (std::vector<std::string>{"é"}));
}

TEST_P(EntryFieldWays, ATextThatIsRefusedLeavesTextAndCaret) {
  type(*field, "abcd");
  field->setCursorPosition(1);
  put("x");
  EXPECT_EQ(shown(), "abcd");
  EXPECT_EQ(asked.back(), "axbcd");
  if (setsWholeTexts()) return;
  EXPECT_EQ(field->cursorPosition(), 1);
}

TEST_P(EntryFieldWays, ATextThatIsRefusedLeavesTheSelectionThatItWouldHaveReplaced) {
  type(*field, "abcd");
  field->setSelection(1, 2);
  put("x");
  EXPECT_EQ(shown(), "abcd");
  EXPECT_EQ(asked.back(), "axd") << "never about the text without the selection alone";
  if (setsWholeTexts()) return;
  EXPECT_EQ(field->selectedText(), QStringLiteral("bc"));
}

TEST_P(EntryFieldWays, ATextThatTheOwnerReplacesStandsAsTheOwnerWantsIt) {
  put("?");
  EXPECT_EQ(shown(), "why");
}

TEST_P(EntryFieldWays, AfterARefusalTheNextTextIsTakenAndRefusedAsEver) {
  type(*field, "ab");
  put("x");
  put("c");
  EXPECT_EQ(shown(), "abc");
  put("x");
  EXPECT_EQ(shown(), "abc");
  EXPECT_TRUE(field->hasAcceptableInput());
}

TEST_P(EntryFieldWays, ATextOfAnyLengthIsTheOwnersToRefuse) {
  field->setOwner(nullptr);
  const std::string text(40000, 'a');
  field->showText(QString::fromStdString(text));
  field->setCursorPosition(0);
  put("b");
  EXPECT_EQ(shown(), "b" + text);
}

INSTANTIATE_TEST_SUITE_P(All, EntryFieldWays,
                         ::testing::Combine(::testing::Values(Way::Keys, Way::InputMethod, Way::Pasting,
                                                              Way::Assistance),
                                            ::testing::Values(QLineEdit::Normal, QLineEdit::Password)),
                         [](const auto& test) {
                           return ::testing::PrintToString(std::get<0>(test.param)) +
                                  (std::get<1>(test.param) == QLineEdit::Password ? "InAPassword" : "");
                         });

TEST_F(EntryField, ARefusalKeepsTheUndoHistory) {
  type(*field, "ab");
  press(window, Qt::Key_Left);
  type(*field, "c");
  ASSERT_EQ(shown(), "acb");
  type(*field, "x");
  commit(*field, "x");
  paste("x");
  drop("x");
  EXPECT_EQ(shown(), "acb");
  field->undo();
  EXPECT_EQ(shown(), "ab");
  field->undo();
  EXPECT_EQ(shown(), "");
  field->redo();
  EXPECT_EQ(shown(), "ab");
  EXPECT_EQ(asked.back(), "ab");
}

TEST_F(EntryField, AnUndoneTextThatIsRefusedNowIsNotShown) {
  field->showText(QStringLiteral("given"));
  field->selectAll();
  type(*field, "ab");
  field->setOwner([](const QString& proposed) {
    return proposed == QLatin1String("given") ? std::nullopt : std::optional(proposed);
  });
  field->undo();
  EXPECT_EQ(shown(), "ab");
  EXPECT_TRUE(field->hasAcceptableInput());
  type(*field, "c");
  EXPECT_EQ(shown(), "abc");
}

TEST_F(EntryField, ARedoneTextThatIsRefusedNowIsNotShownAndMayBeUndoneFurther) {
  type(*field, "a");
  field->setCursorPosition(0);
  type(*field, "b");
  field->undo();
  ASSERT_EQ(shown(), "a");
  field->setOwner([](const QString& proposed) {
    return proposed == QLatin1String("ba") ? std::nullopt : std::optional(proposed);
  });
  field->redo();
  EXPECT_EQ(shown(), "a");
  field->undo();
  EXPECT_EQ(shown(), "");
}

TEST_F(EntryField, WhatIsComposedIsNoPartOfTheTextUntilItIsHandedOver) {
  type(*field, "ab");
  asked.clear();
  compose(*field, "´");
  compose(*field, "´e");
  EXPECT_TRUE(asked.empty());
  EXPECT_EQ(field->text(), QStringLiteral("ab"));
  commit(*field, "é");
  EXPECT_EQ(shown(), "abé");
  EXPECT_EQ(asked, (std::vector<std::string>{"abé"}));
}

TEST_F(EntryField, AComposingThatIsGivenUpLeavesTheSelectionInWhosePlaceItStood) {
  for (const QLineEdit::EchoMode mode : {QLineEdit::Normal, QLineEdit::Password}) {
    field->setEchoMode(mode);
    field->showText(QString());
    type(*field, "abc");
    field->selectAll();
    asked.clear();
    compose(*field, "´");
    EXPECT_EQ(field->standingText(), QStringLiteral("abc"));
    compose(*field, "");
    EXPECT_EQ(shown(), "abc");
    EXPECT_TRUE(asked.empty());
  }
}

TEST_F(EntryField, AComposingThatIsLeftBehindIsGivenUp) {
  type(*field, "abc");
  field->selectAll();
  compose(*field, "´");
  field->clearFocus();
  EXPECT_EQ(shown(), "abc");
}

TEST_F(EntryField, AnInputMethodMayReplaceWhatStandsThere) {
  type(*field, "abc");
  commit(*field, "d", -2, 2);
  EXPECT_EQ(shown(), "ad");
  commit(*field, "x", -1, 1);
  EXPECT_EQ(shown(), "ad");
  commit(*field, "", -1, 1);
  EXPECT_EQ(shown(), "a");
  EXPECT_EQ(asked.back(), "a");
}

TEST_F(EntryField, AValueThatIsShownBehindAComposingReplacesTheText) {
  type(*field, "abc");
  field->selectAll();
  compose(*field, "´");
  field->showText(QStringLiteral("new"));
  compose(*field, "");
  EXPECT_EQ(shown(), "new");
}

struct Breaks {
  const char* behaviour;
  const char* put;
  const char* shown;
};
void PrintTo(const Breaks& rule, std::ostream* stream) { *stream << rule.behaviour; }

class EntryFieldLineBreaks : public EntryField, public ::testing::WithParamInterface<Breaks> {};

TEST_P(EntryFieldLineBreaks, AreNotPutInByPasting) {
  type(*field, "[]");
  press(window, Qt::Key_Left);
  paste(GetParam().put);
  EXPECT_EQ(shown(), GetParam().shown);
  for (const std::string& text : asked) EXPECT_EQ(text.find_first_of("\n\r"), std::string::npos) << text;
  if (shown() != "[]") {
    field->undo();
    EXPECT_EQ(shown(), "[]");
  }
}

TEST_P(EntryFieldLineBreaks, AreNotPutInByAnInputMethod) {
  type(*field, "[]");
  press(window, Qt::Key_Left);
  commit(*field, GetParam().put);
  EXPECT_EQ(shown(), GetParam().shown);
}

TEST_P(EntryFieldLineBreaks, AreNotPutInByDropping) {
  type(*field, "]");
  drop(GetParam().put);
  EXPECT_EQ("[" + shown(), GetParam().shown);
}

TEST_P(EntryFieldLineBreaks, AreNotPutInFromTheMenu) {
  type(*field, "[]");
  press(window, Qt::Key_Left);
  QGuiApplication::clipboard()->setText(QString::fromUtf8(GetParam().put));
  field->paste();  // what its entry calls
  EXPECT_TRUE(eventually([this] { return shown() == GetParam().shown; }));
}

INSTANTIATE_TEST_SUITE_P(Kinds, EntryFieldLineBreaks,
                         ::testing::Values(Breaks{"TheLastOneIsLeftOut", "ab\n", "[ab]"},
                                           Breaks{"TheFirstOneIsLeftOut", "\r\nab", "[ab]"},
                                           Breaks{"OneBetweenBecomesABlank", "a\nb", "[a b]"},
                                           Breaks{"SeveralBecomeOneBlank", "a\r\n\u2028\u0085\vb", "[a b]"},
                                           Breaks{"NothingElseIsNothing", "\n", "[]"},
                                           Breaks{"TheRestIsStillRefused", "x\n", "[]"}),
                         [](const auto& test) { return std::string(test.param.behaviour); });

TEST_F(EntryField, ALineBreakThatStandsInTheFileStaysWhenTheTextBesideItIsEdited) {
  field->showText(QStringLiteral("a\nb"));
  field->setCursorPosition(3);
  type(*field, "c");
  EXPECT_EQ(shown(), "a\nbc");
  field->undo();
  EXPECT_EQ(shown(), "a\nb");
}

TEST_F(EntryField, ADroppedTextIsAskedAboutToo) {
  drop("abc");
  EXPECT_EQ(shown(), "abc");
  drop("x");
  EXPECT_EQ(shown(), "abc");
}

TEST_F(EntryField, ATextThatTheOwnerShowsWhileItIsAskedStands) {
  field->setOwner([this](const QString&) {
    field->showText(QStringLiteral("shown"));
    return std::optional(field->standingText());
  });
  type(*field, "a");
  EXPECT_EQ(shown(), "shown");
}

}  // namespace
}  // namespace corvane::test

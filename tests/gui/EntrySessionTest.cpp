// Random sessions of a person at an entry field whose value others change meanwhile: keys, a dead key,
// pasting, undoing, leaving the field, with a number field's and a length's formatter. After each act the
// field, the control and its formatter agree.
#include <QClipboard>
#include <QGuiApplication>
#include <QPushButton>
#include <functional>
#include <memory>
#include <random>

#include "Events.h"
#include "InputMethod.h"
#include "binders/TextFieldBinder.h"
#include "formatters/CustomTextFieldCellFormatter.h"
#include "formatters/MyNumberFormatter.h"

namespace corvane::test {
namespace {

constexpr int kActs = 400;

class EntrySession : public ::testing::TestWithParam<std::uint32_t> {
 protected:
  void SetUp() override {
    edit->setGeometry(10, 10, 200, 28);
    other->setGeometry(10, 50, 100, 28);
    new qt::TextFieldBinder(field, *edit);
    field.textDidChange = [this](TextField& sender) { typed.push_back(sender.stringValue()); };
    field.onUserEdit = [this] { ++edits; };
    window.resize(240, 100);
    showActive(window);
    edit->setFocus();
  }

  /// A formatter of its own judges what was taken: the field's remembers what it was asked.
  void live(const std::function<std::shared_ptr<Formatter>()>& makeFormatter,
            const std::vector<PropertyList>& values) {
    formatter = makeFormatter();
    field.setFormatter(formatter);
    for (int act = 0; act < kActs; ++act) {
      const int kind = below(16);
      SCOPED_TRACE("act " + std::to_string(act) + " of kind " + std::to_string(kind));
      typed.clear();
      edits = 0;
      doAct(kind, values);
      for (const std::string& text : typed) {
        const PartialStringCheck check = makeFormatter()->isPartialStringValid(text);
        EXPECT_TRUE(check.valid || check.newEditingString == text) << text;
        EXPECT_EQ(text.find_first_of("\r\n"), std::string::npos) << text;
      }
      expectAgreement();
      if (HasFailure()) return;
    }
  }

  void doAct(int kind, const std::vector<PropertyList>& values) {
    static constexpr const char* kKeys[] = {"0", "1", "4", "6", "9", "-", "a", "x"};
    static constexpr const char* kTexts[] = {"é", "17", "ab\n", "1\r\n2", "5\n", "", "toolong", "\n"};
    switch (kind) {
      case 0:
      case 1:
      case 2:
        return press(kKeys[below(8)]);
      case 3:
        return test::press(window, Qt::Key_Backspace);
      case 4:
        isComposing = true;
        return compose(*edit, "´");
      case 5:
        isComposing = false;
        return compose(*edit, "");
      case 6:
        isComposing = false;
        return commit(*edit, kTexts[below(8)], -below(3), below(3));
      case 7:
        QGuiApplication::clipboard()->setText(QString::fromUtf8(kTexts[below(8)]));
        return test::press(window, Qt::Key_V, Qt::ControlModifier);
      case 8:
        return edit->undo();
      case 9:
        return edit->redo();
      case 10:
        return edit->setSelection(below(static_cast<int>(edit->text().size()) + 1), below(4));
      case 11:
        return field.setObjectValue(
            values.at(static_cast<std::size_t>(below(static_cast<int>(values.size())))));
      case 12:
        return field.setObjectValueBehindEditing(
            values.at(static_cast<std::size_t>(below(static_cast<int>(values.size())))));
      case 13:
        return test::press(window, below(2) == 0 ? Qt::Key_Escape : Qt::Key_Return);
      case 14:  // another field with the same formatter
        static_cast<void>(formatter->isPartialStringValid(below(2) == 0 ? "" : "1"));
        return;
      default:
        isComposing = false;
        other->setFocus();
        expectAgreement();
        edit->setFocus();
    }
  }

  void press(const char* key) { QTest::keyClicks(edit, QString::fromUtf8(key)); }

  void expectAgreement() {
    EXPECT_EQ(edit->standingText().toStdString(), field.stringValue());
    if (!isComposing) {
      EXPECT_EQ(edit->text(), edit->standingText());
    }
    EXPECT_LE(edits, 1);
    if (field.editing()) return;
    const auto shown =
        field.objectValue() ? formatter->stringForObjectValue(field.objectValue()) : std::nullopt;
    EXPECT_EQ(field.stringValue(), shown.value_or(std::string()));
  }

  int below(int end) { return static_cast<int>(random() % static_cast<std::uint32_t>(end)); }

  std::mt19937 random{GetParam()};
  std::shared_ptr<Formatter> formatter;
  std::vector<std::string> typed;
  int edits = 0;
  bool isComposing = false;
  TextField field{TextField::Role::Entry};
  QWidget window;
  qt::EntryField* edit = new qt::EntryField(&window);
  QPushButton* other = new QPushButton(&window);
};

TEST_P(EntrySession, InANumberField) {
  live([] { return std::make_shared<MyNumberFormatter>(1, 60, 1); },
       {PropertyList::integer(45), PropertyList::integer(75), PropertyList::integer(-3), PropertyList()});
}

TEST_P(EntrySession, InAFieldOfLimitedLength) {
  live(
      [] {
        auto limit = std::make_shared<CustomTextFieldCellFormatter>();
        limit->setMaximumLength(5);
        return limit;
      },
      {PropertyList::string("abc"), PropertyList::string("longer than five"), PropertyList::string("é"),
       PropertyList()});
}

INSTANTIATE_TEST_SUITE_P(Seeds, EntrySession, ::testing::Range(1U, 13U));

}  // namespace
}  // namespace corvane::test

#include <gtest/gtest.h>

#include "formatters/MyNumberFormatter.h"
#include "pane/SettingsBinding.h"
#include "support/FakePane.h"
#include "support/TestPlatform.h"

namespace corvane::test {
namespace {

class SettingsBindingTest : public ::testing::Test {
 protected:
  void open(std::initializer_list<Dictionary::Entry> entries) {
    platform_.writePlist(file_, Dictionary::make(entries));
    store_ = std::make_unique<QLDefaultsController>(file_, platform_.files, platform_.propertyLists);
    store_->setDelegate(&pane_);
  }
  void type(TextField& field, const std::string& text) {
    ASSERT_TRUE(field.typeText(text));
    field.endEditing();
  }

  TestPlatform platform_;
  FakePane pane_;
  const std::string file_ = platform_.paths.clientSettings;
  std::unique_ptr<QLDefaultsController> store_;
  TextField text_{TextField::Role::Entry};
  TextField number_{TextField::Role::Entry};
  Button checkBox_{ButtonKind::CheckBox};
  SettingsBinding textBinding_{text_, "ClientGroup", SettingsBinding::Kind::Text};
  SettingsBinding numberBinding_{number_, "Run_Interval", SettingsBinding::Kind::Integer};
  SettingsBinding checkBoxBinding_{checkBox_, "Plugin_Enabled"};

  void bindAll() {
    number_.setFormatter(std::make_shared<MyNumberFormatter>(1, 6, 1));
    textBinding_.bindTo(*store_);
    numberBinding_.bindTo(*store_);
    checkBoxBinding_.bindTo(*store_);
  }
};

TEST_F(SettingsBindingTest, TheControlsShowTheStoredValues) {
  open({{"ClientGroup", PropertyList::string("lab")},
        {"Run_Interval", PropertyList::integer(4)},
        {"Plugin_Enabled", PropertyList::boolean(true)}});
  bindAll();
  EXPECT_EQ(text_.stringValue(), "lab");
  EXPECT_EQ(number_.stringValue(), "4");
  EXPECT_EQ(checkBox_.state(), ButtonState::On);
}

TEST_F(SettingsBindingTest, ValuesOfAWrongTypeShowAsAbsent) {
  open({{"ClientGroup", PropertyList::integer(5)},
        {"Run_Interval", PropertyList::string("4")},
        {"Plugin_Enabled", PropertyList::string("yes")}});
  bindAll();
  EXPECT_EQ(text_.stringValue(), "");
  EXPECT_EQ(number_.stringValue(), "");
  EXPECT_EQ(checkBox_.state(), ButtonState::Off);
}

TEST_F(SettingsBindingTest, EachEditIsOneCommitOfTheWholeDictionaryAndKeepsUnknownKeys) {
  open({{"Unknown", PropertyList::string("kept")}, {"Run_Interval", PropertyList::integer(4)}});
  bindAll();
  type(text_, "office");
  type(number_, "2");
  checkBox_.click();
  ASSERT_EQ(pane_.writes.size(), 3U);
  EXPECT_EQ(pane_.writes[2].values, Dictionary::make({{"ClientGroup", PropertyList::string("office")},
                                                      {"Plugin_Enabled", PropertyList::boolean(true)},
                                                      {"Run_Interval", PropertyList::integer(2)},
                                                      {"Unknown", PropertyList::string("kept")}}));
}

TEST_F(SettingsBindingTest, TypingTheStoredValueAgainWritesNothing) {
  open({{"ClientGroup", PropertyList::string("lab")}});
  bindAll();
  type(text_, "lab");
  EXPECT_TRUE(pane_.writes.empty());
}

TEST_F(SettingsBindingTest, NothingIsWrittenWhileTheUserIsStillTyping) {
  open({});
  bindAll();
  ASSERT_TRUE(text_.typeText("off"));
  EXPECT_TRUE(pane_.writes.empty());
}

TEST_F(SettingsBindingTest, AClearedNumberIsStoredAsTheDefaultThatIsShown) {
  open({{"Run_Interval", PropertyList::integer(4)}});
  bindAll();
  number_.typeText("");
  number_.endEditing();
  EXPECT_EQ(number_.stringValue(), "1");
  ASSERT_EQ(pane_.writes.size(), 1U);
  EXPECT_EQ(pane_.writes[0].values, Dictionary::make({{"Run_Interval", PropertyList::integer(1)}}));
}

TEST_F(SettingsBindingTest, AClearedGroupIsStoredAsAnEmptyText) {
  open({{"ClientGroup", PropertyList::string("lab")}});
  bindAll();
  type(text_, "");
  ASSERT_EQ(pane_.writes.size(), 1U);
  EXPECT_EQ(pane_.writes[0].values, Dictionary::make({{"ClientGroup", PropertyList::string("")}}));
}

TEST_F(SettingsBindingTest, TheControlsFollowChangesOfTheStore) {
  open({{"ClientGroup", PropertyList::string("lab")}, {"Plugin_Enabled", PropertyList::boolean(true)}});
  bindAll();
  platform_.writePlist(file_, Dictionary::make({{"ClientGroup", PropertyList::string("new")},
                                                {"Plugin_Enabled", PropertyList::boolean(false)}}));
  store_->refreshValues();
  EXPECT_EQ(text_.stringValue(), "new");
  EXPECT_EQ(checkBox_.state(), ButtonState::Off);
  EXPECT_TRUE(pane_.writes.empty());
}

TEST_F(SettingsBindingTest, ARefreshDoesNotDisturbTheTextThatThePersonIsTyping) {
  open({{"ClientGroup", PropertyList::string("lab")}});
  bindAll();
  ASSERT_TRUE(text_.typeText("typing"));
  platform_.writePlist(file_, Dictionary::make({{"ClientGroup", PropertyList::string("new")}}));
  store_->refreshValues();
  EXPECT_EQ(text_.stringValue(), "typing");
  text_.endEditing();
  ASSERT_EQ(pane_.writes.size(), 1U);
  EXPECT_EQ(pane_.writes[0].values, Dictionary::make({{"ClientGroup", PropertyList::string("typing")}}));
}

TEST_F(SettingsBindingTest, AControlCanBeTiedToAnotherStore) {
  open({{"ClientGroup", PropertyList::string("lab")}});
  bindAll();
  QLDefaultsController other(platform_.paths.clientSettingsBackup, platform_.files, platform_.propertyLists);
  textBinding_.bindTo(other);
  EXPECT_EQ(text_.stringValue(), "");
  type(text_, "there");
  EXPECT_TRUE(pane_.writes.empty()) << "the first store is no longer edited";
  EXPECT_EQ(other.value("ClientGroup"), PropertyList::string("there"));
  textBinding_.unbind();  // before the store goes
}

TEST_F(SettingsBindingTest, AControlWhoseBindingHasGoneIsNoLongerTiedToTheStore) {
  open({{"ClientGroup", PropertyList::string("lab")}, {"Plugin_Enabled", PropertyList::boolean(true)}});
  TextField field{TextField::Role::Entry};
  Button checkBox{ButtonKind::CheckBox};
  {
    SettingsBinding ofField(field, "ClientGroup", SettingsBinding::Kind::Text);
    SettingsBinding ofCheckBox(checkBox, "Plugin_Enabled");
    ofField.bindTo(*store_);
    ofCheckBox.bindTo(*store_);
  }
  EXPECT_FALSE(field.onUserEdit);
  EXPECT_FALSE(checkBox.onUserEdit);
  type(field, "office");
  EXPECT_TRUE(pane_.writes.empty());
  store_->values()->set("ClientGroup", PropertyList::string("new"));
  EXPECT_EQ(field.stringValue(), "office");
}

TEST_F(SettingsBindingTest, LongTextsAndControlCharactersArriveUnchanged) {
  open({});
  bindAll();
  const std::string odd = std::string(10000, 'x') + "\n\t\x01<&>\xF0\x9F\x92\xBE";
  type(text_, odd);
  EXPECT_EQ(store_->value("ClientGroup"), PropertyList::string(odd));
}

}  // namespace
}  // namespace corvane::test

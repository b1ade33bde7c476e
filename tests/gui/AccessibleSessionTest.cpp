// Random sessions in which mouse, keys and assistive technology take turns on the same controls, against a
// model that knows nothing but what each setting is to be: after every act the window shows it and the file
// holds it.
#include <QAbstractButton>
#include <QLineEdit>
#include <map>
#include <random>

#include "Assistive.h"
#include "GuiFixture.h"
#include "support/DemoClient.h"
#include "support/Values.h"
#include "values/Conversions.h"

namespace corvane::test {
namespace {

enum class Way { Mouse, Keys, Assistive };

/// A control of the Options tab, and where its setting stands.
struct Setting {
  const char* control;
  const std::string PathTable::*file;
  const char* key;
};

const std::vector<Setting> kSwitches = {
    {"bootVolumeWarningCheckbox", &PathTable::rootCapacitySettings, "Plugin_Enabled"},
    {"timeMachineWarningCheckbox", &PathTable::timeMachineSettings, "Plugin_Enabled"},
    {"automountCheckbox", &PathTable::autoDiskMount, "AutomountDisksWithoutUserLogin"}};
const std::vector<Setting> kNumbers = {
    {"bootVolumeFullTextField", &PathTable::rootCapacitySettings, "Capacity_Threshold"},
    {"timeMachineInactiveTextField", &PathTable::timeMachineSettings, "Days_Until_Warning"}};

class AccessibleSession : public GuiTest, public ::testing::WithParamInterface<unsigned> {
 protected:
  void SetUp() override {
    open(demo.root);
    openLock();
    clickTab(1);
    for (const auto* settings : {&kSwitches, &kNumbers}) {
      for (const Setting& each : *settings) model[each.control] = storedValue(each);
    }
  }

  [[nodiscard]] PropertyList storedValue(const Setting& setting) const {
    const PropertyList value = readPlist(demo.paths.*setting.file).asDictionary().value(setting.key);
    return value ? value : flag(false);
  }
  void flip(const Setting& setting, Way way) {
    auto& box = widget<QAbstractButton>(setting.control);
    switch (way) {
      case Way::Mouse:
        QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(9, box.height() / 2));
        break;
      case Way::Keys:
        box.setFocus();
        press(window(), Qt::Key_Space);
        break;
      case Way::Assistive:
        toggleThing(accessible(box));
        break;
    }
    model[setting.control] = flag(!boolValue(model[setting.control]));
  }
  /// Numbers outside the range are refused, whatever they come from.
  void enter(const Setting& setting, int number, Way way) {
    auto& field = widget<QLineEdit>(setting.control);
    const std::string typed = std::to_string(number);
    const bool isTaken = number >= 1 && number <= 99;
    if (way == Way::Assistive) {
      window().setFocus();
      accessible(field).editableTextInterface()->replaceText(0, static_cast<int>(field.text().size()),
                                                             QString::fromStdString(typed));
    } else if (isTaken) {
      field.setFocus();
      field.selectAll();
      type(field, typed.c_str());
      press(window(), Qt::Key_Return);
    }
    if (isTaken) model[setting.control] = test::number(number);
  }
  void expectShownAndStored() {
    for (const Setting& each : kSwitches) {
      EXPECT_EQ(widget<QAbstractButton>(each.control).isChecked(), boolValue(model[each.control]))
          << each.control;
      EXPECT_EQ(accessible(widget(each.control)).state().checked, boolValue(model[each.control]))
          << each.control;
      EXPECT_EQ(boolValue(storedValue(each)), boolValue(model[each.control])) << each.control;
    }
    for (const Setting& each : kNumbers) {
      EXPECT_EQ(widget<QLineEdit>(each.control).text().toInt(), intValue(model[each.control]))
          << each.control;
      EXPECT_EQ(intValue(storedValue(each)), intValue(model[each.control])) << each.control;
    }
  }

  DemoClient demo{"0"};
  std::map<std::string, PropertyList> model;
};

TEST_P(AccessibleSession, WhatIsShownIsWhatIsStoredWhateverWayItWasDone) {
  std::mt19937 random(GetParam());
  const auto below = [&random](std::size_t end) { return random() % end; };
  for (int step = 0; step < 40; ++step) {
    const Way way = static_cast<Way>(below(3));
    SCOPED_TRACE(::testing::Message() << "step " << step << " by way " << static_cast<int>(way));
    if (below(3) == 0) {
      enter(kNumbers[below(kNumbers.size())], static_cast<int>(below(120)), way);
    } else {
      flip(kSwitches[below(kSwitches.size())], way);
    }
    expectShownAndStored();
    if (HasFailure()) return;
  }
}

INSTANTIATE_TEST_SUITE_P(Random, AccessibleSession, ::testing::Range(1U, 5U));

}  // namespace
}  // namespace corvane::test

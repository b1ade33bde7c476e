#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/PluginRowHeights.h"
#include "plugins/PluginsTabFixture.h"

namespace corvane {
namespace {

using namespace test;

class PluginRowHeightsTest : public PluginsTabFixture {
 protected:
  PluginRowHeightsTest() { outline().setRowHeight(20); }
  double heightWithHint(std::string_view type, double width) {
    platform.workspace.widths["Hint"] = width;
    addPlugin("check_x", options({option(type)}));
    awake();
    return outline().heightOfRow(optionRow());
  }
};

struct HeightCase {
  double width;
  double height;
  double heightOfCheckbox;
};

TEST_F(PluginRowHeightsTest, AnOptionHasALineForItsHintAndOneMoreForALongOne) {
  const std::vector<HeightCase> cases = {
      {0, 20, 20},      {0.9, 20, 20},  {1, 40, 40},     {457, 40, 40},
      {457.99, 40, 40}, {458, 40, 60},  {473, 40, 60},   {473.99, 40, 60},
      {474, 60, 60},    {5000, 60, 60}, {1e300, 60, 60}, {std::numeric_limits<double>::infinity(), 60, 60},
  };
  for (const HeightCase& one : cases) {
    EXPECT_EQ(heightWithHint("Checkbox", one.width), one.heightOfCheckbox) << one.width;
    for (const char* type : {"TextField", "DisplayOnly", "Checkboxes", "PopUpMenu", "PluginValidation"}) {
      EXPECT_EQ(heightWithHint(type, one.width), one.height) << type << " " << one.width;
    }
  }
}

TEST_F(PluginRowHeightsTest, TheHintIsMeasuredInItsOwnFont) {
  awakeWith(option("TextField"));
  static_cast<void>(outline().heightOfRow(optionRow()));
  ASSERT_EQ(platform.workspace.measured.size(), 1U);
  EXPECT_EQ(platform.workspace.measured[0].first, "Hint");
  EXPECT_EQ(platform.workspace.measured[0].second, (Font{Font::Family::User, 11, false, true}));
}

TEST_F(PluginRowHeightsTest, AnOptionWithoutAHintIsOneRowHigh) {
  addPlugin("check_x", options({without(option("TextField"), "SettingTitleHint"),
                                with(option("TextField"), "SettingTitleHint", text("")),
                                with(option("TextField"), "SettingTitleHint", number(5))}));
  awake();
  for (const std::size_t index : {0U, 1U, 2U})
    EXPECT_EQ(outline().heightOfRow(optionRow(index)), 20) << index;
}

TEST_F(PluginRowHeightsTest, ValueRowsWithABorderedControlAreHalfARowHigher) {
  for (const std::string_view type : setting_type::kAll) {
    storeARowFor(type);
    addPlugin("check_x", options({option(type)}));
    awake();
    const bool isBordered = type == "PopUpMenu" || type == "PluginValidation" || type == "NumberPicker";
    for (const OutlineItem& row : outline().childrenOfItem(optionRow())) {
      EXPECT_EQ(outline().heightOfRow(row), isBordered ? 30 : 20) << type;
    }
  }
}

TEST_F(PluginRowHeightsTest, PluginRowsAndLinksAreOneRowHigh) {
  awakeWith(with(option("Checkbox"), "SettingDetailsURL", text("http://example.com")));
  EXPECT_EQ(outline().heightOfRow(plugin()), 20);
  EXPECT_EQ(outline().heightOfRow(valueRow()), 20);
}

}  // namespace
}  // namespace corvane

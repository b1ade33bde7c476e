#include <map>
#include <string_view>

#include "AssemblyFixture.h"
#include "support/NamedControls.h"

namespace corvane::test {
namespace {

bool isPlainLabel(const Control& control) {
  if (const auto* field = dynamic_cast<const TextField*>(&control)) return !field->editable();
  const auto* button = dynamic_cast<const Button*>(&control);
  return button != nullptr && button->kind() == ButtonKind::Label && !button->action;
}

class AccessibleNamesTest : public AssemblyFixture {};

TEST_F(AccessibleNamesTest, EveryControlThatIsNoPlainLabelHasANameOfItsOwn) {
  std::map<std::string_view, int> uses;
  for (const auto& [name, control] : namedControls(load())) {
    if (isPlainLabel(*control)) continue;
    EXPECT_FALSE(control->accessibleName().empty()) << name;
    ++uses[control->accessibleName()];
  }
  for (const auto& [name, count] : uses) EXPECT_EQ(count, 1) << name;
  EXPECT_GT(uses.size(), 20U);
}

}  // namespace
}  // namespace corvane::test

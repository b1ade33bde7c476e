#import "binders/CellMaker.h"

#include <type_traits>
#include <variant>

#import "System.h"
#import "Text.h"

namespace corvane::appkit {
namespace {

constexpr double kFieldWidth = 320;
constexpr double kMenuWidth = 240;
constexpr double kNumberWidth = 110;
constexpr CGFloat kIcon = 16;

bool isPicture(const ButtonCell& cell) { return !cell.image.typeCode.empty(); }
bool isPushButton(const ButtonCell& cell) {
  return cell.kind == ButtonCell::Kind::MomentaryPushIn && cell.bordered;
}

template <typename TextCell>
NSCell* makeField(NSTextFieldCell* cell, const TextCell& description) {
  [cell setEditable:description.editable];
  [cell setSelectable:description.editable];
  [cell setBezeled:description.editable];
  [cell setDrawsBackground:description.editable];
  [cell setScrollable:description.editable];
  return cell;
}

struct Make {
  NSCell* operator()(const EmptyCell& /*cell*/) const { return [[NSCell alloc] initTextCell:@""]; }
  NSCell* operator()(const ButtonCell& description) const {
    NSButtonCell* cell = [[NSButtonCell alloc] init];
    if (isPicture(description) || !description.bordered) {
      [cell setButtonType:kMomentaryChange];
      [cell setBordered:NO];
    } else {
      [cell setButtonType:isPushButton(description) ? kMomentaryPushIn : kSwitch];
    }
    if (description.roundedBezel && description.bordered) [cell setBezelStyle:kRoundedBezel];
    return cell;
  }
  NSCell* operator()(const PopUpButtonCell& description) const {
    return [[NSPopUpButtonCell alloc] initTextCell:@"" pullsDown:description.pullsDown];
  }
  NSCell* operator()(const TextFieldCell& description) const {
    return makeField([[CORVANE_ENTRY_CELL alloc] initTextCell:@""], description);
  }
  NSCell* operator()(const SecureTextFieldCell& description) const {
    NSSecureTextFieldCell* cell = [[NSSecureTextFieldCell alloc] initTextCell:@""];
    [cell setEchosBullets:description.echosBullets];
    return makeField(cell, description);
  }
  NSCell* operator()(const ComboBoxCell& description) const {
    NSComboBoxCell* cell = [[NSComboBoxCell alloc] initTextCell:@""];
    [cell setEditable:description.editable];
    [cell setBezeled:YES];
    [cell setDrawsBackground:YES];
    [cell setCompletes:NO];
    return cell;
  }
};

struct Fill {
  NSCell* cell;
  bool enabled;

  void operator()(const EmptyCell& /*cell*/) const {}
  void operator()(const ButtonCell& description) const {
    auto* button = static_cast<NSButtonCell*>(cell);
    const TextStyle style{controlFont(), isPushButton(description) ? kCentered : kLeftAligned, enabled};
    [button setAttributedTitle:toNSAttributedString(description.title, style)];
    [button setAlignment:style.alignment];
    if (isPicture(description)) {
      NSImage* icon = [[iconForTypeCode(description.image.typeCode) copy] autorelease];
      [icon setSize:NSMakeSize(kIcon, kIcon)];
      [button setImage:icon];
    }
    if (isPicture(description) || description.kind == ButtonCell::Kind::Switch) {
      const bool right = description.imagePosition == ButtonCell::ImagePosition::Right;
      [button setImagePosition:right ? NSImageRight : NSImageLeft];
    }
  }
  // Its menu may be open: it is made anew only for other items.
  void operator()(const PopUpButtonCell& description) const {
    auto* popUp = static_cast<NSPopUpButtonCell*>(cell);
    if (!shows(popUp, description.items)) setItems(popUp, description.items);
    [popUp selectItemAtIndex:description.selectedIndex];
  }
  static bool shows(NSPopUpButtonCell* popUp, const std::vector<std::string>& items) {
    if ([popUp numberOfItems] != static_cast<NSInteger>(items.size())) return false;
    for (std::size_t i = 0; i < items.size(); ++i) {
      if (![[popUp itemTitleAtIndex:static_cast<NSInteger>(i)] isEqual:toNSString(items[i])]) return false;
    }
    return true;
  }
  static void setItems(NSPopUpButtonCell* popUp, const std::vector<std::string>& items) {
    [popUp removeAllItems];
    // Through the menu: the cell itself would drop an item whose title comes again.
    for (const std::string& title : items) {
      NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:toNSString(title)
                                                    action:nullptr
                                             keyEquivalent:@""];
      [[popUp menu] addItem:item];
      [item release];
    }
  }
  void operator()(const ComboBoxCell& description) const {
    auto* box = static_cast<NSComboBoxCell*>(cell);
    if ([box numberOfItems] == static_cast<NSInteger>(description.items.size())) return;
    [box removeAllItems];
    for (const std::int32_t number : description.items)
      [box addItemWithObjectValue:toNSString(std::to_string(number))];
  }
  template <typename TextCell>
  void operator()(const TextCell& description) const {
    [static_cast<NSTextFieldCell*>(cell) setPlaceholderString:toNSString(description.placeholder)];
  }
};

}  // namespace

NSCell* makeCell(const Cell& description) {
  NSCell* cell = std::visit(Make{}, description);
  [cell setFont:controlFont()];
  return cell;
}

bool isSameKind(const Cell& one, const Cell& other) {
  if (one.index() != other.index()) return false;
  if (const auto* button = std::get_if<ButtonCell>(&one)) {
    const auto& second = std::get<ButtonCell>(other);
    return button->kind == second.kind && button->bordered == second.bordered &&
           button->image == second.image;
  }
  return isTypedIn(one) == isTypedIn(other);
}

void fillCell(NSCell* cell, const Cell& description, bool enabled) {
  std::visit(Fill{cell, enabled}, description);
  [cell
      setEnabled:enabled || (std::holds_alternative<TextFieldCell>(description) && !isTypedIn(description))];
}

id objectValueOf(const PreparedCell& prepared) {
  return std::visit(
      [&](const auto& cell) -> id {
        using Kind = std::decay_t<decltype(cell)>;
        if constexpr (std::is_same_v<Kind, EmptyCell>) {
          return nil;
        } else if constexpr (std::is_same_v<Kind, ButtonCell>) {
          return [NSNumber numberWithInt:cell.on ? 1 : 0];
        } else if constexpr (std::is_same_v<Kind, PopUpButtonCell>) {
          return [NSNumber numberWithInt:cell.selectedIndex];
        } else {
          const auto* styled = std::get_if<AttributedText>(&prepared.value);
          if (styled == nullptr) return toNSString(cell.text);
          return toNSAttributedString(*styled, {controlFont()});
        }
      },
      *prepared.cell);
}

bool isTypedIn(const Cell& cell) {
  return std::visit(
      [](const auto& kind) {
        if constexpr (requires { kind.editable; }) return kind.editable;
        return false;
      },
      cell);
}

std::string typedTextOf(const Cell& cell) {
  return std::visit(
      [](const auto& kind) -> std::string {
        if constexpr (requires { kind.editable; }) return kind.editable ? kind.text : std::string();
        return {};
      },
      cell);
}

double widthOf(const Cell& cell) {
  if (const auto* button = std::get_if<ButtonCell>(&cell)) {
    const double title = [toNSAttributedString(button->title, {controlFont()}) size].width;
    if (isPushButton(*button)) return title + 40;
    return title + (isPicture(*button) || button->bordered ? 28 : 8);
  }
  if (std::holds_alternative<PopUpButtonCell>(cell)) return kMenuWidth;
  if (std::holds_alternative<ComboBoxCell>(cell)) return kNumberWidth;
  return isTypedIn(cell) ? kFieldWidth : 0;
}

}  // namespace corvane::appkit

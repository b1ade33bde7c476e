#include "WholeSession.h"

#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QTabBar>
#include <algorithm>

#include "InputMethod.h"
#include "values/Conversions.h"
#include "widgets/TabPane.h"

namespace corvane::test {
namespace {

/// As long as this lives a list that has just opened takes a click at once, each letter that is typed in
/// one begins a new word, and the caret does not blink.
class Unhurried final {
 public:
  Unhurried() {
    QApplication::setDoubleClickInterval(0);
    QApplication::setKeyboardInputInterval(0);
    QApplication::setCursorFlashTime(0);
  }
  ~Unhurried() {
    QApplication::setDoubleClickInterval(doubleClick_);
    QApplication::setKeyboardInputInterval(keyboardInput_);
    QApplication::setCursorFlashTime(cursorFlash_);
  }
  Unhurried(const Unhurried&) = delete;
  Unhurried& operator=(const Unhurried&) = delete;

 private:
  int doubleClick_ = QApplication::doubleClickInterval();
  int keyboardInput_ = QApplication::keyboardInputInterval();
  int cursorFlash_ = QApplication::cursorFlashTime();
};

}  // namespace

WholeSession::WholeSession(unsigned seed) : random_(seed) {
  for (const auto& [path, contents] : model_.allFiles()) window_.changeByOthers(path, contents);
  const auto random = [this](int limit) { return below(limit); };
  for (const ModelPlugin& plugin : WholeModel::pluginDefinitions()) {
    for (const ModelOption& option : plugin.options) {
      const Dictionary before = model_.file(option.path).asDictionary();
      Dictionary contents =
          before ? before.deepCopy().asDictionary() : Dictionary::make({{"Unknown", number(1)}});
      contents.set(option.key, WholeModel::anyPluginValue(option.key, random));
      model_.changeByOthers(option.path, contents);
      window_.changeByOthers(option.path, contents);
    }
  }
  if (!oneIn(4)) listener_ = std::make_unique<Listener>();
  window_.open();
  model_.openLock();
  model_.closeLock();
  persons_ = {std::make_unique<MousePerson>(window_.window()),
              std::make_unique<KeyboardPerson>(window_.window()),
              std::make_unique<AssistivePerson>(window_.window(), assisted_)};
}

WholeSession::~WholeSession() = default;

void WholeSession::live(int steps) {
  const Unhurried unhurried;
  for (int i = 0; i < steps && !::testing::Test::HasFailure(); ++i) {
    said_.clear();
    // Without assistive technology the toolkit does not keep its side up to date.
    way_ = static_cast<Way>(below(listener_ != nullptr ? 3 : 2));
    SCOPED_TRACE("step " + std::to_string(i));
    try {
      step();
      settle();
      compare();
    } catch (const std::exception& error) {
      ADD_FAILURE() << error.what();
    }
    if (::testing::Test::HasFailure()) {
      ADD_FAILURE() << "step " << i << " by way " << static_cast<int>(way_) << ":" << said_;
    }
  }
}

void WholeSession::settle() {
  QApplication::processEvents();
  // What has ended an act is delivered first.
  EXPECT_TRUE(eventually([this] {
    return window_.assembly().pluginsView().pluginsTable.holdsRows() == model_.plugins.isHeld();
  }));
  if (QApplication::activeModalWidget() != nullptr || window_.window().isActiveWindow()) return;
  // Without a window manager a panel that was above the window may still count as the active one.
  window_.window().activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&window_.window(), kHangMilliseconds));
}

void WholeSession::step() {
  switch (below(16)) {
    case 0:
      return switchLock();
    case 1:
      return meanwhile();
    case 2:
      return reportChanges();
    case 3:
      return askForRemovalOfClient();
    case 4:
    case 5:
    case 6:
      return actAtSetting();
    case 7:
    case 8:
    case 9:
      return actAtVolumes();
    case 10:
      return actAtSheet();
    default:
      return actAtPlugins();
  }
}

void WholeSession::goToTab(int tab) {
  if (tab == tab_) return;
  person().chooseTab(tab);
  if (sheet() != nullptr) {
    meanwhile();
    answer("Continue");
  }
  tab_ = tab;
  EXPECT_EQ(widget<qt::TabPane>("tabView").shownTab(), tab);
}

void WholeSession::leaveTab(int next) {
  if (way_ == Way::Keys) {
    press(window_.window(), next > tab_ ? Qt::Key_PageDown : Qt::Key_PageUp, Qt::ControlModifier);
  } else {
    person().chooseTab(next);
  }
  tab_ = next;
  EXPECT_EQ(widget<qt::TabPane>("tabView").shownTab(), next);
}

void WholeSession::answer(const char* button) {
  ASSERT_NE(sheet(), nullptr) << "no sheet is open to answer " << button;
  person().press((std::string("button ") + button).c_str());
}

void WholeSession::switchLock() {
  say("presses the lock");
  person().press("authView");
  if (model_.unlocked()) {
    closeLock();
  } else {
    model_.openLock();
  }
}

/// With the lock the editor closes that is open in a row, and what is being typed in a field goes.
void WholeSession::closeLock() {
  model_.closeLock();
  typedSetting_ = nullptr;
  endEditOfRow();
  model_.plugins.actEnded();
}

void WholeSession::endEditOfRow() {
  if (std::exchange(editsRow_, false)) --model_.plugins.holds;
}

void WholeSession::loseRights() {
  if (!model_.unlocked()) return;
  say("loses the rights");
  window_.root.recording.granted->tellLost();
  closeLock();
}

// --- what comes in between

void WholeSession::meanwhile() {
  for (int more = 1 + below(3); more > 0; --more) {
    switch (below(8)) {
      case 0:
      case 1:
      case 2:
        clientChangesSomething();
        if (oneIn(2)) reportChanges();
        break;
      case 3:
        reportChanges();
        break;
      case 4:
        say("time passes");
        window_.letTimePass(1 + below(9));
        break;
      case 5:
        changeFate();
        break;
      case 6:
        if (oneIn(3)) loseRights();
        break;
      default:
        assistActsElsewhere();
        break;
    }
    settle();
    compare();
  }
}

void WholeSession::breakSomething() {
  const std::vector<std::string> files = {
      model_.paths.clientSettings,       model_.paths.timeMachineSettings,
      model_.paths.rootCapacitySettings, model_.paths.autoDiskMount,
      model_.paths.volumesSettings,      anyOf(anyOf(WholeModel::pluginDefinitions()).options).path};
  const std::string& path = anyOf(files);
  static const std::array<std::string, 4> kNoLists = {"", "no property list", "<plist><dict><key>Set</key>",
                                                      "<plist><string>neither</string></plist>"};
  say("the client breaks " + path);
  model_.changeByOthers(path, {});
  window_.breakByOthers(path, anyOf(kNoLists));
}

void WholeSession::clientChangesSomething() {
  if (oneIn(8)) return breakSomething();
  const auto random = [this](int limit) { return below(limit); };
  // One that can't be read is made anew.
  const auto dictionaryAt = [this](const std::string& file) {
    const Dictionary before = model_.file(file).asDictionary();
    return before ? before.deepCopy().asDictionary() : Dictionary::make({{"Unknown", number(1)}});
  };
  std::string path;
  PropertyList contents;
  switch (below(8)) {
    case 0: {  // a value of a store
      const ModelSetting& setting = anyOf(WholeModel::settings());
      using Kind = ModelSetting::Kind;
      static const std::array<std::string, 4> kFiles = {
          model_.paths.clientSettings, model_.paths.timeMachineSettings, model_.paths.rootCapacitySettings,
          model_.paths.autoDiskMount};
      path = kFiles[setting.store];
      Dictionary changed = dictionaryAt(path);
      changed.set(setting.key, setting.kind == Kind::Switch   ? flag(oneIn(2))
                               : setting.kind == Kind::Number ? number(1 + below(setting.largest))
                                                              : text("theirs " + std::to_string(below(100))));
      contents = changed;
      break;
    }
    case 1: {
      path = model_.paths.timeMachineSettings;
      Dictionary changed = dictionaryAt(path);
      changed.set("Manual_Run_Hour", text(std::to_string(below(24))));
      changed.set("Days_Until_Manual_Run", number(below(100)));
      changed.set("Enable_On_Removal", flag(oneIn(2)));
      contents = changed;
      break;
    }
    case 2: {
      path = model_.paths.volumesSettings;
      const Array before = model_.file(path).asArray();
      if (!before || before.size() == 0) return;
      Array changed = before.deepCopy().asArray();
      Dictionary entry = changed.elements()[static_cast<std::size_t>(below(static_cast<int>(changed.size())))]
                             .asDictionary();
      entry.set("PresenceThreshold", number(1 + below(60)));
      entry.set("MonitorUsage", flag(oneIn(2)));
      contents = changed;
      break;
    }
    case 3:
      if (oneIn(3)) {
        say("an entry is duplicated, or no longer");
        model_.saveOrForgetDuplicate();
        window_.changeByOthers(model_.paths.volumesSettings, model_.file(model_.paths.volumesSettings));
        return;
      }
      say("a volume comes or goes");
      model_.mountOrUnmount(static_cast<std::size_t>(below(static_cast<int>(model_.devices.size()))));
      window_.changeByOthers(model_.paths.diskJournal, model_.file(model_.paths.diskJournal));
      return;
    case 4: {
      path = PluginsModel::settingsOf(anyOf(WholeModel::pluginDefinitions()).name);
      Dictionary changed = dictionaryAt(path);
      changed.set("PrefPaneVisibility", flag(!oneIn(3)));
      if (oneIn(2)) changed.set("Plugin_Enabled", flag(oneIn(2)));
      contents = changed;
      break;
    }
    default: {
      const ModelOption& option = anyOf(anyOf(WholeModel::pluginDefinitions()).options);
      path = option.path;
      if (oneIn(8)) break;  // it is removed
      Dictionary changed = dictionaryAt(path);
      changed.set(option.key, oneIn(6) ? PropertyList() : WholeModel::anyPluginValue(option.key, random));
      contents = changed;
    }
  }
  say("the client changes " + path);
  model_.changeByOthers(path, contents);
  window_.changeByOthers(path, contents);
}

void WholeSession::reportChanges() {
  say("changes are reported");
  const std::vector<std::string> directories = model_.takeChangedDirectories();
  window_.reportDirectories(directories);
  model_.directoriesWereReported(directories);
}

void WholeSession::changeFate() {
  std::string staging;
  std::string copying;
  std::string starting;
  switch (below(5)) {
    case 0:
      staging = "No space left on device";
      break;
    case 1:
      copying = "the copy failed";
      break;
    case 2:
      starting = "not today";
      break;
    default:
      break;
  }
  say("fate: " + staging + copying + starting);
  window_.setFate(staging, copying, starting);
  const std::string why = staging.empty() ? copying : staging + " (" + window_.staging() + ")";
  model_.setFate(why, starting, copying.empty());
}

/// Something else than what the user is in the middle of. Behind a sheet it does nothing.
void WholeSession::assistActsElsewhere() {
  if (listener_ == nullptr || QApplication::activeModalWidget() != nullptr) return;
  if (QApplication::activePopupWidget() != nullptr) return;
  const bool isInReach = sheet() == nullptr;
  if (tab_ == 1) {
    const ModelSetting& setting = WholeModel::settings()[oneIn(2) ? 2 : 6];
    if (!model_.unlocked()) return;
    say(std::string("assistive technology switches ") + setting.control);
    // Without waiting: the mouse may hold it down.
    accessible(widget(setting.control))
        .actionInterface()
        ->doAction(QAccessibleActionInterface::toggleAction());
    if (isInReach) model_.edit(setting, flag(!boolValue(model_.shownValue(setting))));
  } else if (tab_ == 2 && model_.unlocked() && !model_.plugins.shown.empty() && isInReach) {
    const std::string plugin = anyOf(model_.plugins.shown);
    say("assistive technology switches " + plugin);
    persons_[2]->actOn({plugin.c_str()}, Spot::Tick);
    model_.plugins.toggleEnabled(plugin);
    model_.plugins.actEnded();
  } else if (isInReach && oneIn(3)) {
    say("assistive technology presses the lock");
    persons_[2]->press("authView", {});
    if (model_.unlocked()) {
      closeLock();
    } else {
      model_.openLock();
    }
  }
}

// --- settings

std::vector<std::string> WholeSession::enter(QLineEdit& field, const std::string& text,
                                             const Allows& allows) {
  std::vector<std::string> stood;
  std::string standing;
  bool isSelected = true;
  const auto offer = [&](const std::string& put) {
    const std::string proposed = isSelected ? put : standing + put;
    if (!allows(proposed)) return;
    isSelected = false;
    standing = proposed;
    stood.push_back(standing);
  };
  if (oneIn(4)) {
    say("clears it");
    press(field, Qt::Key_Delete);
    offer("");
  }
  const bool isOnlyCleared = !stood.empty() && oneIn(2);
  if (!isOnlyCleared && oneIn(3)) {
    say("with an input method");
    commit(field, text.c_str());
    offer(text);
  } else if (!isOnlyCleared) {
    type(field, text.c_str());
    for (const char key : text) offer(std::string(1, key));
  }
  if (stood.empty() || !oneIn(4)) return stood;
  say("undoes it");
  if (field.echoMode() != QLineEdit::Normal) {  // has no history: it is cleared
    press(field, Qt::Key_Z, Qt::ControlModifier);
    if (allows("")) stood.emplace_back();
    return stood;
  }
  // How far a step of the history goes is the toolkit's to say, back to what was typed here earlier. What it
  // leads to counts as typed.
  const auto goThere = [&](Qt::KeyboardModifiers modifiers) {
    press(field, Qt::Key_Z, modifiers);
    if (field.text().toStdString() == stood.back()) return;
    stood.push_back(field.text().toStdString());
    EXPECT_TRUE(allows(stood.back())) << stood.back();
  };
  for (int steps = 1 + below(3); steps > 0; --steps) goThere(Qt::ControlModifier);
  if (oneIn(2)) return stood;
  say("and does it again");
  for (int steps = 1 + below(3); steps > 0; --steps) goThere(Qt::ControlModifier | Qt::ShiftModifier);
  return stood;
}

void WholeSession::actAtSetting() {
  const ModelSetting& setting = anyOf(WholeModel::settings());
  goToTab(setting.tab);
  if (!model_.unlocked()) {
    EXPECT_FALSE(widget(setting.control).isEnabled()) << setting.control;
    return;
  }
  if (setting.kind != ModelSetting::Kind::Switch) return typeInSetting(setting);
  const bool byLabel = setting.label != nullptr && way_ == Way::Mouse && oneIn(3);
  const char* control = byLabel ? setting.label : setting.control;
  say(std::string("switches ") + control);
  if (way_ == Way::Mouse && oneIn(2)) {
    QWidget& pressed = widget(control);
    const QPoint place = byLabel ? pressed.rect().center() : QPoint(9, pressed.height() / 2);
    QTest::mousePress(&pressed, Qt::LeftButton, {}, place);
    meanwhile();
    say("lets go");
    QTest::mouseRelease(&pressed, Qt::LeftButton, {}, place);
    if (!model_.unlocked()) return;
  } else {
    person().press(control);
  }
  model_.edit(setting, flag(!boolValue(model_.shownValue(setting))));
}

void WholeSession::typeInSetting(const ModelSetting& setting) {
  const bool isNumber = setting.kind == ModelSetting::Kind::Number;
  const std::string keys = std::to_string(1 + below(isNumber ? 120 : 1000));
  const auto allows = [&](const std::string& proposed) {
    if (!isNumber) return true;
    model_.formatterWasAsked(setting.formatter, proposed);
    return proposed.empty() || (std::stoi(proposed) >= 1 && std::stoi(proposed) <= setting.largest);
  };
  const auto valueOf = [&](const std::string& typed) {
    return isNumber ? model_.typedNumber(setting.formatter, typed) : text(typed);
  };
  say(std::string("types ") + keys + " in " + setting.control);
  auto& field = widget<QLineEdit>(setting.control);
  if (way_ == Way::Assistive) {
    person().fill(setting.control, keys.c_str());
    if (allows(keys)) {
      // Where the keyboard is, it is stored as a typed one is.
      if (field.hasFocus()) press(window_.window(), Qt::Key_Return);
      model_.edit(setting, valueOf(keys));
    }
    return;
  }
  // As three clicks or the Tab key leave it.
  field.setFocus();
  field.selectAll();
  const auto texts = enter(field, keys, allows);
  if (!texts.empty()) {
    typedSetting_ = &setting;
    typed_ = texts.back();
  }
  if (oneIn(2)) meanwhile();
  const bool isStored = model_.unlocked() && typedSetting_ != nullptr;
  const int end = below(4);
  say("ends typing in way " + std::to_string(end));
  if (!model_.unlocked()) {
    // What was typed has gone with the lock.
  } else if (end == 0) {
    press(window_.window(), Qt::Key_Escape);
  } else if (end == 1) {
    press(window_.window(), Qt::Key_Tab);
  } else if (end == 2) {
    leaveTab(1 - tab_);
  } else {
    press(window_.window(), Qt::Key_Return);
  }
  typedSetting_ = nullptr;
  if (isStored && end != 0) model_.edit(setting, valueOf(typed_));
}

void WholeSession::askForRemovalOfClient() {
  goToTab(0);
  if (!model_.unlocked()) return;
  say("asks for the removal of the client");
  person().press("uninstallButton");
  if (oneIn(2)) person().switchAccessory();
  meanwhile();
  const bool removes = oneIn(2);
  answer(removes ? "Uninstall" : "Cancel");
  if (!removes) return;
  model_.startScript(model_.paths.runClient);
}

// --- volumes and the sheet

void WholeSession::actAtVolumes() {
  goToTab(1);
  if (!model_.unlocked()) {
    // Without a selection it is hidden, and as it was.
    const QWidget& box = widget("monitorPresenceCheckbox");
    EXPECT_FALSE(box.isVisible() && box.isEnabled());
    EXPECT_FALSE(widget("showAllVolumeTypesButton").isEnabled());
    return;
  }
  const Dictionary entry = model_.selectedVolume();
  switch (below(7)) {
    case 0:
    case 1: {
      if (model_.volumes.empty()) return;
      const std::string label = model_.label(anyOf(model_.volumes));
      say("selects " + label);
      person().selectRow("volumesTable", label.c_str());
      // Of two that read alike, the first.
      const auto row = std::ranges::find_if(
          model_.volumes, [&](const Dictionary& each) { return model_.label(each).starts_with(label); });
      model_.selected = static_cast<int>(row - model_.volumes.begin());
      return;
    }
    case 2:
      say("switches system volumes");
      person().press("showAllVolumeTypesButton");
      return model_.showOrHideSystemVolumes();
    case 3:
      if (!entry || !model_.isMissing(entry)) return;
      say("purges");
      person().press("purgeButton");
      return model_.purge();
    case 4:
      if (entry && !model_.isDuplicate(entry)) typeThreshold(oneIn(2));
      return;
    default: {
      if (!entry || model_.isDuplicate(entry)) return;
      const bool presence = oneIn(2);
      const char* key = presence ? "MonitorPresence" : "MonitorUsage";
      say(std::string("switches ") + key);
      person().press(presence ? "monitorPresenceCheckbox" : "monitorUsageCheckbox");
      model_.setVolume(key, flag(!boolValue(entry.value(key))));
    }
  }
}

void WholeSession::typeThreshold(bool presence) {
  const char* control = presence ? "monitorPresenceThresholdTextField" : "monitorUsageThresholdTextField";
  const char* key = presence ? "PresenceThreshold" : "UsageThreshold";
  const std::string keys = std::to_string(1 + below(120));
  say(std::string("types ") + keys + " in " + control);
  auto& field = widget<QLineEdit>(control);
  const int formatter = presence ? kPresenceFormatter : kUsageFormatter;
  const auto allows = [&](const std::string& proposed) {
    model_.formatterWasAsked(formatter, proposed);
    return proposed.empty() || std::stoi(proposed) <= (presence ? 60 : 99);
  };
  std::vector<std::string> texts;
  if (way_ == Way::Assistive) {
    person().fill(control, keys.c_str());
    if (allows(keys)) texts.push_back(keys);
  } else {
    field.setFocus();
    field.selectAll();
    texts = enter(field, keys, allows);
  }
  for (const std::string& each : texts) {
    // Cleared, the one counts as 0; the other is written as it was.
    const bool isAsItWas = each.empty() && !presence;
    model_.setVolume(key, isAsItWas ? model_.selectedVolume().value(key) : number(intValue(text(each))));
  }
  const bool isCleared = !texts.empty() && texts.back().empty();
  // The empty field is left: what it shows then is not what is stored, and is intended.
  if (isCleared) return press(window_.window(), Qt::Key_Return);
  if (oneIn(2)) meanwhile();
  if (field.hasFocus() && oneIn(2)) press(window_.window(), oneIn(2) ? Qt::Key_Return : Qt::Key_Escape);
}

void WholeSession::actAtSheet() {
  goToTab(1);
  if (!model_.unlocked()) return;
  say("opens the sheet");
  person().press("advancedButton");
  model_.openSheet();
  sheetIsOpen_ = true;
  settle();
  compare();
  for (int changes = below(4); changes > 0 && !::testing::Test::HasFailure(); --changes) {
    changeInSheet();
    settle();
    compare();
    // What is typed next is to replace what stands there.
    if (way_ == Way::Keys) press(window_.window(), Qt::Key_Tab);
    if (oneIn(3)) meanwhile();
  }
  const bool accepts = model_.unlocked() && !oneIn(4);
  say(accepts ? "accepts the sheet" : "cancels the sheet");
  person().press(accepts ? "sheetOkButton" : "sheetCancelButton");
  if (accepts) model_.acceptSheet();
  sheetIsOpen_ = false;
}

void WholeSession::chooseHalfOfTheDay() {
  const bool isAfternoon = oneIn(2);
  say(std::string("chooses the half of the day: ") + (isAfternoon ? "PM" : "AM"));
  if (way_ == Way::Assistive || oneIn(2)) {
    person().pick("amPmButton", isAfternoon ? "PM" : "AM");
  } else {
    person().press("amPmButton");
    if (!chooseFromOpenList(isAfternoon ? 1 : 0)) return;
  }
  model_.sheet.isAfternoon = isAfternoon;
}

bool WholeSession::chooseFromOpenList(int place) {
  EXPECT_TRUE(eventually([] { return Person::openList() != nullptr; }));
  meanwhile();
  QAbstractItemView* list = Person::openList();
  // That of a row goes with its editor.
  EXPECT_EQ(list != nullptr, sheetIsOpen_ || model_.unlocked()) << "an open list";
  if (list == nullptr) return false;
  say("chooses from the open list");
  press(*list, Qt::Key_Home);
  for (int step = 0; step < place; ++step) press(*list, Qt::Key_Down);
  press(*list, Qt::Key_Return);
  return true;
}

void WholeSession::changeInSheet() {
  switch (below(4)) {
    case 0:
      model_.sheet.days = 1 + below(99);
      say("types the days " + std::to_string(model_.sheet.days));
      return person().fill("manuallyTriggerTextField", std::to_string(model_.sheet.days).c_str());
    case 1:
      model_.sheet.hour = 1 + below(12);
      say("types the hour " + std::to_string(model_.sheet.hour));
      return person().fill("timeOfDayTextField", std::to_string(model_.sheet.hour).c_str());
    case 2:
      return chooseHalfOfTheDay();
    default:
      model_.sheet.onRemoval = !model_.sheet.onRemoval;
      say("switches the warning on removal");
      return person().press("timeMachineRemovalWarning");
  }
}

}  // namespace corvane::test

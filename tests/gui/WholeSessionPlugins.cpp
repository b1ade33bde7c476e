// The part of a random session that is lived at the Plugins tab.
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>

#include "WholeSession.h"
#include "values/Conversions.h"

namespace corvane::test {
namespace {

/// As long as this lives the letters that are typed in the tree are one word however slowly they come.
class OneWord final {
 public:
  OneWord() { QApplication::setKeyboardInputInterval(kHangMilliseconds); }
  ~OneWord() { QApplication::setKeyboardInputInterval(before_); }
  OneWord(const OneWord&) = delete;
  OneWord& operator=(const OneWord&) = delete;

 private:
  int before_ = QApplication::keyboardInputInterval();
};

/// The editor that is open in a cell.
QWidget* openEditor(const qt::OutlineTree& tree) {
  for (QWidget* widget : tree.viewport()->findChildren<QWidget*>(QStringLiteral("cellEditor"))) {
    if (widget->isVisible()) return widget;
  }
  return nullptr;
}

}  // namespace

TreeRow WholeSession::treeRow(const ModelRow& row) {
  if (row.option < 0) return {row.plugin.c_str()};
  const ModelOption& option = model_.plugins.optionOf(row);
  if (!row.value) return {row.plugin.c_str(), option.key.c_str()};
  const auto values = model_.plugins.valueRows(row.plugin, row.option);
  const auto place = std::find(values.begin(), values.end(), *row.value) - values.begin();
  return {row.plugin.c_str(), option.key.c_str(), static_cast<int>(place)};
}

QModelIndex WholeSession::indexOf(const ModelRow& row) {
  const auto& shown = model_.plugins.shown;
  const auto place = std::find(shown.begin(), shown.end(), row.plugin) - shown.begin();
  const QAbstractItemModel& rows = *tree().model();
  QModelIndex index = rows.index(static_cast<int>(place), 0);
  if (row.option >= 0) index = rows.index(row.option, 0, index);
  if (row.value) index = rows.index(treeRow(row).value, 0, index);
  return index;
}

void WholeSession::actAtPlugins() {
  goToTab(2);
  const OneWord oneWord;
  if (model_.plugins.shown.empty()) return;
  ModelRow row{anyOf(model_.plugins.shown)};
  if (oneIn(6)) {
    say("switches " + row.plugin);
    if (!model_.unlocked() && way_ == Way::Assistive) return;
    clickRow(row, Spot::Tick);
    model_.plugins.toggleEnabled(row.plugin);
    return model_.plugins.actEnded();
  }
  row.option = below(static_cast<int>(model_.plugins.optionsOf(row.plugin).size()));
  const std::vector<std::string> values = model_.plugins.valueRows(row.plugin, row.option);
  const ModelOption& option = model_.plugins.optionOf(row);
  if (option.type != "Checkbox") {
    if (values.empty()) return;
    row.value = anyOf(values);
  }
  say(option.type + " of " + row.plugin + ", " + row.value.value_or(""));
  if (!model_.unlocked()) {
    if (way_ == Way::Mouse) person().actOn(treeRow(row));
    return;
  }
  actAtRow(row);
}

void WholeSession::actAtRow(const ModelRow& row) {
  PluginsModel& plugins = model_.plugins;
  const ModelOption& option = plugins.optionOf(row);
  if (option.type == "Checkbox") {
    clickRow(row, Spot::Control);
    plugins.toggleCheckbox(row);
  } else if (option.type == "Checkboxes") {
    clickRow(row, Spot::Control);
    plugins.toggleName(row);
  } else if (option.type == "NumberPicker" || option.type == "PopUpMenu") {
    pickInRow(row);
  } else if (option.type == "FilePicker" || option.type == "FolderPicker" ||
             (option.isList() && *row.value == "Add a new entry")) {
    chooseInPanel(row);
  } else if (option.isList()) {
    askForRemoval(row);
  } else if (option.type == "PluginValidation") {
    testSettings(row);
  } else {
    typeInRow(row);
  }
  plugins.actEnded();
}

void WholeSession::clickRow(const ModelRow& row, Spot spot) {
  if (way_ != Way::Mouse || oneIn(2)) return person().actOn(treeRow(row), spot);
  if (row.option >= 0) window_.assembly().pluginsView().pluginsTable.expandItem({}, true);
  const QPersistentModelIndex cell = indexOf(row).siblingAtColumn(spot == Spot::Tick ? 0 : 1);
  const auto place = [&] {
    tree().scrollTo(cell);
    const QRect rect = tree().visualRect(cell);
    const int x = spot == Spot::Tick    ? rect.center().x()
                  : spot == Spot::Trash ? rect.right() - 12
                                        : rect.left() + 12;
    return QPoint(x, rect.center().y());
  };
  QTest::mousePress(tree().viewport(), Qt::LeftButton, {}, place());
  if (model_.unlocked()) {
    ++model_.plugins.holds;
    meanwhile();
    --model_.plugins.holds;
  }
  say("lets go");
  QTest::mouseRelease(tree().viewport(), Qt::LeftButton, {}, place());
}

void WholeSession::typeInRow(const ModelRow& row) {
  const std::string keys = "t" + std::to_string(below(1000));
  say("types " + keys);
  if (way_ == Way::Assistive) {
    person().fillCell(treeRow(row), keys.c_str());
    model_.plugins.store(row, text(keys));
    return;
  }
  const PropertyList before = model_.plugins.shownValue(row);
  person().actOn(treeRow(row));
  auto* field = qobject_cast<QLineEdit*>(openEditor(tree()));
  ASSERT_NE(field, nullptr) << "no field opens";
  ++model_.plugins.holds;
  editsRow_ = true;
  const auto texts = enter(*field, keys, [](const std::string&) { return true; });
  if (oneIn(2)) meanwhile();
  endEditOfRow();
  if (!model_.unlocked()) {
    EXPECT_EQ(openEditor(tree()), nullptr);
    return;
  }
  const int end = below(4);
  say("ends typing in way " + std::to_string(end));
  if (end == 0) {
    press(window_.window(), Qt::Key_Escape);
    return;
  }
  const std::string shownBefore = before ? description(before) : std::string();
  if (texts.back() != shownBefore) model_.plugins.store(row, text(texts.back()));
  if (end == 1) {
    press(window_.window(), Qt::Key_Tab);
    QApplication::processEvents();
    if (openEditor(tree()) != nullptr) press(window_.window(), Qt::Key_Escape);
  } else if (end == 2) {
    leaveTab(1);
  } else {
    press(window_.window(), Qt::Key_Return);
  }
}

void WholeSession::pickInRow(const ModelRow& row) {
  const bool isMenu = model_.plugins.optionOf(row).type == "PopUpMenu";
  const int value = below(isMenu ? 2 : 10);
  const std::string item =
      isMenu ? std::array{"one", "two"}[static_cast<std::size_t>(value)] : std::to_string(value);
  say("chooses " + item);
  const PropertyList before = model_.plugins.shownValue(row);
  if (way_ != Way::Assistive && isMenu && oneIn(2)) {
    person().actOn(treeRow(row));
    ++model_.plugins.holds;
    editsRow_ = true;
    const bool chosen = chooseFromOpenList(value);
    endEditOfRow();
    if (!chosen) return;
  } else {
    person().pickInCell(treeRow(row), item.c_str());
  }
  // A number that is there already is no change, unless it is set.
  if (!isMenu && way_ != Way::Assistive && before == number(value)) return;
  model_.plugins.store(row, number(value));
}

void WholeSession::chooseInPanel(const ModelRow& row) {
  PluginsModel& plugins = model_.plugins;
  const ModelOption& option = plugins.optionOf(row);
  const bool isFolder = option.type == "FolderPicker" || option.type == "FolderArray";
  const std::string path = (isFolder ? "/Users/folder" : "/Users/file") + std::to_string(below(4));
  const bool chooses = !oneIn(5);
  const bool isOpened = answerPanel<QFileDialog>(
      [&] { person().actOn(treeRow(row)); },
      [&](QFileDialog& panel) {
        ++plugins.holds;
        plugins.selected = row;
        if (oneIn(2)) meanwhile();
        say(chooses ? "chooses " + path : "chooses nothing");
        if (chooses) {
          find<QLineEdit>(panel, "fileNameEdit").setText(QString::fromStdString(window_.disk(path)));
          QMetaObject::invokeMethod(&panel, "accept");
        } else {
          panel.reject();
        }
        if (chooses && option.isList()) plugins.addPath(row, path);
        if (chooses && !option.isList()) plugins.choosePath(row, path);
        --plugins.holds;
      });
  ASSERT_TRUE(isOpened) << "no panel opens";
  settle();
  if (plugins.sheets.empty()) return;
  plugins.actEnded();
  compare();
  answer("Ok");
  plugins.answerSheet(true);
}

void WholeSession::testSettings(const ModelRow& row) {
  const bool cancels = oneIn(3);
  const bool isOpened = answerPanel<QDialog>([&] { person().actOn(treeRow(row)); },
                                             [&](QDialog& panel) {
                                               ++model_.plugins.holds;
                                               meanwhile();
                                               say(cancels ? "cancels the test" : "the test answers");
                                               if (cancels) {
                                                 person().cancelPanel(panel);
                                               } else {
                                                 window_.root.answerTest();
                                               }
                                               --model_.plugins.holds;
                                             });
  ASSERT_TRUE(isOpened) << "no panel opens";
  settle();
  model_.plugins.actEnded();
  ASSERT_NE(sheet(), nullptr);
  meanwhile();
  answer("OK");
}

void WholeSession::askForRemoval(const ModelRow& row) {
  clickRow(row, Spot::Trash);
  if (!model_.unlocked()) return;
  model_.plugins.askForRemoval(row);
  settle();
  if (oneIn(2)) meanwhile();
  const bool removes = !oneIn(4);
  say(removes ? "removes" : "keeps");
  answer(removes ? "Remove" : "Cancel");
  model_.plugins.answerSheet(removes);
  while (!model_.plugins.sheets.empty()) {
    settle();
    answer("Ok");
    model_.plugins.answerSheet(true);
  }
}

}  // namespace corvane::test

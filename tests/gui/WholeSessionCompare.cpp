// What a random session compares after every step: every file with the model, by a reader that is not the
// product's, and everything that the window shows.
#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QScreen>
#include <tuple>

#include "WholeSession.h"
#include "values/Conversions.h"
#include "widgets/LockButton.h"
#include "widgets/StatusLabel.h"

namespace corvane::test {
namespace {

QString firstLine(const QModelIndex& index) {
  return index.siblingAtColumn(1).data().toString().section(QLatin1Char('\n'), 0, 0).trimmed();
}

/// Where two pictures of one size differ.
QRect differenceOf(const QImage& one, const QImage& other) {
  if (one.size() != other.size()) return one.rect();
  QRect different;
  for (int y = 0; y < one.height(); ++y) {
    for (int x = 0; x < one.width(); ++x) {
      if (one.pixel(x, y) != other.pixel(x, y)) different |= QRect(x, y, 1, 1);
    }
  }
  return different;
}

bool isTicked(const QModelIndex& index, int column) {
  return index.siblingAtColumn(column).data(Qt::CheckStateRole).toInt() == Qt::Checked;
}

}  // namespace

void WholeSession::compare() {
  compareFiles();
  compareSettings();
  compareVolumes();
  if (sheetIsOpen_) compareSheet();
  comparePlugins();
  const auto& status = widget<qt::StatusLabel>("statusField");
  EXPECT_EQ(status.text().toStdString(), model_.status());
  EXPECT_EQ(status.isVisible(), !model_.status().empty());
  EXPECT_EQ(widget<qt::LockButton>("authView").isOpen(), model_.unlocked());
  comparePicture();
}

/// Nothing that has changed waits to be drawn. Only offscreen nothing else can lie over the window.
void WholeSession::comparePicture() {
  if (QGuiApplication::platformName() != QLatin1String("offscreen")) return;
  if (tab_ == 2 && !model_.rowsAreTold()) return;
  QWidget& window = window_.window();
  const auto picture = [](const QPixmap& pixels) {
    return pixels.toImage().convertToFormat(QImage::Format_RGB32);
  };
  QImage shown;
  QImage drawnNow;
  // A sheet slides, and a menu that has closed gives the keyboard back by and by.
  const bool isSame = eventually([&] {
    shown = picture(window.screen()->grabWindow(window.winId()));
    drawnNow = picture(window.grab());
    return shown == drawnNow;
  });
  if (isSame) return;
  const QRect stale = differenceOf(shown, drawnNow);
  const QWidget* there = window.childAt(stale.center());
  ADD_FAILURE() << "a place of " << stale.width() << " by " << stale.height() << " at " << stale.x() << ", "
                << stale.y() << " shows what was before, in "
                << (there != nullptr ? there->objectName().toStdString() : "the window");
}

void WholeSession::compareFiles() {
  for (const auto& [path, contents] : model_.allFiles()) {
    if (!contents) {
      EXPECT_TRUE(window_.isStillBroken(path)) << path << " was written after" << said_;
      continue;
    }
    const PropertyList stored = window_.stored(path);
    EXPECT_TRUE(stored == contents) << path << " holds " << description(stored) << " instead of "
                                    << description(contents) << " after" << said_;
  }
}

void WholeSession::compareSettings() {
  for (const ModelSetting& setting : WholeModel::settings()) {
    QWidget& control = widget(setting.control);
    EXPECT_EQ(control.isEnabled(), model_.unlocked()) << setting.control;
    const PropertyList value = model_.shownValue(setting);
    if (setting.kind == ModelSetting::Kind::Switch) {
      EXPECT_EQ(static_cast<QAbstractButton&>(control).isChecked(), boolValue(value)) << setting.control;
      EXPECT_EQ(accessible(control).state().checked, boolValue(value)) << setting.control;
      continue;
    }
    const bool isTyped = typedSetting_ == &setting && model_.unlocked();
    const std::string expected = isTyped ? typed_ : description(value);
    EXPECT_EQ(static_cast<QLineEdit&>(control).text().toStdString(), expected) << setting.control;
    EXPECT_EQ(accessible(control).text(QAccessible::Value).toStdString(), expected) << setting.control;
  }
}

void WholeSession::compareVolumes() {
  const auto& table = widget<QAbstractItemView>("volumesTable");
  ASSERT_EQ(table.model()->rowCount(), static_cast<int>(model_.volumes.size()));
  for (std::size_t row = 0; row < model_.volumes.size(); ++row) {
    EXPECT_EQ(table.model()->index(static_cast<int>(row), 0).data().toString().toStdString(),
              model_.label(model_.volumes[row]));
  }
  const QModelIndexList rows = table.selectionModel()->selectedRows();
  EXPECT_EQ(rows.isEmpty() ? -1 : rows.first().row(), model_.selected);
  const Dictionary entry = model_.selectedVolume();
  if (!entry) return;
  EXPECT_EQ(widget("purgeButton").isEnabled(), model_.unlocked() && model_.isMissing(entry));
  for (const char* name : {"monitorPresenceCheckbox", "monitorUsageCheckbox",
                           "monitorPresenceThresholdTextField", "monitorUsageThresholdTextField"}) {
    EXPECT_EQ(widget(name).isEnabled(), model_.unlocked() && !model_.isDuplicate(entry)) << name;
  }
  for (const auto& [name, key] : {std::pair{"monitorPresenceCheckbox", "MonitorPresence"},
                                  std::pair{"monitorUsageCheckbox", "MonitorUsage"}}) {
    EXPECT_EQ(widget<QAbstractButton>(name).isChecked(), boolValue(entry.value(key))) << name;
  }
  for (const auto& [name, key, formatter] :
       {std::tuple{"monitorPresenceThresholdTextField", "PresenceThreshold", kPresenceFormatter},
        std::tuple{"monitorUsageThresholdTextField", "UsageThreshold", kUsageFormatter}}) {
    EXPECT_EQ(widget<QLineEdit>(name).text().toStdString(),
              description(model_.shownNumber(formatter, entry.value(key))))
        << name;
  }
}

void WholeSession::compareSheet() {
  const ModelSheet& shown = model_.sheet;
  EXPECT_EQ(widget<QLineEdit>("manuallyTriggerTextField").text().toInt(), shown.days);
  EXPECT_EQ(widget<QLineEdit>("timeOfDayTextField").text().toInt(), shown.hour);
  EXPECT_EQ(widget<QComboBox>("amPmButton").currentIndex(), shown.isAfternoon ? 1 : 0);
  EXPECT_EQ(widget<QAbstractButton>("timeMachineRemovalWarning").isChecked(), shown.onRemoval);
}

void WholeSession::comparePlugins() {
  const PluginsModel& plugins = model_.plugins;
  const QAbstractItemModel& rows = *tree().model();
  ASSERT_EQ(rows.rowCount(), static_cast<int>(plugins.shown.size()));
  for (const std::string& plugin : plugins.shown) {
    const QModelIndex top = indexOf({plugin});
    EXPECT_EQ(firstLine(top).toStdString(), plugin);
    EXPECT_EQ(isTicked(top, 0), !plugins.isDisabled(plugin)) << plugin;
    const auto& options = plugins.optionsOf(plugin);
    ASSERT_EQ(rows.rowCount(top), static_cast<int>(options.size())) << plugin;
    for (int i = 0; i < static_cast<int>(options.size()); ++i) {
      const ModelRow row{plugin, i};
      const QModelIndex index = indexOf(row);
      EXPECT_EQ(firstLine(index).toStdString(), options[static_cast<std::size_t>(i)].key) << plugin;
      if (options[static_cast<std::size_t>(i)].type == "Checkbox") {
        EXPECT_EQ(isTicked(index, 1), boolValue(plugins.shownValue(row))) << plugin << " " << i;
      }
      const auto values = plugins.valueRows(plugin, i);
      ASSERT_EQ(rows.rowCount(index), static_cast<int>(values.size())) << plugin << " " << i;
      for (const std::string& value : values) compareValueRow({plugin, i, value});
    }
  }
}

void WholeSession::compareValueRow(const ModelRow& row) {
  const ModelOption& option = model_.plugins.optionOf(row);
  const PropertyList value = model_.plugins.shownValue(row);
  const QModelIndex index = indexOf(row);
  SCOPED_TRACE(row.plugin + ", " + option.key + ", " + *row.value);
  std::string expected = value ? description(value) : std::string();
  if (option.type == "Checkboxes") {
    EXPECT_EQ(isTicked(index, 1), boolValue(value));
    expected = *row.value;
  } else if (option.isList()) {
    expected = *row.value;
  } else if (option.type == "PluginValidation") {
    expected = "Test Settings";
  } else if (option.type == "PopUpMenu") {
    expected = std::array{"one", "two"}[static_cast<std::size_t>(intValue(value))];
  } else if (option.type == "PasswordField") {
    expected = QString(QString::fromStdString(expected).size(), QChar(0x2022)).toStdString();
    if (expected.empty()) expected = "Click to enter password";
  } else if (expected.empty() && option.type == "TextField") {
    expected = "Click to enter text";
  } else if (expected.empty() && option.type == "UsernameField") {
    expected = "Click to enter username";
  } else if (expected.empty() && option.type == "FilePicker") {
    expected = "Choose a file…";
  } else if (expected.empty() && option.type == "FolderPicker") {
    expected = "Choose a folder…";
  }
  EXPECT_EQ(firstLine(index).toStdString(), expected);
}

}  // namespace corvane::test

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QToolTip>

#include "Assistive.h"
#include "InputMethod.h"
#include "OptionsTabFixture.h"
#include "PaintedPlaces.h"
#include "TextLine.h"
#include "widgets/LabelButton.h"
#include "widgets/TabPane.h"

namespace corvane::test {
namespace {

using OptionsPage = OptionsPageTest;
using qt::LabelButton;

TEST_F(OptionsPage, ShowsTheVolumesAndSelectsTheFirst) {
  open();
  EXPECT_EQ(rowTexts(), (QStringList{QStringLiteral("Archive (Missing)"), QStringLiteral("Backup"),
                                     QStringLiteral("Data")}));
  EXPECT_EQ(selectedRow(), 0);
  EXPECT_EQ(table().model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Volume"));
  EXPECT_EQ(find<LabelButton>(window, "volumeOptionPathButton").text(), QStringLiteral("/Volumes/Archive"));
}

TEST_F(OptionsPage, AClickOnARowShowsTheSettingsOfItsVolume) {
  open();
  clickRow(2);
  EXPECT_EQ(controls.volumesTable.selectedRow(), 2);
  EXPECT_EQ(find<LabelButton>(window, "volumeOptionPathButton").text(), QStringLiteral("/Volumes/Data"));
  EXPECT_EQ(find<QLineEdit>(window, "monitorUsageThresholdTextField").text(), QStringLiteral("90"));
  EXPECT_FALSE(find<QPushButton>(window, "purgeButton").isEnabled());
}

TEST_F(OptionsPage, TheArrowKeysWalkThroughTheVolumes) {
  open();
  table().setFocus();
  press(window, Qt::Key_Down);
  EXPECT_EQ(controls.volumesTable.selectedRow(), 1);
  press(window, Qt::Key_Down);
  press(window, Qt::Key_Down);
  EXPECT_EQ(controls.volumesTable.selectedRow(), 2);
  press(window, Qt::Key_Up);
  EXPECT_EQ(controls.volumesTable.selectedRow(), 1);
}

TEST_F(OptionsPage, TheTooltipOfARowIsThePathOfItsVolume) {
  open();
  EXPECT_EQ(table().model()->index(1, 0).data(Qt::ToolTipRole).toString(), QStringLiteral("/Volumes/Backup"));
}

TEST_F(OptionsPage, ALongPathIsShortenedInItsMiddleAndSaidAndCopiedWhole) {
  const QString path =
      QStringLiteral("/Volumes/") + QString(40, QLatin1Char('m')) + QStringLiteral("/the end");
  platform.writePlist(platform.paths.volumesSettings,
                      Array::make({Dictionary::make(
                          {{"VolumeName", text("Archive")}, {"VolumePath", text(path.toStdString())}})}));
  open();
  auto& pathShown = find<LabelButton>(window, "volumeOptionPathButton");
  EXPECT_EQ(pathShown.text(), path);
  EXPECT_EQ(pathShown.toolTip(), path);
  const QString shortened = qt::shortenedPath(path, pathShown.font(), pathShown.width() - 4);
  EXPECT_TRUE(shortened.startsWith(QStringLiteral("/Volumes/mm"))) << shortened.toStdString();
  EXPECT_TRUE(shortened.contains(QChar(0x2026))) << shortened.toStdString();
  EXPECT_TRUE(shortened.endsWith(QStringLiteral("mm/the end"))) << shortened.toStdString();
  const QImage whole = pathShown.grab().toImage();
  pathShown.setAttributedText(AttributedText(shortened.toStdString()));
  EXPECT_EQ(pathShown.grab().toImage(), whole);
  pathShown.setAttributedText(AttributedText(path.toStdString()));
  ASSERT_EQ(pathShown.actions().size(), 1);
  EXPECT_EQ(pathShown.actions().first()->text(), QStringLiteral("Copy"));
  pathShown.actions().first()->trigger();
  EXPECT_EQ(QApplication::clipboard()->text(), path);
}

TEST_F(OptionsPage, ACheckBoxIsSwitchedByTheMouseAndByTheSpaceKey) {
  open();
  clickRow(2);
  auto& presence = find<QCheckBox>(window, "monitorPresenceCheckbox");
  click(presence);
  EXPECT_TRUE(presence.isChecked());
  ASSERT_EQ(pane.writes.size(), 1U);
  EXPECT_EQ(savedEntry(2).value("MonitorPresence"), flag(true));
  presence.setFocus();
  press(window, Qt::Key_Space);
  EXPECT_FALSE(presence.isChecked());
  EXPECT_EQ(savedEntry(2).value("MonitorPresence"), flag(false));
}

TEST_F(OptionsPage, EveryKeyTypedIntoAThresholdIsWritten) {
  open();
  clickRow(2);
  auto& minutes = find<QLineEdit>(window, "monitorPresenceThresholdTextField");
  minutes.setFocus();
  minutes.selectAll();
  type(minutes, "45x");  // the letter is refused
  EXPECT_EQ(minutes.text(), QStringLiteral("45"));
  EXPECT_EQ(pane.writes.size(), 2U);
  EXPECT_EQ(savedEntry(2).value("PresenceThreshold"), number(45));
  type(minutes, "6");  // 456 is out of range
  EXPECT_EQ(minutes.text(), QStringLiteral("45"));
  EXPECT_EQ(pane.writes.size(), 2U);
}

TEST_F(OptionsPage, EscapeInAThresholdShowsWhatTheFileHas) {
  open();
  clickRow(2);
  auto& minutes = find<QLineEdit>(window, "monitorPresenceThresholdTextField");
  minutes.setFocus();
  minutes.selectAll();
  type(minutes, "45");
  press(window, Qt::Key_Escape);
  EXPECT_EQ(minutes.text(), QStringLiteral("45"));
  EXPECT_EQ(savedEntry(2).value("PresenceThreshold"), number(45));
}

// The write of a keystroke comes back as a change of the file, and the list is rebuilt.
TEST_F(OptionsPage, ARebuildOfTheListLeavesTheKeyboardInTheFieldThatIsBeingTypedIn) {
  open();
  clickRow(2);
  auto& percent = find<QLineEdit>(window, "monitorUsageThresholdTextField");
  percent.setFocus();
  percent.selectAll();
  type(percent, "7");
  tab->refreshVolumes();
  QCoreApplication::processEvents();
  EXPECT_TRUE(percent.hasFocus());
  type(percent, "5");
  EXPECT_EQ(percent.text(), QStringLiteral("75"));
  EXPECT_EQ(savedEntry(2).value("UsageThreshold"), number(75));
}

TEST_F(OptionsPage, WhatWasTypedForAVolumeThatHasGoneDoesNotStandThereForAnotherOne) {
  open();
  clickRow(2);
  auto& percent = find<QLineEdit>(window, "monitorUsageThresholdTextField");
  percent.setFocus();
  percent.selectAll();
  type(percent, "7");
  platform.writePlist(platform.paths.diskJournal,
                      Dictionary::make({{"Devices", Dictionary::make()},
                                        {"CurrentlyMountedVolumeDevices", Array::make({})}}));
  platform.writePlist(platform.paths.volumesSettings,
                      Array::make({Dictionary::make({{"VolumeName", text("Archive")},
                                                     {"VolumePath", text("/Volumes/Archive")},
                                                     {"UsageThreshold", number(80)}})}));
  tab->refreshVolumes();
  ASSERT_EQ(rowTexts().size(), 1);
  EXPECT_EQ(percent.text(), QStringLiteral("80"));
  percent.clearFocus();
  EXPECT_EQ(percent.text(), QStringLiteral("80"));
  EXPECT_EQ(savedEntry(0).value("UsageThreshold"), number(80));
}

TEST_F(OptionsPage, AFieldThatIsTypedInDisappearsWhenNothingIsSelectedAnyMore) {
  open();
  auto& percent = find<QLineEdit>(window, "monitorUsageThresholdTextField");
  percent.setFocus();
  controls.volumesTable.deselectAll();
  EXPECT_TRUE(eventually([&] { return !percent.isVisible(); }));
  EXPECT_EQ(selectedRow(), -1);
  EXPECT_EQ(find<QLabel>(window, "defaultTextField").text(),
            QStringLiteral("Select a volume to configure alerts based on presence and/or free space."));
}

TEST_F(OptionsPage, AMissingVolumeIsRemovedFromTheList) {
  open();
  auto& purge = find<QPushButton>(window, "purgeButton");
  EXPECT_TRUE(purge.isEnabled());
  click(purge);
  EXPECT_EQ(rowTexts(), (QStringList{QStringLiteral("Backup"), QStringLiteral("Data")}));
  EXPECT_EQ(selectedRow(), 0);
}

TEST_F(OptionsPage, SystemVolumesAreShownAndHidden) {
  open();
  auto& button = find<QPushButton>(window, "showAllVolumeTypesButton");
  EXPECT_EQ(button.text(), QStringLiteral("Show System Volumes"));
  click(button);
  EXPECT_EQ(button.text(), QStringLiteral("Hide System Volumes"));
  EXPECT_EQ(rowTexts(),
            (QStringList{QStringLiteral("Archive (Missing)"), QStringLiteral("Backup"),
                         QStringLiteral("Data"), QStringLiteral("Preboot"), QStringLiteral("VM")}));
}

TEST_F(OptionsPage, WithoutTheDaemonTheTableIsDisabledAndTheErrorIsShown) {
  open();
  platform.processes.text = "";
  tab->refreshVolumes();
  clickRow(1);
  EXPECT_EQ(selectedRow(), -1);
  EXPECT_TRUE(find<QLabel>(window, "defaultTextField").isVisible());
  EXPECT_EQ(
      find<QLabel>(window, "defaultTextField").text(),
      QStringLiteral("An error has been detected. Please contact support, mentioning \"ReasonCode 412\""));
}

TEST_F(OptionsPage, WithTheLockClosedEverythingIsVisibleAndNothingTakesEdits) {
  open(false);
  for (const char* name :
       {"showAllVolumeTypesButton", "purgeButton", "monitorPresenceCheckbox",
        "monitorPresenceThresholdTextField", "monitorUsageCheckbox", "monitorUsageThresholdTextField",
        "bootVolumeWarningCheckbox", "bootVolumeFullTextField", "bootVolumeWarningTrailingButton",
        "timeMachineWarningCheckbox", "timeMachineInactiveTextField", "timeMachineWarningTrailingButton",
        "advancedButton", "automountCheckbox"}) {
    SCOPED_TRACE(name);
    auto& widget = find<QWidget>(window, name);
    EXPECT_TRUE(widget.isVisible());
    EXPECT_FALSE(widget.isEnabled());
    click(widget);
  }
  clickRow(2);
  EXPECT_EQ(selectedRow(), 0);
  EXPECT_TRUE(pane.writes.empty());
  EXPECT_EQ(sheet(), nullptr);
}

TEST_F(OptionsPage, TheNamesOfTheVolumesAreDrawnAnewWhenTheLockChanges) {
  open();
  QApplication::processEvents();
  for (const bool isOpen : {false, true}) {
    PaintedPlaces painted(*table().viewport());
    pane.setUnlocked(isOpen);
    QApplication::processEvents();
    for (int row = 0; row < table().model()->rowCount(); ++row) {
      const QRect place = table().visualRect(table().model()->index(row, 0));
      EXPECT_TRUE(painted.hold(place)) << row;
    }
  }
}

TEST_F(OptionsPage, TheRowsShowAndWriteTheirFiles) {
  open();
  EXPECT_TRUE(find<QCheckBox>(window, "timeMachineWarningCheckbox").isChecked());
  EXPECT_EQ(find<QLineEdit>(window, "timeMachineInactiveTextField").text(), QStringLiteral("30"));
  auto& days = find<QLineEdit>(window, "timeMachineInactiveTextField");
  days.setFocus();
  days.selectAll();
  type(days, "14");
  EXPECT_TRUE(pane.writes.empty());  // a bound field writes when it is left
  press(window, Qt::Key_Return);
  ASSERT_EQ(pane.writes.size(), 1U);
  EXPECT_EQ(platform.readPlist(platform.paths.timeMachineSettings).asDictionary().value("Days_Until_Warning"),
            number(14));
  click(find<QCheckBox>(window, "automountCheckbox"));
  EXPECT_EQ(pane.writes.back().path, platform.paths.autoDiskMount);
}

TEST_F(OptionsPage, AClickOnATextBesideACheckBoxSwitchesItAndTheTabKeyLeavesTheTextOut) {
  open();
  clickRow(2);
  for (const auto& [text, box] :
       {std::pair("volumeOptionWarnAfterButton", "monitorPresenceCheckbox"),
        std::pair("volumeOptionMinutesButton", "monitorPresenceCheckbox"),
        std::pair("volumeOptionWarnAtButton", "monitorUsageCheckbox"),
        std::pair("volumeOptionPercentageButton", "monitorUsageCheckbox"),
        std::pair("bootVolumeWarningTrailingButton", "bootVolumeWarningCheckbox"),
        std::pair("timeMachineWarningTrailingButton", "timeMachineWarningCheckbox")}) {
    SCOPED_TRACE(text);
    auto& checkBox = find<QCheckBox>(window, box);
    const bool before = checkBox.isChecked();
    const std::size_t writes = pane.writes.size();
    click(find<LabelButton>(window, text));
    EXPECT_NE(checkBox.isChecked(), before);
    EXPECT_EQ(pane.writes.size(), writes + 1);
    EXPECT_EQ(find<LabelButton>(window, text).focusPolicy(), Qt::NoFocus);
  }
}

TEST_F(OptionsPage, AKeyThatANumberFieldRefusesSaysWhatItTakes) {
  open();
  const auto saysAfterALetter = [this](const char* name) {
    auto& field = find<QLineEdit>(window, name);
    field.setFocus();
    QTest::keyClicks(&field, QStringLiteral("x"));
    const QString said = QToolTip::text();
    QToolTip::hideText();
    return said;
  };
  EXPECT_EQ(saysAfterALetter("bootVolumeFullTextField"), QStringLiteral("1 to 99 percent"));
  // The tool tip of its row is about something else.
  EXPECT_EQ(saysAfterALetter("timeMachineInactiveTextField"), QStringLiteral("1 to 99 days"));
  EXPECT_EQ(
      accessible(find<QLineEdit>(window, "timeMachineInactiveTextField")).text(QAccessible::Description),
      QStringLiteral("1 to 99 days"));
}

TEST_F(OptionsPage, TheSheetOpensWithTheFileAndAcceptsByReturn) {
  open();
  click(find<QPushButton>(window, "advancedButton"));
  ASSERT_NE(sheet(), nullptr);
  auto& days = find<QLineEdit>(*sheet(), "manuallyTriggerTextField");
  auto& hour = find<QLineEdit>(*sheet(), "timeOfDayTextField");
  auto& half = find<QComboBox>(*sheet(), "amPmButton");
  EXPECT_EQ(days.text(), QStringLiteral("3"));
  EXPECT_EQ(hour.text(), QStringLiteral("1"));
  EXPECT_EQ(half.currentText(), QStringLiteral("PM"));
  EXPECT_TRUE(eventually([&] { return days.hasFocus(); }));
  hour.setFocus();
  hour.selectAll();
  type(hour, "7");
  half.setFocus();
  press(window, Qt::Key_Up);
  EXPECT_EQ(half.currentText(), QStringLiteral("AM"));
  click(find<QCheckBox>(*sheet(), "timeMachineRemovalWarning"));
  hour.setFocus();
  press(window, Qt::Key_Return);
  EXPECT_EQ(sheet(), nullptr);
  const Dictionary written = platform.readPlist(platform.paths.timeMachineSettings).asDictionary();
  EXPECT_EQ(written.value("Manual_Run_Hour"), text("7"));
  EXPECT_EQ(written.value("Days_Until_Manual_Run"), number(3));
  EXPECT_EQ(written.value("Enable_On_Removal"), flag(true));
}

/// By the mouse, which takes the keyboard to the button, and by assistive technology, which does not.
TEST_F(OptionsPage, ClearedFieldsOfTheSheetAreStoredAsTheirDefaultsHoweverItIsAccepted) {
  open();
  const Listener listener;
  for (const bool byMouse : {true, false}) {
    SCOPED_TRACE(byMouse);
    click(find<QPushButton>(window, "advancedButton"));
    for (const char* name : {"manuallyTriggerTextField", "timeOfDayTextField"}) {
      auto& field = find<QLineEdit>(*sheet(), name);
      field.setFocus();
      field.selectAll();
      press(window, Qt::Key_Backspace);
      EXPECT_EQ(field.text(), QString());
    }
    auto& ok = find<QPushButton>(*sheet(), "sheetOkButton");
    if (byMouse) {
      click(ok);
    } else {
      pressThing(accessible(ok));
    }
    ASSERT_TRUE(eventually([this] { return sheet() == nullptr; }));
    const Dictionary written = platform.readPlist(platform.paths.timeMachineSettings).asDictionary();
    EXPECT_EQ(written.value("Manual_Run_Hour"), text("13"));  // one in the afternoon
    EXPECT_EQ(written.value("Days_Until_Manual_Run"), number(0));
  }
}

TEST_F(OptionsPage, AFileThatChangesUnderTheSheetIsShownWhole) {
  open();
  click(find<QPushButton>(window, "advancedButton"));
  auto& hour = find<QLineEdit>(*sheet(), "timeOfDayTextField");
  hour.setFocus();
  hour.selectAll();
  compose(hour, "´");
  commit(hour, "7");
  Dictionary file = platform.readPlist(platform.paths.timeMachineSettings).asDictionary();
  file.set("Manual_Run_Hour", text("9"));
  platform.writePlist(platform.paths.timeMachineSettings, file);
  tab->refreshTimeMachine();
  EXPECT_EQ(hour.text(), QStringLiteral("9"));
  EXPECT_EQ(find<QComboBox>(*sheet(), "amPmButton").currentText(), QStringLiteral("AM"));
  press(window, Qt::Key_Return);
  EXPECT_EQ(platform.readPlist(platform.paths.timeMachineSettings).asDictionary().value("Manual_Run_Hour"),
            text("9"));
}

TEST_F(OptionsPage, TheSheetIsCancelledByEscapeAndForgetsWhatWasTyped) {
  open();
  auto& advanced = find<QPushButton>(window, "advancedButton");
  click(advanced);
  auto& days = find<QLineEdit>(*sheet(), "manuallyTriggerTextField");
  days.setFocus();
  days.selectAll();
  type(days, "77");
  find<QComboBox>(*sheet(), "amPmButton").setFocus();
  press(window, Qt::Key_Escape);
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_TRUE(pane.writes.empty());
  click(advanced);
  EXPECT_EQ(days.text(), QStringLiteral("3"));
  click(find<QPushButton>(*sheet(), "sheetCancelButton"));
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_TRUE(pane.writes.empty());
}

TEST_F(OptionsPage, TheBoxLiesBesideTheNamesAndBelowTheHeaderAtEverySizeOfTheWindow) {
  open();
  for (const int height : {518, 700}) {
    window.resize(668, height);
    QCoreApplication::processEvents();
    const QRect around = table().geometry();
    const QRect box = find(window, "volumeOptionsBox").geometry();
    EXPECT_EQ(box.left(), around.left() + 230 + 1 + 3);
    EXPECT_EQ(box.right(), around.right() - 1);
    EXPECT_EQ(box.top(), around.top() + 1 + 17) << "the table's frame, then its header";
    EXPECT_EQ(box.bottom(), around.bottom() - 1);
  }
}

TEST_F(OptionsPage, TheSelectedRowShowsThatTheKeyboardIsInTheTable) {
  open();
  const auto row = [this] {
    return table().viewport()->grab(table().visualRect(table().model()->index(selectedRow(), 0))).toImage();
  };
  for (const bool unlocked : {true, false}) {
    pane.setUnlocked(unlocked);
    tab->refreshVolumes();
    window.setFocus();
    const QImage elsewhere = row();
    while (!table().hasFocus()) press(window, Qt::Key_Tab);
    EXPECT_NE(row(), elsewhere) << unlocked;
    press(window, Qt::Key_Tab);
    EXPECT_EQ(row(), elsewhere) << unlocked;
  }
}

TEST_F(OptionsPage, TheScrollBarOfALongListStaysBesideTheBox) {
  open();
  Array saved = Array::make();
  for (int i = 0; i < 60; ++i) {
    const std::string name = "Volume " + std::to_string(100 + i);
    saved.append(Dictionary::make({{"VolumeName", text(name)}, {"VolumePath", text("/Volumes/" + name)}}));
  }
  platform.writePlist(platform.paths.volumesSettings, saved);
  tab->refreshVolumes();
  QScrollBar& bar = *table().verticalScrollBar();
  ASSERT_TRUE(eventually([&] { return bar.isVisible(); }));
  const QWidget& box = find(window, "volumeOptionsBox");
  const auto placeIn = [&](const QWidget& widget) {
    return QRect(widget.mapTo(&window, QPoint()), widget.size());
  };
  EXPECT_TRUE(eventually([&] { return !placeIn(bar).intersects(placeIn(box)); }));
  click(bar);  // pages on
  EXPECT_GT(bar.value(), 0);
}

TEST_F(OptionsPage, NothingOverlapsAndNothingIsCutOff) {
  open();
  window.resize(window.minimumSize());
  QCoreApplication::processEvents();
  expectTidy(*page);
  click(find<QPushButton>(window, "advancedButton"));
  expectTidy(*sheet());
}

TEST_F(OptionsPage, EveryControlIsReachedWithTheTabKey) {
  open();
  table().setFocus();
  QStringList reached;
  do {
    reached << window.focusWidget()->objectName();
    press(window, Qt::Key_Tab);
  } while (window.focusWidget() != &table() && reached.size() < 40);
  for (const char* name :
       {"volumesTable", "monitorPresenceCheckbox", "monitorPresenceThresholdTextField",
        "monitorUsageCheckbox", "monitorUsageThresholdTextField", "showAllVolumeTypesButton", "purgeButton",
        "bootVolumeWarningCheckbox", "bootVolumeFullTextField", "timeMachineWarningCheckbox",
        "timeMachineInactiveTextField", "advancedButton", "automountCheckbox"}) {
    EXPECT_TRUE(reached.contains(QString::fromLatin1(name))) << name;
  }
}

}  // namespace
}  // namespace corvane::test

// What stands in one row of the window stands on one line: the feet of its letters are at the same height,
// whatever kinds of widgets show them.
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyleOption>
#include <QTableView>
#include <QTreeView>
#include <optional>
#include <ostream>

#include "GuiFixture.h"
#include "support/DemoClient.h"
#include "support/NamedControls.h"

namespace corvane::test {
namespace {

using Row = std::vector<const char*>;
struct Page {
  const char* name;
  int tab;
  bool sheet;
  std::vector<Row> rows;
};
void PrintTo(const Page& page, std::ostream* stream) { *stream << page.name; }

class Baselines : public GuiTest, public ::testing::WithParamInterface<Page> {
 protected:
  void SetUp() override {
    open(demo.root);
    openLock();
    pane->assembly().view().tabView.selectTabViewItemAtIndex(GetParam().tab);
    if (GetParam().sheet) pane->assembly().options().advancedButtonAction();
    QApplication::processEvents();
  }

  /// The part of the widget that holds nothing but its text.
  [[nodiscard]] static QRect textArea(QWidget& shown) {
    if (const auto* box = qobject_cast<QCheckBox*>(&shown)) {
      QStyleOptionButton option;
      option.initFrom(box);
      return box->style()->subElementRect(QStyle::SE_CheckBoxContents, &option, box);
    }
    if (qobject_cast<QComboBox*>(&shown) != nullptr) return shown.rect().adjusted(9, 5, -26, -5);
    if (qobject_cast<QLineEdit*>(&shown) != nullptr || qobject_cast<QPushButton*>(&shown) != nullptr)
      return shown.rect().adjusted(6, 5, -6, -5);
    return shown.rect();
  }
  /// Puts letters without tails in the place of the text.
  void showCapitals(const char* name) {
    if (auto* field = qobject_cast<QLineEdit*>(&widget(name))) {
      field->setText(QStringLiteral("H"));
      field->setReadOnly(true);  // hides the caret
    } else if (auto* label = qobject_cast<QLabel*>(&widget(name))) {
      label->setText(QStringLiteral("H"));
    } else if (auto* menu = qobject_cast<QComboBox*>(&widget(name))) {
      menu->setItemText(menu->currentIndex(), QStringLiteral("H"));
    } else {
      for (const auto& [controlName, control] : namedControls(pane->assembly())) {
        if (controlName == name) dynamic_cast<Button&>(*control).setTitle("H");
      }
    }
  }
  /// The lowest line of the letters, in the window; nothing where there are none.
  [[nodiscard]] std::optional<int> feetOf(const char* name) {
    QWidget& shown = widget(name);
    const QRect area = textArea(shown);
    const QImage image = window().grab(QRect(shown.mapTo(&window(), area.topLeft()), area.size())).toImage();
    const int paper = qGray(image.pixel(0, 0));
    for (int y = image.height() - 1; y >= 0; --y) {
      for (int x = 0; x < image.width(); ++x) {
        if (qAbs(qGray(image.pixel(x, y)) - paper) > 60)
          return shown.mapTo(&window(), QPoint(0, area.top() + y)).y();
      }
    }
    return std::nullopt;
  }

  DemoClient demo{"0"};
};

TEST_P(Baselines, TheTextsOfARowStandOnOneLine) {
  for (const Row& row : GetParam().rows) {
    for (const char* name : row) showCapitals(name);
  }
  while (window().sheets().isSliding()) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  QApplication::processEvents();
  for (const Row& row : GetParam().rows) {
    const std::optional<int> first = feetOf(row.front());
    ASSERT_TRUE(first) << "no letters: " << row.front();
    for (const char* name : row) EXPECT_EQ(feetOf(name), first) << name << " beside " << row.front();
  }
}

/// What the letters of an image cover.
QRect inkOf(const QImage& image) {
  QRect ink;
  const int paper = qGray(image.pixel(0, 0));
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (qAbs(qGray(image.pixel(x, y)) - paper) > 60) ink |= QRect(x, y, 1, 1);
    }
  }
  return ink;
}

class ColumnTitles : public GuiTest {
 protected:
  void SetUp() override { open(demo.root); }
  void expectWhole(const QHeaderView& header, int column) {
    const QString title = header.model()->headerData(column, Qt::Horizontal).toString();
    SCOPED_TRACE(title.toStdString());
    // Without the lines below and beside.
    const QRect section(header.sectionViewportPosition(column), 0, header.sectionSize(column) - 1,
                        header.height() - 1);
    const QRect ink = inkOf(header.viewport()->grab(section).toImage());
    const QRect letters = QFontMetrics(header.font()).tightBoundingRect(title);
    EXPECT_GE(ink.width(), letters.width() - 2);
    EXPECT_GE(ink.height(), letters.height() - 1);
    EXPECT_GE(ink.left(), 6) << "it stands left of the texts of the rows";
  }

  DemoClient demo{"0"};
};

TEST_F(ColumnTitles, AreWholeAndStandAboveTheTextsOfTheRows) {
  clickTab(1);
  expectWhole(*widget<QTableView>("volumesTable").horizontalHeader(), 0);
  clickTab(2);
  answerSheet("Continue");
  const QHeaderView& header = *widget<QTreeView>("pluginsTable").header();
  expectWhole(header, 0);
  expectWhole(header, 1);
}

INSTANTIATE_TEST_SUITE_P(
    Of, Baselines,
    ::testing::Values(Page{"ConfigurationTab",
                           0,
                           false,
                           {{"lastRunClientLabel", "lastRunClientField"},
                            {"lastRunUpdaterLabel", "lastRunUpdaterField"},
                            {"runIntervalLabel", "runIntervalTextField", "runIntervalUnit"},
                            {"clientGroupLabel", "clientGroupTextField"},
                            {"authLabel", "clientVersionButton"}}},
                      Page{"OptionsTab",
                           1,
                           false,
                           {{"volumeOptionMountPathButton", "volumeOptionPathButton"},
                            {"warnAfterTextField", "volumeOptionWarnAfterButton",
                             "monitorPresenceThresholdTextField", "volumeOptionMinutesButton"},
                            {"warnAtTextField", "volumeOptionWarnAtButton", "monitorUsageThresholdTextField",
                             "volumeOptionPercentageButton"},
                            {"bootVolumeLabel", "bootVolumeWarningCheckbox", "bootVolumeFullTextField",
                             "bootVolumeWarningTrailingButton"},
                            {"timeMachineLabel", "timeMachineWarningCheckbox", "timeMachineInactiveTextField",
                             "timeMachineWarningTrailingButton", "advancedButton"},
                            {"automountLabel", "automountCheckbox"}}},
                      Page{"TimeMachineSheet",
                           1,
                           true,
                           {{"manualRunLabel", "manuallyTriggerTextField", "manualRunDaysLabel"},
                            {"timeOfDayLabel", "timeOfDayTextField", "amPmButton"},
                            {"sheetCancelButton", "sheetOkButton"}}}),
    [](const auto& page) { return page.param.name; });

}  // namespace
}  // namespace corvane::test

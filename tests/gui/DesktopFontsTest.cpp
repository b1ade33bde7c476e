// The window in the fonts that desktops have, at all their sizes, and at the scale of the run: what stands in
// one row of the window stands on one line, whatever kinds of widgets show it; nothing is cut off, nothing
// lies on something else.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QStyleOption>
#include <QTableView>
#include <QTreeView>
#include <array>
#include <functional>
#include <optional>
#include <ostream>
#include <set>
#include <tuple>
#include <utility>

#include "AttributedTextLayout.h"
#include "Fonts.h"
#include "GuiFixture.h"
#include "TextLine.h"
#include "appearance/Appearance.h"
#include "plugins/PluginRowHeights.h"
#include "support/DemoClient.h"
#include "support/NamedControls.h"
#include "trees/StartPage.h"
#include "trees/TreeButton.h"
#include "widgets/FittedLabel.h"
#include "widgets/LabelButton.h"

namespace corvane::test {
namespace {

struct DesktopFont {
  const char* family;
  int points;
};

using Row = std::vector<const char*>;
struct Page {
  const char* name;
  int tab;
  bool sheet;
  std::vector<Row> rows;
};
void PrintTo(const Page& page, std::ostream* stream) { *stream << page.name; }
void PrintTo(const DesktopFont& font, std::ostream* stream) { *stream << font.family << " " << font.points; }

class DesktopFonts : public GuiTest, public ::testing::WithParamInterface<std::tuple<Page, DesktopFont>> {
 protected:
  void SetUp() override {
    const auto& [page, font] = GetParam();
    if (!QFontDatabase::families().contains(QString::fromLatin1(font.family)))
      GTEST_SKIP() << "NOT TESTED: " << font.family << " is not installed";
    QApplication::setFont(QFont(QString::fromLatin1(font.family), font.points));
    qt::dressApplication(*qApp);
    open(demo.root);
    openLock();
    clickTab(page.tab);
    settle();
  }
  void TearDown() override {
    GuiTest::TearDown();
    QApplication::setFont(before_);
    qt::dressApplication(*qApp);
  }
  void settle() {
    while (window().sheets().isSliding()) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QApplication::processEvents();
  }

  // What is whole.

  /// How much room the text of the widget has, and how much it needs; nothing where it may be shortened.
  [[nodiscard]] static std::optional<std::pair<QSize, QSize>> roomFor(QWidget& shown) {
    if (qobject_cast<qt::FittedLabel*>(&shown) != nullptr) return std::nullopt;
    const QFontMetrics metrics(shown.font());
    if (auto* label = qobject_cast<QLabel*>(&shown)) {
      if (label->text().isEmpty()) return std::nullopt;
      const int width = label->wordWrap() ? 0 : metrics.horizontalAdvance(label->text());
      const int height = label->wordWrap() ? label->heightForWidth(label->width()) : metrics.height();
      return std::pair(label->contentsRect().size(), QSize(width, height));
    }
    if (auto* field = qobject_cast<QLineEdit*>(&shown)) {
      QStyleOptionFrame option;
      option.initFrom(field);
      const QRect room = field->style()->subElementRect(QStyle::SE_LineEditContents, &option, field);
      return std::pair(room.size(), QSize(metrics.horizontalAdvance(field->text()), metrics.height()));
    }
    if (qobject_cast<QAbstractButton*>(&shown) != nullptr || qobject_cast<QComboBox*>(&shown) != nullptr ||
        qobject_cast<QTabBar*>(&shown) != nullptr) {
      QSize needed = shown.sizeHint();
      if (qobject_cast<qt::LabelButton*>(&shown) != nullptr &&
          shown.objectName().contains(QLatin1String("Path")))
        needed.setWidth(0);  // a path may be shortened
      if (qobject_cast<qt::TreeButton*>(&shown) != nullptr) needed.setWidth(0);
      return std::pair(shown.size(), needed);
    }
    return std::nullopt;
  }
  static void expectWhole(QWidget& around) {
    std::vector<QWidget*> texts;
    for (QWidget* shown : around.findChildren<QWidget*>()) {
      if (!shown->isVisible()) continue;
      SCOPED_TRACE(shown->objectName().toStdString());
      if (const auto room = roomFor(*shown)) {
        EXPECT_GE(room->first.width(), room->second.width());
        EXPECT_GE(room->first.height(), room->second.height());
        EXPECT_TRUE(shown->parentWidget()->rect().contains(shown->geometry())) << "its parent cuts it off";
        if (qobject_cast<QComboBox*>(shown->parentWidget()) == nullptr) texts.push_back(shown);
      }
      if (auto* list = qobject_cast<QAbstractItemView*>(shown)) {
        EXPECT_FALSE(list->horizontalScrollBar()->isVisible());
        const QModelIndex last = list->model()->index(list->model()->rowCount() - 1, 0);
        const bool isShort = list->visualRect(last).bottom() < list->viewport()->height();
        EXPECT_FALSE(isShort && list->verticalScrollBar()->isVisible());
      } else if (auto* area = qobject_cast<QAbstractScrollArea*>(shown)) {
        EXPECT_FALSE(area->horizontalScrollBar()->isVisible());
        EXPECT_FALSE(area->verticalScrollBar()->isVisible());
      }
    }
    const auto place = [&around](const QWidget& shown) {
      return QRect(shown.mapTo(&around, QPoint()), shown.size());
    };
    for (const QWidget* one : texts) {
      for (const QWidget* other : texts) {
        if (one >= other) continue;
        EXPECT_FALSE(place(*one).intersects(place(*other)))
            << one->objectName().toStdString() << " and " << other->objectName().toStdString();
      }
    }
  }
  void expectRowsWhole() {
    const auto& tree = widget<QTreeView>("pluginsTable");
    const int title = QFontMetrics(qt::toQFont(Font{.bold = true})).height();
    const int hint = QFontMetrics(qt::toQFont(Font{.size = 11, .italic = true})).height();
    const int row = qRound(pane->assembly().pluginsView().pluginsTable.rowHeight());
    EXPECT_GE(qt::toPixels(row), title + 2) << "a row of one line";
    EXPECT_GE(qt::toPixels(2 * row), title + hint) << "a title with its hint";
    EXPECT_GE(qt::toPixels(3 * row), title + 2 * hint) << "a title with a hint of two lines";
    EXPECT_GE(tree.columnWidth(1) - tree.indentation() - 8, qt::toPixels(kHintWrapWidth))
        << "a hint that counts as one line has not got its width";
    const auto& header = *tree.header();
    for (int column = 0; column < 2; ++column) {
      EXPECT_GE(header.sectionSize(column) - 8,
                header.fontMetrics().horizontalAdvance(
                    header.model()->headerData(column, Qt::Horizontal).toString()));
    }
    EXPECT_GE(header.height(), header.fontMetrics().height());
  }

  /// Where a text that is not always the same has room, the longest one.
  void showLongestTexts() {
    ConfigurationTabView& configuration = pane->assembly().configurationView();
    for (TextField* date : {&configuration.lastRunClientField, &configuration.lastRunUpdaterField})
      date->setStringValue("September 28, 2026 at 10:48 PM");
    configuration.runIntervalTextField.setStringValue("6");
    OptionsTabView& view = pane->assembly().optionsView();
    view.defaultTextField.setHidden(false);
    view.volumesTable.selectRow(1);
    for (TextField* number : {&view.monitorPresenceThresholdTextField, &view.monitorUsageThresholdTextField,
                              &view.bootVolumeFullTextField, &view.timeMachineInactiveTextField})
      number->setStringValue("60");
  }

  // What stands on one line.

  /// The part of the widget that holds nothing but its text.
  [[nodiscard]] static QRect textArea(QWidget& shown) {
    if (const auto* box = qobject_cast<QCheckBox*>(&shown)) {
      QStyleOptionButton option;
      option.initFrom(box);
      return box->style()->subElementRect(QStyle::SE_CheckBoxContents, &option, box);
    }
    if (qobject_cast<QComboBox*>(&shown) != nullptr)
      return shown.rect().adjusted(9, 5, -qt::toPixels(26), -5);
    if (qobject_cast<QLineEdit*>(&shown) != nullptr || qobject_cast<QPushButton*>(&shown) != nullptr)
      return shown.rect().adjusted(6, 5, -6, -5);
    return shown.rect();
  }
  /// Puts a text in the place of the widget's own.
  void showText(const char* name, const QString& text) {
    if (auto* field = qobject_cast<QLineEdit*>(&widget(name))) {
      const QSignalBlocker unasked(field);  // a field of numbers refuses letters
      field->setValidator(nullptr);
      field->setText(text);
      field->setReadOnly(true);  // hides the caret
    } else if (auto* label = qobject_cast<QLabel*>(&widget(name))) {
      label->setText(text);
    } else if (auto* menu = qobject_cast<QComboBox*>(&widget(name))) {
      menu->setItemText(menu->currentIndex(), text);
    } else {
      for (const auto& [controlName, control] : namedControls(pane->assembly())) {
        if (controlName == name) dynamic_cast<Button&>(*control).setTitle(text.toStdString());
      }
    }
  }
  /// The lowest line of the text's first letter, in pixels of the picture of the window; nothing where there
  /// is none.
  [[nodiscard]] std::optional<int> feetOf(const QImage& picture, const char* name) {
    QWidget& shown = widget(name);
    const QRect place = textArea(shown).translated(shown.mapTo(&window(), QPoint()));
    const qreal scale = picture.devicePixelRatio();
    const QRect area(
        QPoint(qCeil(place.left() * scale), qCeil(place.top() * scale)),
        QPoint(qFloor((place.right() + 1) * scale) - 1, qFloor((place.bottom() + 1) * scale) - 1));
    const int paper = qGray(picture.pixel(area.topLeft()));
    int strongest = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
      for (int x = area.left(); x <= area.right(); ++x)
        strongest = qMax(strongest, qAbs(qGray(picture.pixel(x, y)) - paper));
    }
    const auto isInk = [&](int x, int y) {
      return qAbs(qGray(picture.pixel(x, y)) - paper) > qMax(30, strongest / 2);
    };
    const int width = qFloor(QFontMetricsF(shown.font()).horizontalAdvance(QLatin1Char('H')) * scale * 0.8);
    for (int left = area.left(); left <= area.right(); ++left) {
      for (int y = area.bottom(); y >= area.top(); --y) {
        if (!isInk(left, y)) continue;
        for (int foot = area.bottom(); foot >= y; --foot) {
          for (int x = left; x < qMin(left + width, area.right()); ++x) {
            if (isInk(x, foot)) return foot;
          }
        }
        return y;
      }
    }
    return std::nullopt;
  }
  void expectRowsOnOneLine(const std::vector<Row>& rows, const QString& text) {
    for (const Row& row : rows) {
      for (const char* name : row) showText(name, text);
    }
    settle();
    const QImage picture = window().grab().toImage();
    for (const Row& row : rows) {
      const std::optional<int> first = feetOf(picture, row.front());
      ASSERT_TRUE(first) << "no letters: " << row.front();
      for (const char* name : row) {
        const std::optional<int> feet = feetOf(picture, name);
        ASSERT_TRUE(feet) << "no letters: " << name;
        // A field rounds the height of a foreign letter to whole points, which may be less than a point off.
        const bool mayRound = text.size() > 1 && qobject_cast<QLineEdit*>(&widget(name)) != nullptr;
        EXPECT_NEAR(*feet, *first, mayRound && picture.devicePixelRatio() != 1 ? 1 : 0)
            << name << " beside " << row.front();
      }
    }
  }

  DemoClient demo{"0"};

 private:
  QFont before_ = QApplication::font();
};

TEST_P(DesktopFonts, NothingIsCutOffAndTheTextsOfARowStandOnOneLine) {
  const Page& page = std::get<Page>(GetParam());
  if (page.tab == 2) {
    expectWhole(*sheet());
    answerSheet("Continue");
    settle();
    expectRowsWhole();
  }
  showLongestTexts();
  settle();
  if (page.sheet) {
    pane->assembly().options().advancedButtonAction();
    settle();
    expectWhole(*sheet());
  } else {
    expectWhole(window());
  }
  expectRowsOnOneLine(page.rows, QStringLiteral("H"));
  // What the font has not got comes from one whose letters are higher.
  expectRowsOnOneLine(page.rows, QStringLiteral("H \U0001F9EA"));
  if (page.tab == 0) {
    qt::StartPage start({QStringLiteral("/media/Macintosh HD")},
                        {QStringLiteral("/srv/") + QString(200, QLatin1Char('m'))});
    start.showRefusal(
        QStringLiteral("/srv/empty holds no monitoring client: there is no Library/Corvane in it."));
    start.show();
    settle();
    expectWhole(start);
    click(widget("uninstallButton"));
    settle();
    ASSERT_NE(sheet(), nullptr);
    expectWhole(*sheet());
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

class LinesOfText : public ::testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    if (!QFontDatabase::families().contains(QString::fromLatin1(GetParam())))
      GTEST_SKIP() << "NOT TESTED: " << GetParam() << " is not installed";
  }
  using Draw = std::function<void(QPainter&, const QRectF&, const QString&)>;
  /// The rows of the picture in which the first letters have ink, however the lines are drawn.
  [[nodiscard]] static std::set<int> rowsOfFirstLetters(const QFont& font, const QString& text,
                                                        const Draw& draw) {
    QImage image(600, 120, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(font);
    draw(painter, QRectF(0, 0, image.width(), image.height()), text);
    painter.end();
    std::set<int> rows;
    const int width = QFontMetrics(font).horizontalAdvance(QLatin1Char('H'));
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < width; ++x) {
        if (qGray(image.pixel(x, y)) < 128) rows.insert(y);
      }
    }
    return rows;
  }
};

TEST_P(LinesOfText, StandWhereTheyStandWhateverOtherLettersAreInThem) {
  const Draw inOneLine = [](QPainter& painter, const QRectF& rect, const QString& text) {
    qt::drawTextLine(painter, rect, Qt::AlignVCenter, text);
  };
  const Draw styled = [](QPainter& painter, const QRectF& rect, const QString& text) {
    qt::AttributedTextLayout(AttributedText(text.toStdString()), painter.font(), QPalette(), Qt::black)
        .draw(painter, rect, Qt::AlignLeft);
  };
  for (const int points : {9, 10, 11, 13, 15, 18}) {
    const QFont font(QString::fromLatin1(GetParam()), points);
    const std::set<int> line = rowsOfFirstLetters(font, QStringLiteral("H"), inOneLine);
    const std::set<int> two = rowsOfFirstLetters(font, QStringLiteral("H\nH"), styled);
    ASSERT_FALSE(line.empty());
    ASSERT_GT(two.size(), line.size());
    EXPECT_EQ(rowsOfFirstLetters(font, QStringLiteral("H"), styled), line);
    for (const char* foreign :
         {"\U0001F9EA", "\u6F22", "\u0639", "\u0E01", "\uFFFD", "\U0001F469\u200D\U0001F4BB"}) {
      SCOPED_TRACE(::testing::Message() << points << " " << foreign);
      const QString text = QStringLiteral("H ") + QString::fromUtf8(foreign);
      EXPECT_EQ(rowsOfFirstLetters(font, text, inOneLine), line);
      EXPECT_EQ(rowsOfFirstLetters(font, text, styled), line);
      EXPECT_EQ(rowsOfFirstLetters(font, text + QStringLiteral("\nH"), styled), two);
      EXPECT_EQ(rowsOfFirstLetters(font, QStringLiteral("H\n") + text, styled), two);
    }
  }
}

constexpr std::array<const char*, 5> kFamilies{"DejaVu Sans", "Liberation Sans", "Noto Sans", "Cantarell",
                                               "Noto Sans CJK JP"};

INSTANTIATE_TEST_SUITE_P(Of, LinesOfText, ::testing::ValuesIn(kFamilies), [](const auto& test) {
  return QString::fromLatin1(test.param).remove(QLatin1Char(' ')).toStdString();
});

std::vector<DesktopFont> desktopFonts() {
  std::vector<DesktopFont> fonts;
  for (const char* family : kFamilies) {
    for (const int points : {9, 10, 11, 13, 15, 18}) fonts.push_back({family, points});
  }
  return fonts;
}

std::string nameOf(const ::testing::TestParamInfo<std::tuple<Page, DesktopFont>>& test) {
  const Page& page = std::get<Page>(test.param);
  const DesktopFont& font = std::get<DesktopFont>(test.param);
  return QStringLiteral("%1In%2%3")
      .arg(QLatin1String(page.name), QLatin1String(font.family))
      .arg(font.points)
      .remove(QLatin1Char(' '))
      .toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Of, DesktopFonts,
    ::testing::Combine(
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
                                {"warnAtTextField", "volumeOptionWarnAtButton",
                                 "monitorUsageThresholdTextField", "volumeOptionPercentageButton"},
                                {"bootVolumeLabel", "bootVolumeWarningCheckbox", "bootVolumeFullTextField",
                                 "bootVolumeWarningTrailingButton"},
                                {"timeMachineLabel", "timeMachineWarningCheckbox",
                                 "timeMachineInactiveTextField", "timeMachineWarningTrailingButton",
                                 "advancedButton"},
                                {"automountLabel", "automountCheckbox"}}},
                          Page{"TimeMachineSheet",
                               1,
                               true,
                               {{"manualRunLabel", "manuallyTriggerTextField", "manualRunDaysLabel"},
                                {"timeOfDayLabel", "timeOfDayTextField", "amPmButton"},
                                {"sheetCancelButton", "sheetOkButton"}}},
                          Page{"PluginsTab", 2, false, {{"authLabel", "clientVersionButton"}}}),
        ::testing::ValuesIn(desktopFonts())),
    nameOf);

}  // namespace
}  // namespace corvane::test

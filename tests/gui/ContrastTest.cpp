// What is painted can be told from its ground in every palette that a desktop may bring: measured on the
// pixels.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QPalette>
#include <QStyle>
#include <array>
#include <ostream>

#include <gtest/gtest.h>

#include "AttributedTextLayout.h"
#include "Fonts.h"
#include "appearance/Appearance.h"
#include "appearance/Contrast.h"
#include "widgets/LabelButton.h"

namespace corvane::test {
namespace {

using qt::contrast;

struct Desktop {
  const char* name;
  QRgb window, base, text, button, highlight, highlightedText, placeholder;
};
void PrintTo(const Desktop& desktop, std::ostream* stream) { *stream << desktop.name; }

constexpr std::array<Desktop, 8> kDesktops{{
    {"LightAndBlue", 0xffefefef, 0xffffffff, 0xff000000, 0xffefefef, 0xff308cc6, 0xffffffff, 0x80000000},
    {"LightAndYellow", 0xfff6f5f4, 0xffffffff, 0xff2e3436, 0xfff6f5f4, 0xffffe066, 0xff000000, 0xff9a9996},
    {"LightAndPaleAccentWithWhiteText", 0xfffafafa, 0xffffffff, 0xff202020, 0xffffffff, 0xffa0d8b0,
     0xffffffff, 0xffb0b0b0},
    {"DarkAndOrange", 0xff2d2d2d, 0xff1e1e1e, 0xffeeeeee, 0xff3d3d3d, 0xffe95420, 0xffffffff, 0x80eeeeee},
    {"DarkAndNavy", 0xff202020, 0xff101010, 0xffffffff, 0xff303030, 0xff102050, 0xffffffff, 0xff505050},
    {"HighContrast", 0xffffffff, 0xffffffff, 0xff000000, 0xffffffff, 0xff000000, 0xffffffff, 0xffc0c0c0},
    {"HighContrastInverse", 0xff000000, 0xff000000, 0xffffffff, 0xff000000, 0xffffff00, 0xff000000,
     0xff404040},
    {"SepiaOfLittleContrast", 0xfffdf6e3, 0xffeee8d5, 0xff586e75, 0xffeee8d5, 0xff2aa198, 0xfffdf6e3,
     0xff93a1a1},
}};

QPalette paletteOf(const Desktop& desktop) {
  QPalette palette;
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(role, desktop.text);
  palette.setColor(QPalette::Window, desktop.window);
  palette.setColor(QPalette::Base, desktop.base);
  palette.setColor(QPalette::Button, desktop.button);
  palette.setColor(QPalette::Highlight, desktop.highlight);
  palette.setColor(QPalette::HighlightedText, desktop.highlightedText);
  palette.setColor(QPalette::PlaceholderText, QColor::fromRgba(desktop.placeholder));
  return palette;
}

class Contrast : public ::testing::TestWithParam<Desktop> {
 protected:
  void SetUp() override {
    QPalette palette = paletteOf(GetParam());
    QApplication::style()->polish(palette);  // as the desktop's own is
    QApplication::setPalette(palette);
  }
  void TearDown() override { qt::applyAppearance(qt::Appearance::System); }

  /// The widget as it looks, at a size at which a stroke is wider than a pixel.
  [[nodiscard]] static QImage pictureOf(QWidget& widget) {
    constexpr int kMagnification = 8;
    widget.resize(widget.sizeHint());
    QImage image(widget.size() * kMagnification, QImage::Format_RGB32);
    image.setDevicePixelRatio(kMagnification);
    image.fill(QApplication::palette().color(QPalette::Window));
    widget.render(&image);
    return image;
  }
  /// Of the strongest pixel against the ground, inside these parts of the picture's width and height.
  [[nodiscard]] static double strongest(const QImage& image, const QRectF& part, const QColor& ground) {
    double found = 1;
    for (int y = int(part.top() * image.height()); y < int(part.bottom() * image.height()); ++y) {
      for (int x = int(part.left() * image.width()); x < int(part.right() * image.width()); ++x)
        found = qMax(found, contrast(image.pixelColor(x, y), ground));
    }
    return found;
  }
};

TEST_P(Contrast, OfACheckMarkIsThatOfAMarkAlsoWhenItIsLocked) {
  for (const bool isEnabled : {true, false}) {
    QCheckBox box;
    box.setChecked(true);
    box.setEnabled(isEnabled);
    const QImage image = pictureOf(box);
    // A point of the box's face that the mark does not reach: its upper left.
    const QRectF face(0.3, 0.3, 0.4, 0.4);
    const QColor ground = image.pixelColor(int(image.width() * 0.3), int(image.height() * 0.3));
    EXPECT_GE(strongest(image, face, ground), qt::kMarkContrast) << (isEnabled ? "enabled" : "locked");
  }
}

TEST_P(Contrast, OfAnEmptyBoxIsThatOfAMarkAlsoWhenItIsLocked) {
  for (const bool isEnabled : {true, false}) {
    QCheckBox box;
    box.setEnabled(isEnabled);
    const QImage image = pictureOf(box);
    const QColor window = QApplication::palette().color(QPalette::Window);
    const QColor inside = image.pixelColor(image.width() / 2, image.height() / 2);
    EXPECT_GE(strongest(image, {0, 0.4, 0.4, 0.2}, window), qt::kMarkContrast) << isEnabled;
    EXPECT_GE(strongest(image, {0, 0.4, 0.4, 0.2}, inside), qt::kMarkContrast) << isEnabled;
  }
}

TEST_P(Contrast, OfTheArrowsOfAMenuIsThatOfAMark) {
  for (const bool isEnabled : {true, false}) {
    QComboBox menu;
    menu.addItem(QStringLiteral("AM"));
    menu.setEnabled(isEnabled);
    const QImage image = pictureOf(menu);
    const double arrows = (menu.width() - qt::toPixels(16) + 1.0) / menu.width();
    const QRectF face(arrows, 0.3, 1 - arrows - 6.0 / menu.width(), 0.4);
    const QColor ground = image.pixelColor(int(image.width() * (arrows + 0.02)), image.height() / 2);
    EXPECT_GE(strongest(image, face, ground), qt::kMarkContrast) << (isEnabled ? "enabled" : "locked");
  }
}

TEST_P(Contrast, OfLockedLabelsHintsAndColouredTextsIsThatOfLetters) {
  const QColor window = QApplication::palette().color(QPalette::Window);
  QLabel locked(QStringLiteral("IIII"));
  locked.setEnabled(false);
  EXPECT_GE(strongest(pictureOf(locked), {0, 0, 1, 1}, window), qt::kTextContrast) << "a locked label";
  QCheckBox title(QStringLiteral("IIIIIIII"));
  title.setEnabled(false);
  EXPECT_GE(strongest(pictureOf(title), {0.5, 0, 0.5, 1}, window), qt::kTextContrast)
      << "the title of a locked box";
  QLabel hint(QStringLiteral("IIII"));
  qt::makeHint(hint);
  EXPECT_GE(strongest(pictureOf(hint), {0, 0, 1, 1}, window), qt::kTextContrast) << "a hint";
  qt::LabelButton stored;
  stored.setForegroundRole(QPalette::Text);
  stored.setAttributedText(AttributedText("IIII"));
  stored.setEnabled(false);
  EXPECT_GE(strongest(pictureOf(stored), {0, 0, 1, 1}, window), qt::kTextContrast)
      << "what is stored, locked";
  for (const TextColor color : {TextColor::Gray, TextColor::DarkGray, TextColor::Red, TextColor::Blue}) {
    AttributedText text("IIII");
    TextAttributes attributes;
    attributes.color = color;
    text.runs = {{0, 4, attributes}};
    qt::LabelButton coloured;
    coloured.setAttributedText(text);
    EXPECT_GE(strongest(pictureOf(coloured), {0, 0, 1, 1}, window), qt::kTextContrast)
        << static_cast<int>(color);
  }
}

INSTANTIATE_TEST_SUITE_P(In, Contrast, ::testing::ValuesIn(kDesktops),
                         [](const auto& desktop) { return desktop.param.name; });

}  // namespace
}  // namespace corvane::test

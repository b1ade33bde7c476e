#include "appearance/Appearance.h"

#include <QApplication>
#include <QImageReader>

#include "Fonts.h"
#include "appearance/Contrast.h"
#include "appearance/PaneStyle.h"

// Resources of a static library are linked in only when they are asked for; the macro must stand outside of
// any namespace.
static void initialiseResources() { Q_INIT_RESOURCE(corvane); }

namespace corvane::qt {
namespace {

struct Colors {
  QRgb window, base, alternate, button, text, dimText, disabledText, highlight, highlightedText, link,
      toolTip;
};

QPalette paletteOf(const Colors& colors) {
  QPalette palette;
  palette.setColor(QPalette::Window, colors.window);
  palette.setColor(QPalette::WindowText, colors.text);
  palette.setColor(QPalette::Base, colors.base);
  palette.setColor(QPalette::AlternateBase, colors.alternate);
  palette.setColor(QPalette::Text, colors.text);
  palette.setColor(QPalette::PlaceholderText, colors.dimText);
  palette.setColor(QPalette::Button, colors.button);
  palette.setColor(QPalette::ButtonText, colors.text);
  palette.setColor(QPalette::BrightText, Qt::white);
  palette.setColor(QPalette::Highlight, colors.highlight);
  palette.setColor(QPalette::HighlightedText, colors.highlightedText);
  palette.setColor(QPalette::Link, colors.link);
  palette.setColor(QPalette::LinkVisited, colors.link);
  palette.setColor(QPalette::ToolTipBase, colors.toolTip);
  palette.setColor(QPalette::ToolTipText, colors.text);
  const QColor button(colors.button);
  palette.setColor(QPalette::Light, button.lighter(120));
  palette.setColor(QPalette::Midlight, button.lighter(108));
  palette.setColor(QPalette::Mid, button.darker(130));
  palette.setColor(QPalette::Dark, button.darker(170));
  palette.setColor(QPalette::Shadow, Qt::black);
  for (const auto role : {QPalette::WindowText, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, colors.disabledText);
  }
  keepReadable(palette);
  // The selection of a disabled table: still seen, but no longer the colour that invites.
  QColor dimmed(colors.disabledText);
  dimmed.setAlphaF(0.55F);
  palette.setColor(QPalette::Disabled, QPalette::Highlight, dimmed);
  palette.setColor(QPalette::Disabled, QPalette::HighlightedText, colors.text);
  return palette;
}

}  // namespace

QPalette lightPalette() {
  return paletteOf({.window = 0xffececee,
                    .base = 0xffffffff,
                    .alternate = 0xfff4f4f6,
                    .button = 0xfffefefe,
                    .text = 0xff1d1d1f,
                    .dimText = 0xff75757a,
                    .disabledText = 0xff9c9ca1,
                    .highlight = 0xff1769d2,
                    .highlightedText = 0xffffffff,
                    .link = 0xff0a58ca,
                    .toolTip = 0xfff8f8f8});
}

QPalette darkPalette() {
  return paletteOf({.window = 0xff28282b,
                    .base = 0xff1e1e20,
                    .alternate = 0xff252528,
                    .button = 0xff515156,
                    .text = 0xfff0f0f2,
                    .dimText = 0xff97979c,
                    .disabledText = 0xff76767b,
                    .highlight = 0xff2f7de1,
                    .highlightedText = 0xffffffff,
                    .link = 0xff6fb1ff,
                    .toolTip = 0xff38383b});
}

void keepReadable(QPalette& palette) {
  const QColor window = palette.color(QPalette::Active, QPalette::Window);
  const QColor base = palette.color(QPalette::Active, QPalette::Base);
  // Some palettes say how pale a hint is by making it transparent.
  QColor pale = palette.color(QPalette::Active, QPalette::PlaceholderText);
  const float alpha = pale.alphaF();
  const QColor text = palette.color(QPalette::Active, QPalette::Text);
  const auto mix = [alpha](float below, float above) { return below + (above - below) * alpha; };
  pale = QColor::fromRgbF(mix(base.redF(), pale.redF()), mix(base.greenF(), pale.greenF()),
                          mix(base.blueF(), pale.blueF()));
  const QColor hint = readable(pale, text, {window, base});
  for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
    palette.setColor(group, QPalette::PlaceholderText, hint);
  palette.setColor(QPalette::Disabled, QPalette::Text, hint);
  palette.setColor(QPalette::Disabled, QPalette::WindowText, hint);
}

bool isDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightnessF() < palette.color(QPalette::WindowText).lightnessF();
}

void applyAppearance(Appearance appearance) {
  switch (appearance) {
    case Appearance::System:
      QApplication::setPalette(QPalette());
      break;
    case Appearance::Light:
      QApplication::setPalette(lightPalette());
      break;
    case Appearance::Dark:
      QApplication::setPalette(darkPalette());
      break;
  }
}

QIcon productIcon() {
  QIcon icon;
  for (const int size : {16, 32, 64, 128, 256}) {
    // Told the format, the reader need not load the toolkit's plug-ins for all others to ask them about it.
    QImageReader reader(QStringLiteral(":/corvane/Corvane-%1.png").arg(size), "PNG");
    reader.setAutoDetectImageFormat(false);
    icon.addPixmap(QPixmap::fromImage(reader.read()));
  }
  return icon;
}

void dressApplication(QApplication& application) {
  initialiseResources();
  application.setStyle(new PaneStyle);
  application.setFont(regularFont());
  application.setQuitOnLastWindowClosed(true);
}

}  // namespace corvane::qt

// The pane's calm look: the toolkit's portable style with rounder, flatter controls, blue default buttons and
// a soft focus ring. Every colour is taken from the palette, so light, dark and a desktop's own colours work.
#pragma once

#include <QProxyStyle>

namespace corvane::qt {

class PaneStyle final : public QProxyStyle {
  Q_OBJECT

 public:
  PaneStyle();

  [[nodiscard]] QPalette standardPalette() const override;
  void polish(QWidget* widget) override;
  void polish(QPalette& palette) override;
  using QProxyStyle::polish;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
  void drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette, bool isEnabled,
                    const QString& text, QPalette::ColorRole role) const override;
  [[nodiscard]] QRect subElementRect(SubElement element, const QStyleOption* option,
                                     const QWidget* widget) const override;
  [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                const QWidget* widget) const override;
  [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                              QStyleHintReturn* result) const override;
  [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                       const QWidget* widget) const override;
  [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                     SubControl part, const QWidget* widget) const override;
};

}  // namespace corvane::qt

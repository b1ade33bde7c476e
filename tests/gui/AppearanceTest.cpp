#include <QApplication>
#include <QPalette>

#include <gtest/gtest.h>

#include "appearance/Appearance.h"
#include "appearance/Contrast.h"

namespace corvane::test {
namespace {

using qt::Appearance;

/// The color as it looks on an opaque ground.
QColor seenOn(const QColor& ground, const QColor& color) {
  const auto mix = [&](float below, float above) { return below + (above - below) * color.alphaF(); };
  return QColor::fromRgbF(mix(ground.redF(), color.redF()), mix(ground.greenF(), color.greenF()),
                          mix(ground.blueF(), color.blueF()));
}

/// Of the color as it looks on the ground.
double contrast(const QColor& ground, const QColor& color) {
  return qt::contrast(ground, seenOn(ground, color));
}

class AppearanceTest : public ::testing::TestWithParam<Appearance> {
 protected:
  void SetUp() override { qt::applyAppearance(GetParam()); }
  void TearDown() override { qt::applyAppearance(Appearance::System); }
};

TEST_P(AppearanceTest, WhatIsStoredCanBeReadWhileItMayNotBeChanged) {
  const QPalette palette = QApplication::palette();
  const QColor ground = palette.color(QPalette::Disabled, QPalette::Base);
  EXPECT_GT(contrast(ground, palette.color(QPalette::Disabled, QPalette::Text)), 3);
  EXPECT_LT(contrast(ground, palette.color(QPalette::Disabled, QPalette::Text)),
            contrast(ground, palette.color(QPalette::Active, QPalette::Text)));
}

TEST_P(AppearanceTest, TheColorOfTheKeyboardsMarkStandsOutFromTheWindow) {
  const QPalette palette = QApplication::palette();
  EXPECT_GT(contrast(palette.color(QPalette::Window), palette.color(QPalette::Active, QPalette::Highlight)),
            3);
}

INSTANTIATE_TEST_SUITE_P(Of, AppearanceTest,
                         ::testing::Values(Appearance::System, Appearance::Light, Appearance::Dark),
                         [](const auto& appearance) {
                           switch (appearance.param) {
                             case Appearance::Light:
                               return "Light";
                             case Appearance::Dark:
                               return "Dark";
                             default:
                               return "TheDesktop";
                           }
                         });

}  // namespace
}  // namespace corvane::test

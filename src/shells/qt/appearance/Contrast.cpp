#include "appearance/Contrast.h"

#include <algorithm>
#include <cmath>

namespace corvane::qt {
namespace {

/// Of the sRGB colour, 0 to 1.
double luminance(const QColor& color) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

}  // namespace

double contrast(const QColor& one, const QColor& other) {
  const auto [less, more] = std::minmax({luminance(one), luminance(other)});
  return (more + 0.05) / (less + 0.05);
}

QColor readable(const QColor& color, const QColor& strong, std::initializer_list<QColor> grounds,
                double wanted) {
  constexpr int kSteps = 32;
  for (int step = 0; step < kSteps; ++step) {
    const float share = static_cast<float>(step) / kSteps;
    const auto mix = [share](float from, float to) { return from + (to - from) * share; };
    // Judged as a screen shows it, in whole steps of eight bits.
    const QColor mixed =
        QColor::fromRgbF(mix(color.redF(), strong.redF()), mix(color.greenF(), strong.greenF()),
                         mix(color.blueF(), strong.blueF()))
            .rgb();
    if (std::all_of(grounds.begin(), grounds.end(),
                    [&](const QColor& ground) { return contrast(mixed, ground) >= wanted; }))
      return mixed;
  }
  return strong;
}

QColor markOn(const QColor& ground, const QColor& color) {
  if (contrast(color, ground) >= kMarkContrast) return color;
  return contrast(Qt::white, ground) >= contrast(Qt::black, ground) ? Qt::white : Qt::black;
}

}  // namespace corvane::qt

// How well colours can be told apart, and colours that can be, whatever palette a desktop brings.
#pragma once

#include <QColor>
#include <initializer_list>

namespace corvane::qt {

inline constexpr double kTextContrast = 4.5;  // what letters need
inline constexpr double kMarkContrast = 3;    // what marks need

/// From 1, no difference, to 21, black on white, of two opaque colours.
[[nodiscard]] double contrast(const QColor& one, const QColor& other);
/// The colour, brought as far towards the strong one as it takes to have this contrast on all of these
/// grounds, or as near to that as the strong one is.
[[nodiscard]] QColor readable(const QColor& color, const QColor& strong,
                              std::initializer_list<QColor> grounds, double wanted = kTextContrast);
/// The colour of a mark on a ground of any colour: this one, or, where it is not told apart, black or white.
[[nodiscard]] QColor markOn(const QColor& ground, const QColor& color);

}  // namespace corvane::qt

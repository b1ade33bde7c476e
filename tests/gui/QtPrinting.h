// How failed expectations print the toolkit's values. Included before anything else in every file here.
#pragma once

#include <QDebug>
#include <QRect>
#include <QString>
#include <ostream>

inline void PrintTo(const QString& text, std::ostream* stream) {
  *stream << '"' << text.toStdString() << '"';
}

namespace corvane::test {
template <typename Value>
void printByToolkit(const Value& value, std::ostream* stream) {
  QString text;
  QDebug(&text).nospace() << value;
  *stream << text.toStdString();
}
}  // namespace corvane::test

inline void PrintTo(const QRect& value, std::ostream* stream) {
  corvane::test::printByToolkit(value, stream);
}
inline void PrintTo(const QSize& value, std::ostream* stream) {
  corvane::test::printByToolkit(value, stream);
}
inline void PrintTo(const QPoint& value, std::ostream* stream) {
  corvane::test::printByToolkit(value, stream);
}

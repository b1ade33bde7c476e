#include "Text.h"

#include <QTextDocument>

namespace corvane::qt {

QString plainToolTip(std::string_view text) {
  const QString plain = toQString(text);
  return Qt::mightBeRichText(plain) ? plain.toHtmlEscaped() : plain;
}

}  // namespace corvane::qt

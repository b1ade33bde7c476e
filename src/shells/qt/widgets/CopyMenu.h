// A menu for texts that are shown but not typed: the whole text can be copied, also where it is shown
// shortened.
#pragma once

#include <QString>
#include <functional>

class QWidget;

namespace corvane::qt {

void offerCopy(QWidget& shown, std::function<QString()> wholeText);

}  // namespace corvane::qt

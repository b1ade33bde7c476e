// A menu for texts that are shown but not typed: the whole text can be copied, also where it is shown
// shortened. What can have the keyboard answers to the key for it as well.
#pragma once

#include <QString>
#include <functional>

class QWidget;

namespace corvane::qt {

void offerCopy(QWidget& shown, std::function<QString()> wholeText);

}  // namespace corvane::qt

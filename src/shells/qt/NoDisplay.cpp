#include "NoDisplay.h"

#include <QString>
#include <QtGlobal>
#include <cstdio>

#include <unistd.h>

namespace corvane::qt {
namespace {

constexpr int kNoDisplay = 1;

QtMessageHandler formerHandler = nullptr;

void handle(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (type != QtFatalMsg) {
    formerHandler(type, context, message);  // names the display that could not be reached
    return;
  }
  std::fputs("corvane-pane: there is no display to show the window on\n", stderr);
  ::_exit(kNoDisplay);  // nothing is set up yet that would have to be put away
}

}  // namespace

EndWithoutDisplay::EndWithoutDisplay() { formerHandler = qInstallMessageHandler(handle); }

EndWithoutDisplay::~EndWithoutDisplay() { qInstallMessageHandler(formerHandler); }

}  // namespace corvane::qt

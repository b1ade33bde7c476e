#include "WindowSize.h"

#include <QEvent>
#include <QScreen>
#include <QSettings>
#include <QWidget>

#include "Fonts.h"

namespace corvane::qt {
namespace {

constexpr int kLargest = 10'000;  // points

QSettings settings() {
  return {QSettings::IniFormat, QSettings::UserScope, QStringLiteral("corvane-pane"),
          QStringLiteral("window")};
}

class Keeper final : public QObject {
 public:
  explicit Keeper(QWidget& window) : QObject(&window), window_(window) { window.installEventFilter(this); }

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Close && !window_.isMaximized() && !window_.isFullScreen()) {
      QSettings kept = settings();
      kept.setValue(QStringLiteral("width"), qRound(toPoints(window_.width())));
      kept.setValue(QStringLiteral("height"), qRound(toPoints(window_.height())));
    }
    return false;
  }

 private:
  QWidget& window_;
};

}  // namespace

void rememberSize(QWidget& window) {
  const QSettings kept = settings();
  const int width = kept.value(QStringLiteral("width")).toInt();
  const int height = kept.value(QStringLiteral("height")).toInt();
  if (width > 0 && height > 0 && width <= kLargest && height <= kLargest)
    window.resize(QSize(toPixels(width), toPixels(height)).boundedTo(window.screen()->availableSize()));
  new Keeper(window);
}

}  // namespace corvane::qt

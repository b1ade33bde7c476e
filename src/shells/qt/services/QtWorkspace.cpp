#include "services/QtWorkspace.h"

#include <QDesktopServices>
#include <QGuiApplication>
#include <QUrl>

#include "Fonts.h"
#include "Text.h"

namespace corvane::qt {

bool QtWorkspace::openUrl(const std::string& address) {
  const QUrl url(toQString(address), QUrl::StrictMode);
  if (!url.isValid()) return false;
  const QString scheme = url.scheme();  // in lower case
  const bool web = scheme == QLatin1String("http") || scheme == QLatin1String("https");
  const bool mayBeOpened = web ? !url.host().isEmpty() : scheme == QLatin1String("mailto");
  return mayBeOpened && QDesktopServices::openUrl(url);
}

std::uint32_t QtWorkspace::modifierFlags() {
  const Qt::KeyboardModifiers held = QGuiApplication::keyboardModifiers();
  std::uint32_t flags = 0;
  if (held.testFlag(Qt::ControlModifier)) flags |= kControlKeyFlag;
  if (held.testFlag(Qt::AltModifier)) flags |= kOptionKeyFlag;
  return flags;
}

double QtWorkspace::textWidth(std::string_view text, const Font& font) { return qt::textWidth(text, font); }

}  // namespace corvane::qt

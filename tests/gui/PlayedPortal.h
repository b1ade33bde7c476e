// Plays the desktop's portal on a session bus: answers which of light and dark is preferred.
#pragma once

#include <QDBusVariant>
#include <QObject>
#include <QString>
#include <functional>

namespace corvane::test {

class PlayedPortal : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

 public:
  static constexpr const char* kService = "org.freedesktop.portal.Desktop";
  static constexpr const char* kPath = "/org/freedesktop/portal/desktop";
  static constexpr const char* kInterface = "org.freedesktop.portal.Settings";
  static constexpr const char* kGroup = "org.freedesktop.appearance";
  static constexpr const char* kKey = "color-scheme";

  uint scheme = 0;
  int asked = 0;
  std::function<void()> beforeAnswer = [] {};

 public slots:
  Q_SCRIPTABLE QDBusVariant Read(const QString& group, const QString& key) {
    ++asked;
    beforeAnswer();
    const bool isKnown = group == QLatin1String(kGroup) && key == QLatin1String(kKey);
    return QDBusVariant(QVariant::fromValue(QDBusVariant(isKnown ? QVariant(scheme) : QVariant())));
  }
};

}  // namespace corvane::test

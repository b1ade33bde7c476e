// Follows the desktop's choice of light or dark. Desktops tell it through their portal on the session bus,
// which the toolkit does not ask before its release 6.5. Where there is no bus, no portal or no answer,
// everything stays as it is. The executable makes one, unless the user has fixed the appearance.
#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>

namespace corvane::qt {

class DesktopAppearance final : public QObject {
  Q_OBJECT

 public:
  /// Asks at once and does not wait for the answer.
  explicit DesktopAppearance(const QDBusConnection& bus, QObject* parent = nullptr);

  /// The user's session bus; never connected where there is none, since none is started for this.
  [[nodiscard]] static QDBusConnection sessionBus();

 private slots:
  void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

 private:
  static void follow(QVariant value);

  bool hasChanged_ = false;  // since the question: then its answer is old
};

}  // namespace corvane::qt

#include "appearance/DesktopAppearance.h"

#include <QApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFileInfo>

#include "appearance/Appearance.h"

namespace corvane::qt {
namespace {

constexpr uint kPrefersDark = 1;

constexpr QLatin1String kService("org.freedesktop.portal.Desktop");
constexpr QLatin1String kPath("/org/freedesktop/portal/desktop");
constexpr QLatin1String kInterface("org.freedesktop.portal.Settings");
constexpr QLatin1String kGroup("org.freedesktop.appearance");
constexpr QLatin1String kKey("color-scheme");

}  // namespace

DesktopAppearance::DesktopAppearance(const QDBusConnection& bus, QObject* parent) : QObject(parent) {
  if (!bus.isConnected()) return;
  QDBusConnection connection(bus);
  qRegisterMetaType<QDBusVariant>("QDBusVariant");  // a slot of an unknown type is not connected
  connection.connect(kService, kPath, kInterface, QStringLiteral("SettingChanged"), this,
                     SLOT(settingChanged(QString, QString, QDBusVariant)));
  QDBusMessage read = QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Read"));
  read << QString(kGroup) << QString(kKey);
  auto* answer = new QDBusPendingCallWatcher(connection.asyncCall(read), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
    const QDBusPendingReply<QDBusVariant> reply = *answer;
    if (reply.isValid() && !hasChanged_) follow(reply.value().variant());
    answer->deleteLater();
  });
}

QDBusConnection DesktopAppearance::sessionBus() {
  const bool isNamed = qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS");
  const QString usual = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
  return isNamed || QFileInfo::exists(usual) ? QDBusConnection::sessionBus() : QDBusConnection(QString());
}

void DesktopAppearance::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
  if (group != kGroup || key != kKey) return;
  hasChanged_ = true;
  follow(value.variant());
}

void DesktopAppearance::follow(QVariant value) {
  // Portals wrap the answer once more than they say.
  while (value.userType() == qMetaTypeId<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  applyAppearance(Appearance::System);
  // A toolkit that follows the desktop by itself has dark colours of its own.
  if (value.toUInt() == kPrefersDark && !isDark(QApplication::palette())) applyAppearance(Appearance::Dark);
}

}  // namespace corvane::qt

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

const QString& service() {
  static const QString name = QStringLiteral("org.freedesktop.portal.Desktop");
  return name;
}
const QString& path() {
  static const QString name = QStringLiteral("/org/freedesktop/portal/desktop");
  return name;
}
const QString& interface() {
  static const QString name = QStringLiteral("org.freedesktop.portal.Settings");
  return name;
}
const QString& group() {
  static const QString name = QStringLiteral("org.freedesktop.appearance");
  return name;
}
const QString& key() {
  static const QString name = QStringLiteral("color-scheme");
  return name;
}

}  // namespace

DesktopAppearance::DesktopAppearance(const QDBusConnection& bus, QObject* parent) : QObject(parent) {
  if (!bus.isConnected()) return;
  QDBusConnection connection(bus);
  qRegisterMetaType<QDBusVariant>("QDBusVariant");  // a slot of an unknown type is not connected
  connection.connect(service(), path(), interface(), QStringLiteral("SettingChanged"), this,
                     SLOT(settingChanged(QString, QString, QDBusVariant)));
  QDBusMessage read = QDBusMessage::createMethodCall(service(), path(), interface(), QStringLiteral("Read"));
  read << group() << key();
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

void DesktopAppearance::settingChanged(const QString& changedGroup, const QString& changedKey,
                                       const QDBusVariant& value) {
  if (changedGroup != group() || changedKey != key()) return;
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

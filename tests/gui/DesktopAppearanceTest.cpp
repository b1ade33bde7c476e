// The window's colours follow the desktop's portal: a real session bus of the test's own, with a portal that
// the test plays.
#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>

#include "Events.h"
#include "PlayedPortal.h"
#include "appearance/Appearance.h"
#include "appearance/DesktopAppearance.h"
#include "support/Patience.h"

namespace corvane::test {
namespace {

using qt::DesktopAppearance;

class DesktopAppearanceTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (QStandardPaths::findExecutable(QStringLiteral("dbus-daemon")).isEmpty())
      GTEST_SKIP() << "NOT TESTED: dbus-daemon is not installed";
    daemon.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                                 QStringLiteral("--print-address")});
    ASSERT_TRUE(eventually([this] { return daemon.canReadLine(); }));
    address = QString::fromUtf8(daemon.readLine()).trimmed();
    qt::applyAppearance(qt::Appearance::System);
    ASSERT_FALSE(isDark());
  }
  void TearDown() override {
    for (const QString& name : names) QDBusConnection::disconnectFromBus(name);
    qt::applyAppearance(qt::Appearance::System);
    daemon.kill();
    daemon.waitForFinished(kHangMilliseconds);
  }
  [[nodiscard]] QDBusConnection connect(const char* name) {
    names << QString::fromUtf8(name);
    return QDBusConnection::connectToBus(address, names.last());
  }
  void startPortal(uint scheme) {
    portal.scheme = scheme;
    QDBusConnection bus = connect("portal");
    ASSERT_TRUE(bus.registerObject(QString::fromUtf8(PlayedPortal::kPath), &portal,
                                   QDBusConnection::ExportScriptableSlots));
    ASSERT_TRUE(bus.registerService(QString::fromUtf8(PlayedPortal::kService)));
  }
  void announce(uint scheme) {
    QDBusMessage signal = QDBusMessage::createSignal(QString::fromUtf8(PlayedPortal::kPath),
                                                     QString::fromUtf8(PlayedPortal::kInterface),
                                                     QStringLiteral("SettingChanged"));
    signal << QString::fromUtf8(PlayedPortal::kGroup) << QString::fromUtf8(PlayedPortal::kKey)
           << QVariant::fromValue(QDBusVariant(QVariant(scheme)));
    ASSERT_TRUE(QDBusConnection(QStringLiteral("portal")).send(signal));
  }
  [[nodiscard]] static bool isDark() { return qt::isDark(QApplication::palette()); }

  QProcess daemon;
  QString address;
  QStringList names;
  PlayedPortal portal;
};

TEST_F(DesktopAppearanceTest, IsDarkFromTheBeginningWhereTheDesktopIs) {
  startPortal(1);
  const DesktopAppearance follower(connect("pane"));
  EXPECT_TRUE(eventually([] { return isDark(); }));
}

TEST_F(DesktopAppearanceTest, FollowsTheDesktopToDarkAndBack) {
  startPortal(2);
  const DesktopAppearance follower(connect("pane"));
  ASSERT_TRUE(eventually([this] { return portal.asked == 1; }));
  announce(1);
  EXPECT_TRUE(eventually([] { return isDark(); }));
  announce(0);
  EXPECT_TRUE(eventually([] { return !isDark(); }));
}

TEST_F(DesktopAppearanceTest, AnAnswerThatComesAfterAChangeDoesNotUndoIt) {
  startPortal(2);
  portal.beforeAnswer = [this] { announce(1); };
  const DesktopAppearance follower(connect("pane"));
  EXPECT_TRUE(eventually([] { return isDark(); }));
  EXPECT_TRUE(eventually([&] { return follower.findChild<QDBusPendingCallWatcher*>() == nullptr; }))
      << "answered";
  EXPECT_TRUE(isDark());
}

TEST_F(DesktopAppearanceTest, ASystemWithoutABusOrAPortalIsLeftAsItIs) {
  const DesktopAppearance withoutBus{QDBusConnection(QString())};
  QDBusConnection bus = connect("pane");
  ASSERT_TRUE(bus.isConnected());
  const DesktopAppearance withoutPortal(bus);
  // The answer to a later question comes after the one that was refused.
  startPortal(0);
  const DesktopAppearance withPortal(bus);
  EXPECT_TRUE(eventually([this] { return portal.asked == 1; }));
  EXPECT_FALSE(isDark());
}

TEST(DesktopAppearanceBus, StartsNoBusWhereThereIsNone) {
  const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
  const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
  qunsetenv("DBUS_SESSION_BUS_ADDRESS");
  qputenv("XDG_RUNTIME_DIR", "/no/such/folder");
  EXPECT_FALSE(DesktopAppearance::sessionBus().isConnected());
  if (!address.isEmpty()) qputenv("DBUS_SESSION_BUS_ADDRESS", address);
  if (folder.isEmpty()) {
    qunsetenv("XDG_RUNTIME_DIR");
  } else {
    qputenv("XDG_RUNTIME_DIR", folder);
  }
}

}  // namespace
}  // namespace corvane::test

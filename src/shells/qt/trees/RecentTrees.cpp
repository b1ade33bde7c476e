#include "trees/RecentTrees.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

#include <unistd.h>

namespace corvane::qt {
namespace {

const QString kKey = QStringLiteral("trees/opened");

}  // namespace

QStringList RecentTrees::list() const {
  if (file_.isEmpty()) return {};
  QStringList folders = QSettings(file_, QSettings::IniFormat).value(kKey).toStringList();
  folders.removeIf([](const QString& folder) { return !QDir::isAbsolutePath(folder); });
  return folders.mid(0, kMost);
}

void RecentTrees::add(const QString& folder) {
  QStringList folders = list();
  folders.removeAll(folder);
  folders.prepend(folder);
  write(folders.mid(0, kMost));
}

void RecentTrees::clear() { write({}); }

void RecentTrees::write(const QStringList& folders) {
  if (file_.isEmpty()) return;
  const QFileDevice::Permissions ownOnly =
      QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
  const QString place = QFileInfo(file_).path();
  QDir().mkpath(QFileInfo(place).path());
  QDir().mkdir(place, ownOnly);  // what one works on is nobody else's business
  QSettings settings(file_, QSettings::IniFormat);
  settings.setValue(kKey, folders);
}

QString RecentTrees::usualFile() {
  const QString given = qEnvironmentVariable("XDG_STATE_HOME");
  const QString state =
      QDir::isAbsolutePath(given) ? given : QDir::homePath() + QStringLiteral("/.local/state");
  QFileInfo owned(state);
  while (!owned.exists() && !owned.isRoot()) owned.setFile(owned.path());
  return owned.ownerId() == ::geteuid() ? state + QStringLiteral("/corvane-pane/trees") : QString();
}

}  // namespace corvane::qt

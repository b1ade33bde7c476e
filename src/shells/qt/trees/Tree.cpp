#include "trees/Tree.h"

#include <QDir>
#include <QFileInfo>
#include <cerrno>
#include <cstring>

#include <unistd.h>

#include "Text.h"
#include "pane/PathTable.h"

namespace corvane::qt {
namespace {

/// The nearest folder above that a client lies below; empty when there is none.
QString treeAround(const QString& folder) {
  QDir around(folder);
  while (around.cdUp()) {
    if (holdsClient(fromQString(around.path()))) return around.path();
  }
  return {};
}

}  // namespace

QString treeName(const QString& folder) { return QDir(folder).dirName(); }

QString treeTitle(const std::string& rootPrefix) {
  if (rootPrefix.empty()) return {};
  const QString path = toQString(rootPrefix);
  return QStringLiteral("%1 — %2").arg(treeName(path), path);
}

QString treeNote(const std::string& rootPrefix) {
  return rootPrefix.empty() ? QString() : QStringLiteral("Client on %1").arg(treeTitle(rootPrefix));
}

bool holdsClient(const std::string& folder) {
  const PathTable paths(folder);
  return QFileInfo(toQString(paths.installFolder)).isDir();
}

QString objectionTo(const QString& folder) {
  const QFileInfo info(folder);
  if (!info.isDir()) return QStringLiteral("\"%1\" is not a folder.").arg(folder);
  const QString path = info.canonicalFilePath();
  if (::access(QFile::encodeName(path).constData(), X_OK) != 0) {
    return QStringLiteral("\"%1\" can't be opened: %2.")
        .arg(folder, QString::fromLocal8Bit(std::strerror(errno)));
  }
  if (holdsClient(fromQString(path))) return {};
  const QString client = toQString(PathTable().installFolder).mid(1);
  const QString around = treeAround(path);
  if (!around.isEmpty()) {
    return QStringLiteral("\"%1\" is a part of a tree. Open \"%2\" instead, which holds \"%3\".")
        .arg(folder, around, client);
  }
  return QStringLiteral("\"%1\" holds no monitoring client: there is no folder \"%2\" in it.")
      .arg(folder, client);
}

std::string rootPrefixOf(const QString& folder) {
  const QString path = QFileInfo(folder).canonicalFilePath();
  return path == QLatin1String("/") ? std::string() : fromQString(path);
}

}  // namespace corvane::qt

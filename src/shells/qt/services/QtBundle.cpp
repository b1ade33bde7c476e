#include "services/QtBundle.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include "Text.h"
#include "pane/Deployment.h"

namespace corvane::qt {

std::string QtBundle::name() { return deployment::kPaneName; }

std::string QtBundle::pathForResource(std::string_view name, std::string_view type) {
  if (type.empty()) return pathForAuxiliaryExecutable(name);  // what has no type is a tool
  const QString suffix = type == "icns" ? QStringLiteral("png") : toQString(type);
  const QString path = QStringLiteral(":/corvane/%1.%2").arg(toQString(name), suffix);
  return QFileInfo::exists(path) ? fromQString(path) : std::string();
}

std::string QtBundle::pathForAuxiliaryExecutable(std::string_view name) {
  const QString file = toQString(name);
  if (file.isEmpty() || file.contains(QLatin1Char('/'))) return {};
  for (const QString& folder :
       {QCoreApplication::applicationDirPath(), QStringLiteral(CORVANE_LIBEXEC_DIR)}) {
    const QFileInfo candidate(QDir(folder).filePath(file));
    if (candidate.isFile() && candidate.isExecutable()) return fromQString(candidate.absoluteFilePath());
  }
  return {};
}

}  // namespace corvane::qt

// Reads the interface files of the window: which named widgets they put into it.
#pragma once

#include <QDirIterator>
#include <QFile>
#include <QXmlStreamReader>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace corvane::test {

/// The named widgets of an interface file with their classes, without what only groups or divides.
inline std::map<std::string, std::string> widgetsOfInterfaceFile(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  std::map<std::string, std::string> widgets;
  QXmlStreamReader reader(&file);
  while (!reader.atEnd()) {
    if (reader.readNext() != QXmlStreamReader::StartElement || reader.name() != QLatin1String("widget"))
      continue;
    const auto kind = reader.attributes().value(QLatin1String("class")).toString().toStdString();
    if (kind == "QWidget" || kind == "QFrame" || kind == "QDialog" || kind == "corvane::qt::ScrollingText")
      continue;
    const auto name = reader.attributes().value(QLatin1String("name")).toString().toStdString();
    EXPECT_TRUE(widgets.emplace(name, kind).second) << name << " stands twice in " << path.toStdString();
  }
  EXPECT_FALSE(reader.hasError()) << path.toStdString();
  EXPECT_FALSE(widgets.empty()) << path.toStdString();
  return widgets;
}

/// All interface files there are.
inline std::vector<QString> interfaceFiles() {
  std::vector<QString> files;
  QDirIterator walk(QStringLiteral(CORVANE_INTERFACE_FOLDER), {QStringLiteral("*.ui")}, QDir::Files,
                    QDirIterator::Subdirectories);
  while (walk.hasNext()) files.push_back(walk.next());
  return files;
}

}  // namespace corvane::test

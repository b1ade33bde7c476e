// Reads a property-list file without the product's codec: with the toolkit's reader of XML.
#pragma once

#include <QFile>
#include <QXmlStreamReader>
#include <string>

#include "support/Values.h"

namespace corvane::test {

class PlainReader {
 public:
  /// Null when the file is missing or no property list.
  [[nodiscard]] static PropertyList read(const std::string& path) {
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly)) return {};
    return PlainReader(file).root();
  }

 private:
  explicit PlainReader(QFile& file) : xml_(&file) {}

  PropertyList root() {
    if (!xml_.readNextStartElement() || xml_.name() != QLatin1String("plist")) return {};
    return xml_.readNextStartElement() ? value() : PropertyList();
  }
  /// Of the element that has begun, up to its end.
  PropertyList value() {
    const QString kind = xml_.name().toString();
    if (kind == QLatin1String("dict")) return dictionary();
    if (kind == QLatin1String("array")) {
      Array array = Array::make();
      while (xml_.readNextStartElement()) array.append(value());
      return array;
    }
    const std::string words = xml_.readElementText().toStdString();
    if (kind == QLatin1String("true") || kind == QLatin1String("false"))
      return flag(kind == QLatin1String("true"));
    return kind == QLatin1String("integer") ? number(std::stoll(words)) : text(words);
  }
  PropertyList dictionary() {
    Dictionary contents = Dictionary::make();
    while (xml_.readNextStartElement()) {
      const std::string key = xml_.readElementText().toStdString();
      if (!xml_.readNextStartElement()) break;
      contents.set(key, value());
    }
    return contents;
  }

  QXmlStreamReader xml_;
};

}  // namespace corvane::test

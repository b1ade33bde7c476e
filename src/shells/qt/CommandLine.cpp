#include "CommandLine.h"

#include <QCommandLineParser>
#include <QFileInfo>

#include "Text.h"

namespace corvane::qt {
namespace {

std::optional<Appearance> appearanceNamed(const QString& name) {
  if (name == QLatin1String("system")) return Appearance::System;
  if (name == QLatin1String("light")) return Appearance::Light;
  if (name == QLatin1String("dark")) return Appearance::Dark;
  return std::nullopt;
}

/// The parser names the running program in its first line, and nothing where there is no application yet.
QString helpOf(const QCommandLineParser& parser) {
  const QString text = parser.helpText();
  return QStringLiteral("Usage: corvane-pane [options] [folder]") + text.mid(text.indexOf(QLatin1Char('\n')));
}

void readRoot(const QString& folder, CommandLine& line) {
  const QFileInfo info(folder);
  if (!info.isDir()) {
    line.error = QStringLiteral("--root: \"%1\" is not a folder").arg(folder);
    return;
  }
  const QString path = info.canonicalFilePath();
  line.root = path == QLatin1String("/") ? std::string() : fromQString(path);
}

}  // namespace

CommandLine parseCommandLine(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Settings of the monitoring client."));
  const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")},
                                QStringLiteral("Show this help."));
  const QCommandLineOption version(QStringList{QStringLiteral("v"), QStringLiteral("version")},
                                   QStringLiteral("Show the version."));
  const QCommandLineOption root(
      QStringLiteral("root"),
      QStringLiteral("Look for the client's files below this folder, whether there are any or not."),
      QStringLiteral("folder"));
  const QCommandLineOption tab(QStringLiteral("tab"), QStringLiteral("Show this tab first."),
                               QStringLiteral("name"));
  const QCommandLineOption screenshots(
      QStringLiteral("screenshots"),
      QStringLiteral(
          "Write a picture of every tab (or of the one named by --tab) into this folder, then exit."),
      QStringLiteral("folder"));
  const QCommandLineOption appearance(QStringLiteral("appearance"),
                                      QStringLiteral("How to look: system (the default), light or dark."),
                                      QStringLiteral("name"), QStringLiteral("system"));
  parser.addPositionalArgument(QStringLiteral("folder"),
                               QStringLiteral("Open the client that this folder holds."));
  parser.addOptions({help, version, root, tab, screenshots, appearance});

  CommandLine line;
  if (!parser.parse(arguments)) {
    line.error = parser.errorText();
  } else if (parser.isSet(help)) {
    line.output = helpOf(parser);
  } else if (parser.isSet(version)) {
    line.output = QStringLiteral("corvane-pane " CORVANE_VERSION "\n");
  } else if (const QStringList folders = parser.positionalArguments(); !folders.isEmpty()) {
    line.folder = folders.constFirst();
    if (folders.size() > 1 || parser.isSet(root))
      line.error = QStringLiteral("Unexpected argument \"%1\".").arg(folders.constLast());
  }
  if (!line.opensPane()) return line;

  line.tab = parser.value(tab);
  line.screenshots = parser.value(screenshots);
  if (parser.isSet(screenshots) && !QFileInfo(line.screenshots).isDir()) {
    line.error = QStringLiteral("--screenshots: \"%1\" is not a folder").arg(line.screenshots);
  }
  if (const auto named = appearanceNamed(parser.value(appearance))) {
    line.appearance = *named;
  } else {
    line.error =
        QStringLiteral("--appearance: \"%1\" is none of system, light, dark").arg(parser.value(appearance));
  }
  if (parser.isSet(root)) readRoot(parser.value(root), line);
  return line;
}

}  // namespace corvane::qt

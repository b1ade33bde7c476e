// The trees that the user opened last, the newest first, in a file of their own state. Every pane of the user
// reads and writes the same file.
#pragma once

#include <QString>
#include <QStringList>

namespace corvane::qt {

class RecentTrees {
 public:
  /// How many are kept.
  static constexpr int kMost = 8;

  /// With an empty path nothing is kept.
  explicit RecentTrees(QString file = usualFile()) : file_(std::move(file)) {}

  [[nodiscard]] QStringList list() const;
  /// Puts the folder, a path without links, before the others.
  void add(const QString& folder);
  void clear();

  /// In the folder for state of the user's home. Empty where that is not the home of whoever the pane runs
  /// as: a pane of root must not write into a folder of somebody else.
  [[nodiscard]] static QString usualFile();

 private:
  void write(const QStringList& folders);

  QString file_;
};

}  // namespace corvane::qt

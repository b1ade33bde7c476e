// Offers every edit of a line edit to somebody who may refuse or replace it. What is refused is taken out
// again before it is painted; the caret and the selection stay where they were. A child of the line edit.
#pragma once

#include <QLineEdit>
#include <functional>
#include <optional>

namespace corvane::qt {

class KeystrokeGuard final : public QObject {
  Q_OBJECT

 public:
  /// Answers with the text that is to stand in the field now; nothing refuses the edit.
  using Check = std::function<std::optional<QString>(const QString& proposed)>;
  KeystrokeGuard(QLineEdit& edit, Check check);

  /// Sets a text that is not the user's.
  void setText(const QString& text);

 private:
  void offer(const QString& proposed);
  void restore();
  void remember();

  /// What stood in the field before the edit that is being offered.
  struct Before {
    QString text;
    int caret = 0;
    int selectionStart = -1;
    int selectionLength = 0;
  };

  QLineEdit& edit_;
  Check check_;
  Before before_;
};

}  // namespace corvane::qt

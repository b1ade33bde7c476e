// The panel that chooses a file or a folder of a tree: the toolkit's own, since no desktop's can be kept
// inside of a folder. It shows and takes paths as the client knows them, and chooses nothing that lies
// outside, links included.
#pragma once

#include <QFileDialog>
#include <string>

#include "platform/Dialogs.h"

class QLabel;
class QLineEdit;

namespace corvane::qt {

class FittedLabel;

/// What the panel of the description asks for: "Choose a file".
[[nodiscard]] QString panelTitle(const OpenPanelDescription& description);

class TreeFilePanel final : public QFileDialog {
  Q_OBJECT

 public:
  /// `rootPrefix` is not empty. `last` is where to begin when the description names no folder: where the
  /// panel before was left.
  TreeFilePanel(const std::string& rootPrefix, const OpenPanelDescription& description, const QString& last,
                QWidget* window);

  /// The folder that is shown, on this computer.
  [[nodiscard]] const QString& place() const { return place_; }

  /// What was chosen when the panel ended.
  [[nodiscard]] const QStringList& chosen() const { return chosen_; }

 protected:
  void accept() override;

 private:
  /// The folder to begin in: the wanted one, or what is left of it inside of the tree.
  [[nodiscard]] QString beginning(const QString& wanted) const;
  /// Whether the path leads to something inside of the tree, whatever links are on the way.
  [[nodiscard]] bool isInside(const QString& path) const;
  /// A path that was typed, as the client knows it, becomes the one on this computer.
  [[nodiscard]] QString onDisk(const QString& typed) const;
  /// Whether what was typed can be chosen.
  void offerTyped(const QString& typed);
  /// What is selected or typed, as paths of this computer.
  [[nodiscard]] QStringList wanted() const;
  void selectNothing();
  void enter(const QString& folder);
  void showPlace();
  void refuse(const QString& path);

  QString root_;
  QString place_;  // the last folder inside
  QStringList chosen_;
  FittedLabel* placeLabel_;
  QLabel* refusal_;
  QLineEdit* name_ = nullptr;
};

}  // namespace corvane::qt

// The window of a pane that has no tree yet: what can be opened here, "Open Folder…", the mounted disks that
// hold a client, and the trees that were opened last. It opens nothing itself: it says what was chosen.
#pragma once

#include <QStringList>
#include <QWidget>
#include <memory>

class QBoxLayout;
namespace Ui {
class StartPage;
}

namespace corvane::qt {

class StartPage final : public QWidget {
  Q_OBJECT

 public:
  /// Folders by their paths. What is in both lists stands among the disks alone.
  StartPage(const QStringList& disks, const QStringList& recents);
  ~StartPage() override;

  /// Says why what was chosen last is not opened; an empty text says nothing.
  void showRefusal(const QString& reason);

 signals:
  void chosen(const QString& folder);
  void wantsFolder();
  void wantsNoRecents();

 private:
  /// The Tab key comes to them after `before`; the last one of them is answered.
  QWidget* addTrees(const QStringList& folders, QBoxLayout& list, QWidget* before);
  void clearRecents();

  std::unique_ptr<Ui::StartPage> ui_;
};

}  // namespace corvane::qt

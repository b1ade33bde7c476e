// The page of the Plugins tab: the outline of the plug-ins and their settings fills it, below a
// field that narrows it.
#pragma once

#include <QWidget>
#include <memory>

#include "plugins/PluginsTabView.h"

namespace Ui {
class PluginsTabPage;
}

namespace corvane::qt {

class PluginsTabPage final : public QWidget {
  Q_OBJECT

 public:
  /// The controls must live longer than the page.
  explicit PluginsTabPage(PluginsTabView& view, QWidget* parent = nullptr);
  ~PluginsTabPage() override;

 private:
  /// The field above the tree, which is the window's own.
  void addFinding(OutlineView& outline);

  std::unique_ptr<Ui::PluginsTabPage> ui_;
};

}  // namespace corvane::qt

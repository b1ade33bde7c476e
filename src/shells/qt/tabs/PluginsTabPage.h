// The page of the Plugins tab: the outline of the plug-ins and their settings fills it.
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
  std::unique_ptr<Ui::PluginsTabPage> ui_;
};

}  // namespace corvane::qt

// The page of the Configuration tab: its widgets in their layout, each bound to the control of the same name.
#pragma once

#include <QWidget>
#include <memory>

#include "configuration/ConfigurationTabView.h"

namespace Ui {
class ConfigurationTabPage;
}

namespace corvane::qt {

class ConfigurationTabPage final : public QWidget {
  Q_OBJECT

 public:
  /// The controls must live longer than the page.
  explicit ConfigurationTabPage(ConfigurationTabView& view, QWidget* parent = nullptr);
  ~ConfigurationTabPage() override;

 private:
  std::unique_ptr<Ui::ConfigurationTabPage> ui_;
};

}  // namespace corvane::qt

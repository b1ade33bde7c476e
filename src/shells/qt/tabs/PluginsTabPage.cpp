#include "tabs/PluginsTabPage.h"

#include "Fonts.h"
#include "binders/LabelBinder.h"
#include "binders/OutlineViewBinder.h"
#include "ui_PluginsTabPage.h"

namespace corvane::qt {

PluginsTabPage::PluginsTabPage(PluginsTabView& view, QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::PluginsTabPage>()) {
  ui_->setupUi(this);
  scaleToFont(*this);
  new LabelBinder(view.pluginsLabel, *ui_->pluginsLabel);
  new OutlineViewBinder(view.pluginsTable, *ui_->pluginsTable);
}

PluginsTabPage::~PluginsTabPage() = default;

}  // namespace corvane::qt

#include "tabs/PluginsTabPage.h"

#include "binders/LabelBinder.h"
#include "binders/OutlineViewBinder.h"
#include "ui_PluginsTabPage.h"

namespace corvane::qt {

PluginsTabPage::PluginsTabPage(PluginsTabView& view, const SheetHost& sheets, QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::PluginsTabPage>()) {
  ui_->setupUi(this);
  new LabelBinder(view.pluginsLabel, *ui_->pluginsLabel);
  (new OutlineViewBinder(view.pluginsTable, *ui_->pluginsTable))->keepRowsBehind(sheets);
}

PluginsTabPage::~PluginsTabPage() = default;

}  // namespace corvane::qt

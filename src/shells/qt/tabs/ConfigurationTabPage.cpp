#include "tabs/ConfigurationTabPage.h"

#include "Fonts.h"
#include "binders/ButtonBinder.h"
#include "binders/LabelBinder.h"
#include "binders/TextFieldBinder.h"
#include "ui_ConfigurationTabPage.h"
#include "widgets/CopyMenu.h"

namespace corvane::qt {

ConfigurationTabPage::ConfigurationTabPage(ConfigurationTabView& view, QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::ConfigurationTabPage>()) {
  ui_->setupUi(this);
  scaleToFont(*this);
  makeHint(*ui_->removeClientField);
  for (QWidget* line : {ui_->settingsLine, ui_->uninstallLine}) line->setForegroundRole(QPalette::Mid);
  for (QLabel* date : {ui_->lastRunClientField, ui_->lastRunUpdaterField})
    offerCopy(*date, [date] { return date->text(); });
  new LabelBinder(view.lastRunClientLabel, *ui_->lastRunClientLabel);
  new LabelBinder(view.lastRunClientField, *ui_->lastRunClientField);
  new ButtonBinder(view.runClientButton, *ui_->runClientButton);
  ui_->runClientButton->setMinimumWidth(ui_->runClientButton->sizeHint().width());  // whatever it says later
  new LabelBinder(view.lastRunUpdaterLabel, *ui_->lastRunUpdaterLabel);
  new LabelBinder(view.lastRunUpdaterField, *ui_->lastRunUpdaterField);
  new ButtonBinder(view.updateClientNowButton, *ui_->updateClientNowButton);
  new LabelBinder(view.runIntervalLabel, *ui_->runIntervalLabel);
  new TextFieldBinder(view.runIntervalTextField, *ui_->runIntervalTextField);
  new LabelBinder(view.runIntervalUnit, *ui_->runIntervalUnit);
  new LabelBinder(view.clientGroupLabel, *ui_->clientGroupLabel);
  new TextFieldBinder(view.clientGroupTextField, *ui_->clientGroupTextField);
  new ButtonBinder(view.uninstallButton, *ui_->uninstallButton);
  new LabelBinder(view.removeClientField, *ui_->removeClientField);
}

ConfigurationTabPage::~ConfigurationTabPage() = default;

}  // namespace corvane::qt

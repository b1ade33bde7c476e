#include "tabs/OptionsTabPage.h"

#include <QEvent>
#include <QScrollBar>

#include "Fonts.h"
#include "Text.h"
#include "accessibility/Spoken.h"
#include "binders/ButtonBinder.h"
#include "binders/LabelBinder.h"
#include "binders/PopUpButtonBinder.h"
#include "binders/SheetBinder.h"
#include "binders/TableViewBinder.h"
#include "binders/TextFieldBinder.h"
#include "ui_OptionsTabPage.h"
#include "ui_TimeMachineSheet.h"
#include "widgets/LabelButton.h"
#include "widgets/SheetHost.h"

namespace corvane::qt {
namespace {

void setBold(QWidget& widget) {
  QFont font = widget.font();
  font.setBold(true);
  widget.setFont(font);
}

}  // namespace

OptionsTabPage::OptionsTabPage(OptionsTabView& view, SheetHost& sheets, QWidget* parent)
    : QWidget(parent),
      view_(view),
      ui_(std::make_unique<Ui::OptionsTabPage>()),
      sheetUi_(std::make_unique<Ui::TimeMachineSheet>()) {
  ui_->setupUi(this);
  scaleToFont(*this);
  ui_->volumeOptionsBox->setBackgroundRole(QPalette::Base);
  ui_->volumeOptionsBox->raise();
  ui_->volumeOptionMountPathButton->setAlignment(Qt::AlignRight);
  for (LabelButton* stored : {ui_->volumeOptionMountPathButton, ui_->volumeOptionPathButton})
    stored->setForegroundRole(QPalette::Text);  // to be read also while it may not be changed
  ui_->volumeOptionPathButton->showAsPath();
  setSpokenName(*ui_->volumeOptionsBox, toQString(view_.volumeOptionsBox.accessibleName()));
  setBold(*ui_->volumeTextField);
  makeHint(*ui_->minutesTextField);
  makeHint(*ui_->percentageTextField);
  bindVolumes();
  bindRows();
  bindSheet(sheets);
  view_.volumeOptionsBox.onChange = [this] { placeBox(); };
  ui_->volumesTable->installEventFilter(this);
  ui_->volumesTable->verticalScrollBar()->installEventFilter(this);
}

OptionsTabPage::~OptionsTabPage() {
  view_.volumeOptionsBox.onChange = nullptr;
  delete sheet_;  // its controls may go with the page's
}

void OptionsTabPage::bindVolumes() {
  new LabelBinder(view_.defaultTextField, *ui_->defaultTextField);
  new TableViewBinder(view_.volumesTable, *ui_->volumesTable);
  new ButtonBinder(view_.showAllVolumeTypesButton, *ui_->showAllVolumeTypesButton);
  new ButtonBinder(view_.purgeButton, *ui_->purgeButton);

  new LabelBinder(view_.volumeTextField, *ui_->volumeTextField);
  new ButtonBinder(view_.volumeOptionMountPathButton, *ui_->volumeOptionMountPathButton);
  new ButtonBinder(view_.volumeOptionPathButton, *ui_->volumeOptionPathButton);
  new LabelBinder(view_.warnAfterTextField, *ui_->warnAfterTextField);
  new ButtonBinder(view_.monitorPresenceCheckbox, *ui_->monitorPresenceCheckbox);
  new ButtonBinder(view_.volumeOptionWarnAfterButton, *ui_->volumeOptionWarnAfterButton);
  new TextFieldBinder(view_.monitorPresenceThresholdTextField, *ui_->monitorPresenceThresholdTextField);
  new ButtonBinder(view_.volumeOptionMinutesButton, *ui_->volumeOptionMinutesButton);
  new LabelBinder(view_.minutesTextField, *ui_->minutesTextField);
  new LabelBinder(view_.warnAtTextField, *ui_->warnAtTextField);
  new ButtonBinder(view_.monitorUsageCheckbox, *ui_->monitorUsageCheckbox);
  new ButtonBinder(view_.volumeOptionWarnAtButton, *ui_->volumeOptionWarnAtButton);
  new TextFieldBinder(view_.monitorUsageThresholdTextField, *ui_->monitorUsageThresholdTextField);
  new ButtonBinder(view_.volumeOptionPercentageButton, *ui_->volumeOptionPercentageButton);
  new LabelBinder(view_.percentageTextField, *ui_->percentageTextField);
}

void OptionsTabPage::bindRows() {
  new LabelBinder(view_.bootVolumeLabel, *ui_->bootVolumeLabel);
  new ButtonBinder(view_.bootVolumeWarningCheckbox, *ui_->bootVolumeWarningCheckbox);
  new TextFieldBinder(view_.bootVolumeFullTextField, *ui_->bootVolumeFullTextField);
  new ButtonBinder(view_.bootVolumeWarningTrailingButton, *ui_->bootVolumeWarningTrailingButton);
  new LabelBinder(view_.timeMachineLabel, *ui_->timeMachineLabel);
  new ButtonBinder(view_.timeMachineWarningCheckbox, *ui_->timeMachineWarningCheckbox);
  new TextFieldBinder(view_.timeMachineInactiveTextField, *ui_->timeMachineInactiveTextField);
  new ButtonBinder(view_.timeMachineWarningTrailingButton, *ui_->timeMachineWarningTrailingButton);
  new ButtonBinder(view_.advancedButton, *ui_->advancedButton);
  new LabelBinder(view_.automountLabel, *ui_->automountLabel);
  new ButtonBinder(view_.automountCheckbox, *ui_->automountCheckbox);
}

void OptionsTabPage::bindSheet(SheetHost& sheets) {
  sheet_ = new QWidget;
  sheetUi_->setupUi(sheet_);
  scaleToFont(*sheet_);
  setBold(*sheetUi_->sheetTitle);
  sheetUi_->sheetTitle->setText(toQString(view_.timeMachineAdvancedWindow.title()));
  new SheetBinder(view_.timeMachineAdvancedWindow, *sheet_, sheets);
  new LabelBinder(view_.manualRunLabel, *sheetUi_->manualRunLabel);
  new TextFieldBinder(view_.manuallyTriggerTextField, *sheetUi_->manuallyTriggerTextField);
  new LabelBinder(view_.manualRunDaysLabel, *sheetUi_->manualRunDaysLabel);
  new LabelBinder(view_.timeOfDayLabel, *sheetUi_->timeOfDayLabel);
  new TextFieldBinder(view_.timeOfDayTextField, *sheetUi_->timeOfDayTextField);
  new PopUpButtonBinder(view_.amPmButton, *sheetUi_->amPmButton);
  new ButtonBinder(view_.timeMachineRemovalWarning, *sheetUi_->timeMachineRemovalWarning);
  new ButtonBinder(view_.sheetCancelButton, *sheetUi_->sheetCancelButton);
  new ButtonBinder(view_.sheetOkButton, *sheetUi_->sheetOkButton);
}

// The core places the box at fixed distances from the edges of the table's scroll view; these are kept at
// whatever size the table has here. A scroll bar stays in reach beside the box.
void OptionsTabPage::placeBox() {
  const Rect& around = view_.volumesScrollView.frame();
  const Rect& box = view_.volumeOptionsBox.frame();
  const int left = toPixels(box.x - around.x);
  const int right = toPixels(around.x + around.width - (box.x + box.width));
  const int bottom = toPixels(box.y - around.y);
  // The header stands inside the frame here; the line below it stays in sight.
  const int top = toPixels(around.y + around.height - (box.y + box.height)) + ui_->volumesTable->frameWidth();
  const QScrollBar* scrollBar = ui_->volumesTable->verticalScrollBar();
  const int reserved = scrollBar->isVisibleTo(ui_->volumesTable) ? scrollBar->sizeHint().width() : 0;
  // All of it is to be seen, however high the letters are.
  ui_->volumesTable->setMinimumHeight(ui_->volumeOptionsBox->minimumSizeHint().height() + top + bottom);
  ui_->volumeOptionsBox->setGeometry(
      ui_->volumesTable->geometry().adjusted(left, top, -right - reserved, -bottom));
}

bool OptionsTabPage::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::Resize:
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
      placeBox();
      break;
    default:
      break;
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace corvane::qt

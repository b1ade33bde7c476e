#include "tabs/PluginsTabPage.h"

#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QVBoxLayout>

#include "Fonts.h"
#include "binders/LabelBinder.h"
#include "binders/OutlineFinder.h"
#include "binders/OutlineViewBinder.h"
#include "ui_PluginsTabPage.h"

namespace corvane::qt {
namespace {

constexpr int kFieldWidth = 180;  // points

}  // namespace

PluginsTabPage::PluginsTabPage(PluginsTabView& view, QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::PluginsTabPage>()) {
  ui_->setupUi(this);
  scaleToFont(*this);
  new LabelBinder(view.pluginsLabel, *ui_->pluginsLabel);
  new OutlineViewBinder(view.pluginsTable, *ui_->pluginsTable);
  addFinding(view.pluginsTable);
}

PluginsTabPage::~PluginsTabPage() = default;

void PluginsTabPage::addFinding(OutlineView& outline) {
  auto* field = new QLineEdit;
  field->setObjectName(QStringLiteral("findField"));
  field->setFixedWidth(toPixels(kFieldWidth));
  field->setClearButtonEnabled(true);
  field->setPlaceholderText(QStringLiteral("Find"));
  field->setAccessibleName(QStringLiteral("Find plugins and settings"));
  field->setToolTip(QStringLiteral("By titles, hints and file names (Ctrl-F)"));
  ui_->headLayout->addWidget(field);
  setTabOrder(field, ui_->pluginsTable);
  auto* nothing = new QLabel(QStringLiteral("Nothing contains this text."));
  nothing->setObjectName(QStringLiteral("nothingFound"));
  auto* place = new QVBoxLayout(ui_->pluginsTable->viewport());
  place->addWidget(nothing, 0, Qt::AlignCenter);
  new OutlineFinder(outline, *ui_->pluginsTable, *field, *nothing);
  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, field, [field] {
    field->setFocus(Qt::ShortcutFocusReason);
    field->selectAll();
  });
}

}  // namespace corvane::qt

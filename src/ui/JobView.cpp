#include "ui/JobView.h"

#include <QButtonGroup>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>
#include <QVBoxLayout>

#include "ui/ContentsView.h"
#include "ui/JobOptionsView.h"
#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

JobView::JobView(const Context& context, QWidget* parent)
    : Page(context, parent),
      vsContents_(new ContentsView(context, this)),
      options_(new JobOptionsView(context, this)) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(nameRow());
  column->addWidget(itemTools());
  column->addWidget(vsContents_, 1);
  column->addWidget(options_);
  column->addWidget(estimateRow());
  connect(vsContents_, &ContentsView::filesDropped, this, &JobView::doDrop);
  connect(vsContents_, &ContentsView::menuWanted, this, &JobView::doShowMenu);
  connect(vsContents_, &ContentsView::deleteWanted, this, [this] {
    if (PBDeleteFile_->isEnabled()) act([this] { main().contentsEditing.doDeleteKey(); });
  });
}

bool JobView::mayEdit() const {
  return mayBegin(Command::AddItems, main().state);
}

QWidget* JobView::nameRow() {
  auto* whole = new QWidget(this);
  auto* row = new QHBoxLayout(whole);
  row->setContentsMargins(0, 0, 0, 0);
  txJobName_ = new QLineEdit(whole);
  txJobName_->setObjectName(QStringLiteral("txJobName"));
  auto* caption = new QLabel(tr("&Job name:"), whole);
  caption->setBuddy(txJobName_);
  row->addWidget(caption);
  row->addWidget(txJobName_, 1);
  connect(txJobName_, &QLineEdit::textEdited, this, [this](const QString& text) {
    act([this, text] { main().jobControls.setJobName(fromQt(text)); });
  });
  optBackupType_ = new QButtonGroup(this);
  const QString types[] = {tr("F&ull"), tr("Diff&erential")};
  const QString explanations[] = {tr("Everything that the job names"),
                                  tr("Only what is new or has changed since the last backup")};
  for (int type = 0; type < 2; ++type) {
    auto* option = new QRadioButton(types[type], whole);
    option->setObjectName(QStringLiteral("optBackupType%1").arg(type));
    option->setToolTip(explanations[type]);
    optBackupType_->addButton(option, type);
    row->addWidget(option);
  }
  connect(optBackupType_, &QButtonGroup::idClicked, this,
          [this](int type) { act([this, type] { main().jobControls.setBackupType(type); }); });
  row->addSpacing(fontMetrics().averageCharWidth() * 2);
  const auto addButton = [this, whole, row](const char* name, const QString& text,
                                            const QString& icon, const QString& toolTip,
                                            Wish wish) {
    auto* button = new QPushButton(Theme::icon(icon), text, whole);
    button->setObjectName(QLatin1String(name));
    button->setToolTip(toolTip);
    row->addWidget(button);
    connect(button, &QPushButton::clicked, this, [this, wish = std::move(wish)] { act(wish); });
    return button;
  };
  PBNewJob_ = addButton("PBNewJob", tr("New"), QStringLiteral("document-new"),
                        tr("Begins a new job (Ctrl+N)"), [this] { main().doNewJob(); });
  connect(PBNewJob_, &QPushButton::clicked, this, &JobView::doOfferName);
  PBOpenJob_ = addButton("PBOpenJob", tr("Open"), QStringLiteral("document-open"),
                         tr("Opens a job from its file (Ctrl+O)"), [this] { main().doOpenJob(); });
  PBSaveJob_ = addButton("PBSaveJob", tr("Save"), QStringLiteral("document-save"),
                         tr("Saves the job to a file (Ctrl+S)"), [this] { main().doSaveJob(); });
  return whole;
}

QToolButton* JobView::addTool(const char* name, const QString& text, const QString& icon,
                              const QString& toolTip, Wish wish) {
  auto* button = new QToolButton(this);
  button->setObjectName(QLatin1String(name));
  button->setIcon(Theme::icon(icon));
  button->setText(text);
  button->setToolTip(toolTip);
  button->setAccessibleName(text);
  button->setFocusPolicy(Qt::TabFocus);
  button->setAutoRaise(true);
  connect(button, &QToolButton::clicked, this, [this, wish = std::move(wish)] { act(wish); });
  return button;
}

QWidget* JobView::itemTools() {
  auto* whole = new QWidget(this);
  auto* row = new QHBoxLayout(whole);
  row->setContentsMargins(0, 0, 0, 0);
  ContentsEditing& editing = main().contentsEditing;
  PBAddFiles_ = addTool("PBAddFiles", tr("&Select Item..."), QStringLiteral("list-add"),
                        tr("Picks files and folders"), [this] { doPickItems(); });
  pbCreateItem_ = addTool("pbCreateItem", tr("Create Ite&m"), QStringLiteral("document-new"),
                          tr("Makes an item for a path that need not be there now"),
                          [this] { main().pbCreateItem(); });
  pbImportM3U_ =
      addTool("pbImportM3U", tr("Import M3U"), QStringLiteral("document-import"),
              tr("Adds the files that a play list names"), [this] { main().doImportM3U(); });
  for (QToolButton* button : {PBAddFiles_, pbCreateItem_, pbImportM3U_}) {
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    row->addWidget(button);
  }
  row->addStretch();
  PBRename_ = addTool("PBRename", tr("Rename"), QStringLiteral("edit-rename"),
                      tr("Changes the name on disc (F2)"), [this] { vsContents_->doEditName(); });
  PBDeleteFile_ = addTool("PBDeleteFile", tr("Delete"), QStringLiteral("edit-delete"),
                          tr("Takes the item out of the job (Del); the source stays as it is"),
                          [&editing] { editing.doDeleteItem(); });
  PBMoveUp_ = addTool("PBMoveUp", tr("Move up"), QStringLiteral("go-up"), tr("Moves the item up"),
                      [&editing] { editing.doMoveUp(); });
  PBMoveDown_ = addTool("PBMoveDown", tr("Move down"), QStringLiteral("go-down"),
                        tr("Moves the item down"), [&editing] { editing.doMoveDown(); });
  PBClearAllFiles_ =
      addTool("PBClearAllFiles", tr("Clear all"), QStringLiteral("edit-clear-all"),
              tr("Takes all items out of the job"), [&editing] { editing.doClearAllFiles(); });
  for (QToolButton* button : {PBRename_, PBDeleteFile_, PBMoveUp_, PBMoveDown_, PBClearAllFiles_})
    row->addWidget(button);
  return whole;
}

QWidget* JobView::estimateRow() {
  auto* whole = new QWidget(this);
  auto* row = new QHBoxLayout(whole);
  row->setContentsMargins(0, 0, 0, 0);
  EstimateDisc_ = new QLabel(whole);
  EstimateDisc_->setObjectName(QStringLiteral("EstimateDisc"));
  EstimateDisc_->setTextFormat(Qt::PlainText);
  QFont large = EstimateDisc_->font();
  large.setPointSizeF(large.pointSizeF() * 1.2);
  large.setBold(true);
  EstimateDisc_->setFont(large);
  pbEstimate_ = new QPushButton(tr("Es&timate"), whole);
  pbEstimate_->setObjectName(QStringLiteral("pbEstimate"));
  pbEstimate_->setToolTip(tr("Tells how many discs the job needs; nothing is burned"));
  pbEstimateInfo_ = new QPushButton(tr("Detai&ls..."), whole);
  pbEstimateInfo_->setObjectName(QStringLiteral("pbEstimateInfo"));
  row->addWidget(EstimateDisc_, 1);
  row->addWidget(pbEstimateInfo_);
  row->addWidget(pbEstimate_);
  connect(pbEstimate_, &QPushButton::clicked, this, &JobView::doEstimate);
  connect(pbEstimateInfo_, &QPushButton::clicked, this, [this] {
    if (mayEdit() && !main().state.ActionBusy) act([this] { main().estimate.pbEstimateInfo(); });
  });
  return whole;
}

void JobView::doPickItems() {
  main().PBAddFiles();
  // What was picked is looked at next.
  vsContents_->setFocus();
}

/// A new job begins with its name, there to be typed over.
void JobView::doOfferName() {
  const Job& job = main().job;
  if (job.Modified || job.hasItems() || job.txJobName != NewJobName) return;
  txJobName_->setFocus();
  txJobName_->selectAll();
}

void JobView::showEvent(QShowEvent* event) {
  Page::showEvent(event);
  doOfferName();
}

void JobView::doDrawName() {
  const QString name = toQt(main().job.txJobName);
  if (txJobName_->text() == name) return;
  // A refused character goes; the place of the typing stays.
  const auto fromEnd = txJobName_->text().size() - txJobName_->cursorPosition();
  txJobName_->setText(name);
  txJobName_->setCursorPosition(static_cast<int>(name.size() - fromEnd));
  if (isVisible()) doOfferName();
}

void JobView::doEstimate() {
  if (!mayEdit() || main().state.ActionBusy) return;
  act([this] { main().estimate.pbEstimate(); });
}

void JobView::doDrop(const std::vector<std::string>& paths) {
  // A drop may come from outside while a dialog stands over the page.
  if (!mayEdit() || main().state.ActionBusy || main().state.IgnoreEvents) return;
  act([this, &paths] {
    const FlagScope ignore(main().state.IgnoreEvents);
    main().addItems.doDropItems(paths);
  });
}

void JobView::doShowMenu(const QPoint& at) {
  const JobCommands commands = main().contentsEditing.doUpdateJobCommands();
  QMenu menu(this);
  menu.setObjectName(QStringLiteral("mnuBackup"));
  const auto add = [this, &menu](const char* name, const QString& text, bool enabled, Wish wish) {
    QAction* action = menu.addAction(text);
    action->setObjectName(QLatin1String(name));
    action->setEnabled(enabled);
    connect(action, &QAction::triggered, this, [this, wish = std::move(wish)] { act(wish); });
  };
  const bool edit = mayEdit();
  add("mnSelectItem", tr("Select Item..."), edit, [this] { doPickItems(); });
  add("mnCreateItem", tr("Create Item"), edit, [this] { main().pbCreateItem(); });
  add("mnImportM3U", tr("Import M3U file list..."), edit, [this] { main().doImportM3U(); });
  menu.addSeparator();
  add("mnSaveJob", tr("Save Job..."), PBSaveJob_->isEnabled(), [this] { main().doSaveJob(); });
  add("mnRename", tr("Rename\tF2"), PBRename_->isEnabled(), [this] { vsContents_->doEditName(); });
  add("mnDeleteItem", tr("Delete Item"), PBDeleteFile_->isEnabled(),
      [this] { main().contentsEditing.doDeleteItem(); });
  add("mnClearAll", tr("Clear All"), PBClearAllFiles_->isEnabled(),
      [this] { main().contentsEditing.doClearAllFiles(); });
  add("mnRandomize", tr("Randomize Items Order"), edit && commands.randomize,
      [this] { main().contentsEditing.doRandomize(); });
  menu.exec(at);
}

void JobView::refresh() {
  const Job& job = main().job;
  const bool edit = mayEdit();
  const JobCommands commands = main().contentsEditing.doUpdateJobCommands();
  doDrawName();
  optBackupType_->button(job.optBackupType)->setChecked(true);
  vsContents_->refresh();
  options_->refresh();
  PBNewJob_->setEnabled(mayBegin(Command::NewJob, main().state));
  PBOpenJob_->setEnabled(mayBegin(Command::OpenJob, main().state));
  PBSaveJob_->setEnabled(edit && commands.items);
  for (QToolButton* button : {PBAddFiles_, pbCreateItem_, pbImportM3U_}) button->setEnabled(edit);
  for (QToolButton* button : {PBRename_, PBDeleteFile_, PBClearAllFiles_})
    button->setEnabled(edit && commands.items);
  PBMoveUp_->setEnabled(edit && commands.moveUp);
  PBMoveDown_->setEnabled(edit && commands.moveDown);
  pbEstimate_->setEnabled(edit && commands.items);
  EstimateDisc_->setText(job.estimateShown ? toQt(main().estimate.EstimateDisc) : QString());
  pbEstimateInfo_->setVisible(job.estimateShown);
}

}  // namespace korvenal::ui

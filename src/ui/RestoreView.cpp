#include "ui/RestoreView.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QToolButton>

#include "platform/Text.h"
#include "ui/DialogParts.h"
#include "ui/RestoreOptionsView.h"
#include "ui/RestoreTreeView.h"
#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

namespace {

QHBoxLayout* rowIn(QWidget* parent) {
  auto* row = new QHBoxLayout(parent);
  row->setContentsMargins(0, 0, 0, 0);
  return row;
}

/// Facts of an index are foreign text: no markup, and never wider than the page.
QLabel* plainLabel(const QString& name, QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  return label;
}

}  // namespace

RestoreView::RestoreView(const Context& context, QWidget* parent) : Page(context, parent) {
  tree_ = new RestoreTreeView(context, this);
  options_ = new RestoreOptionsView(context, this);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(makeHead());
  column->addWidget(makeIndexLine());
  column->addWidget(makeTools());
  column->addWidget(tree_, 1);
  column->addWidget(makeFoot());
  column->addWidget(options_);
  makeActions();
  connect(tree_, &RestoreTreeView::typed, this, [this](const QString& text) {
    txFind_->setFocus();
    txFind_->setText(text);
    doFindTyped(text);
  });
  setTabOrder(pbFindNext_, tree_);
}

QWidget* RestoreView::makeHead() {
  auto* whole = new QWidget(this);
  auto* row = rowIn(whole);
  auto* hint = new QLabel(tr("Load the first backup disc into drive to read backup index, then "
                             "select the files to be restored."),
                          whole);
  hint->setWordWrap(true);
  pbLoaddisc_ = makeButton("pbLoaddisc", tr("&Read Index"), QStringLiteral("media-optical"),
                           tr("Reads the index from the first disc of a backup"));
  openFile_ =
      makeButton("openIndexFile", tr("Open In&dex File..."), QStringLiteral("document-open"),
                 tr("Opens a backup index that was kept as a file"));
  row->addWidget(hint, 1);
  row->addWidget(pbLoaddisc_);
  row->addWidget(openFile_);
  connect(pbLoaddisc_, &QPushButton::clicked, this, &RestoreView::doLoadDisc);
  connect(openFile_, &QPushButton::clicked, this, &RestoreView::doOpenFile);
  return whole;
}

QWidget* RestoreView::makeIndexLine() {
  auto* whole = new QWidget(this);
  auto* column = new QVBoxLayout(whole);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(2);
  auto* row = new QHBoxLayout;
  vsBackupIndex_ = plainLabel(QStringLiteral("vsBackupIndex"), whole);
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 1.2);
  large.setBold(true);
  vsBackupIndex_->setFont(large);
  bar_ = new QProgressBar(whole);
  bar_->setObjectName(QStringLiteral("vsBackupIndexBar"));
  bar_->setAccessibleName(tr("Progress of reading the index"));
  bar_->setTextVisible(false);
  bar_->setMaximumHeight(fontMetrics().height());
  QSizePolicy kept = bar_->sizePolicy();
  kept.setRetainSizeWhenHidden(true);
  bar_->setSizePolicy(kept);
  row->addWidget(vsBackupIndex_, 2);
  row->addWidget(bar_, 1);
  column->addLayout(row);
  auto* facts = new QGridLayout;
  facts->setVerticalSpacing(2);
  facts->setColumnStretch(1, 1);
  for (int line = 0; line < static_cast<int>(info_.size()); ++line) {
    QWidget* mark =
        iconLabel(Theme::icon(QStringLiteral("dialog-information")), fontMetrics().height(), whole);
    auto* fact = plainLabel(QStringLiteral("vsBackupInfo%1").arg(line), whole);
    facts->addWidget(mark, line, 0);
    facts->addWidget(fact, line, 1);
    info_[static_cast<std::size_t>(line)] = {mark, fact};
  }
  column->addLayout(facts);
  return whole;
}

QWidget* RestoreView::makeTools() {
  auto* whole = new QWidget(this);
  auto* row = rowIn(whole);
  pbSelectALL_ = makeButton("pbSelectALL", tr("Select A&ll"), QStringLiteral("edit-select-all"),
                            tr("Ticks every item (Ctrl+A)"));
  pbInvertSelection_ =
      makeButton("pbInvertSelection", tr("&Invert"), QStringLiteral("edit-select-invert"),
                 tr("Ticks what is not ticked, and the other way round (Ctrl+I)"));
  pbExpand_ =
      makeButton("pbExpand", tr("&Expand"), QStringLiteral("expand-all"), tr("Opens all folders"));
  pbCollapse_ = makeButton("pbCollapse", tr("&Collapse"), QStringLiteral("collapse-all"),
                           tr("Closes all folders"));
  txFind_ = new QLineEdit(whole);
  txFind_->setObjectName(QStringLiteral("txFind"));
  txFind_->setPlaceholderText(tr("Find a name"));
  txFind_->setAccessibleName(tr("Find a name"));
  txFind_->setToolTip(tr("Finds names as you type (Ctrl+F); Enter goes to the next one"));
  txFind_->setClearButtonEnabled(true);
  txFind_->installEventFilter(this);
  pbFind_ = makeTool("pbFind", tr("Find a name, with or without regard to its case"),
                     QStringLiteral("edit-find"));
  pbFindNext_ = makeTool("pbFindNext", tr("Find Next (F3)"), QStringLiteral("go-down"));
  for (QWidget* part :
       {static_cast<QWidget*>(pbSelectALL_), static_cast<QWidget*>(pbInvertSelection_),
        static_cast<QWidget*>(pbExpand_), static_cast<QWidget*>(pbCollapse_)})
    row->addWidget(part);
  row->addStretch(1);
  row->addWidget(txFind_, 2);
  row->addWidget(pbFind_);
  row->addWidget(pbFindNext_);
  connect(pbSelectALL_, &QPushButton::clicked, this, &RestoreView::doSelectAll);
  connect(pbInvertSelection_, &QPushButton::clicked, this, &RestoreView::doInvert);
  connect(pbExpand_, &QPushButton::clicked, this, &RestoreView::doExpand);
  connect(pbCollapse_, &QPushButton::clicked, this, &RestoreView::doCollapse);
  connect(pbFind_, &QToolButton::clicked, this, &RestoreView::doAskName);
  connect(pbFindNext_, &QToolButton::clicked, this, &RestoreView::doFindNext);
  connect(txFind_, &QLineEdit::textEdited, this, &RestoreView::doFindTyped);
  return whole;
}

QWidget* RestoreView::makeFoot() {
  auto* whole = new QWidget(this);
  auto* row = rowIn(whole);
  totals_ = plainLabel(QStringLiteral("vsBackupInfo2"), whole);
  QFont bold = font();
  bold.setBold(true);
  totals_->setFont(bold);
  missing_ = new QLabel(tr("No matching item found in backup index."), whole);
  missing_->setObjectName(QStringLiteral("findMissing"));
  row->addWidget(totals_, 1);
  row->addWidget(missing_);
  missing_->hide();
  return whole;
}

QPushButton* RestoreView::makeButton(const char* name, const QString& text, const QString& icon,
                                     const QString& toolTip) {
  auto* button = new QPushButton(Theme::icon(icon), text, this);
  button->setObjectName(QLatin1String(name));
  button->setToolTip(toolTip);
  return button;
}

QToolButton* RestoreView::makeTool(const char* name, const QString& text, const QString& icon) {
  auto* button = new QToolButton(this);
  button->setObjectName(QLatin1String(name));
  button->setIcon(Theme::icon(icon));
  button->setToolTip(text);
  button->setAccessibleName(text);
  button->setFocusPolicy(Qt::StrongFocus);
  return button;
}

QAction* RestoreView::addTreeAction(const char* name, const QString& text,
                                    const QKeySequence& shortcut, void (RestoreView::*wish)()) {
  auto* action = new QAction(text, this);
  action->setObjectName(QLatin1String(name));
  action->setShortcut(shortcut);
  action->setShortcutContext(Qt::WidgetShortcut);
  connect(action, &QAction::triggered, this, wish);
  tree_->addAction(action);
  return action;
}

void RestoreView::makeActions() {
  mnSelectall_ = addTreeAction("mnSelectall", tr("Select &All"), QKeySequence::SelectAll,
                               &RestoreView::doSelectAll);
  mnInvertSelect_ = addTreeAction("mnInvertSelect", tr("&Invert Selection"),
                                  QKeySequence(Qt::CTRL | Qt::Key_I), &RestoreView::doInvert);
  mnFind_ = addTreeAction("mnFind", tr("&Find..."), {}, &RestoreView::doAskName);
  mnFindNext_ = addTreeAction("mnFindNext", tr("Find &Next"), QKeySequence::FindNext,
                              &RestoreView::doFindNext);
  // F3 works in the field as well.
  mnFindNext_->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  addAction(mnFindNext_);
  auto* goToFind = new QAction(this);
  goToFind->setShortcut(QKeySequence::Find);
  goToFind->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  connect(goToFind, &QAction::triggered, this, &RestoreView::doGoToFind);
  addAction(goToFind);
}

bool RestoreView::mayChange() const {
  return mayBegin(Command::ChangePage, main().state);
}

void RestoreView::doLoadDisc() {
  act([this] { main().doLoadDisc(); });
  if (main().restorePage.vsRestore.hasData()) tree_->setFocus();
}

void RestoreView::doOpenFile() {
  act([this] { main().indexOpening.doPickIndexFile(); });
  if (main().restorePage.vsRestore.hasData()) tree_->setFocus();
}

void RestoreView::doSelectAll() {
  if (!mayChange()) return;
  act([this] { main().selection.doSelectAllRows(); });
  tree_->setFocus();
}

void RestoreView::doInvert() {
  if (!mayChange()) return;
  act([this] { main().selection.pbInvertSelection(); });
}

void RestoreView::doExpand() {
  if (!mayChange()) return;
  act([this] { main().selection.pbExpand(); });
  tree_->doShowCurrent();
  tree_->setFocus();
}

void RestoreView::doCollapse() {
  if (!mayChange()) return;
  act([this] { main().selection.pbCollapse(); });
  tree_->doShowCurrent();
  tree_->setFocus();
}

void RestoreView::doAskName() {
  if (!mayChange()) return;
  showMissing(false);
  act([this] {
    const bool wasIgnoring = main().state.IgnoreEvents;
    main().state.IgnoreEvents = true;
    frmFind form(main().find, main().restorePage, context().desktop);
    context().desktop.doShowModal(form);
    main().state.IgnoreEvents = wasIgnoring;
  });
  tree_->doShowCurrent();
  tree_->setFocus();
}

void RestoreView::doFindNext() {
  if (!mayChange() || !main().restorePage.pbFindNextEnabled) return;
  act([this] { main().find.doFindNext(); });
  tree_->doShowCurrent();
}

void RestoreView::doFindTyped(const QString& text) {
  const std::string typed = fromQt(text);
  const std::string name(Text::trim(typed));
  bool found = true;
  if (!name.empty() && mayChange()) act([&] { found = main().find.doFindString(name, false); });
  showMissing(!found);
  tree_->doShowCurrent();
}

void RestoreView::doGoToFind() {
  txFind_->setFocus(Qt::ShortcutFocusReason);
  txFind_->selectAll();
}

void RestoreView::showMissing(bool missing) {
  QPalette colors = palette();
  colors.setColor(QPalette::WindowText, Theme::discColor(RunDiscState::Failed, colors));
  missing_->setPalette(colors);
  missing_->setVisible(missing);
}

bool RestoreView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == txFind_ && event->type() == QEvent::KeyPress) {
    switch (static_cast<QKeyEvent*>(event)->key()) {
      case Qt::Key_Return:
      case Qt::Key_Enter:
        doFindNext();
        return true;
      case Qt::Key_Escape:
      case Qt::Key_Down:
        tree_->setFocus();
        return true;
      default:
        break;
    }
  }
  return Page::eventFilter(watched, event);
}

void RestoreView::refreshInfo() {
  const RestorePage& page = main().restorePage;
  vsBackupIndex_->setText(toQt(page.vsBackupIndex));
  bar_->setValue(page.vsBackupIndexBar);
  bar_->setVisible(page.IndexLoading);
  for (std::size_t line = 0; line < info_.size(); ++line) {
    info_[line].mark->setVisible(!page.vsBackupInfo[line].empty());
    info_[line].text->setText(toQt(page.vsBackupInfo[line]));
  }
  totals_->setText(toQt(page.vsBackupInfo[2]));
}

void RestoreView::refresh() {
  const RestorePage& page = main().restorePage;
  refreshInfo();
  const bool atRest = mayChange();
  pbLoaddisc_->setEnabled(atRest);
  openFile_->setEnabled(atRest);
  const bool selectable = atRest && page.selectButtonsEnabled;
  for (QPushButton* button : {pbSelectALL_, pbInvertSelection_, pbExpand_, pbCollapse_})
    button->setEnabled(selectable);
  txFind_->setEnabled(page.selectButtonsEnabled);
  pbFind_->setEnabled(selectable);
  pbFindNext_->setEnabled(atRest && page.pbFindNextEnabled);
  mnSelectall_->setEnabled(selectable);
  mnInvertSelect_->setEnabled(selectable);
  mnFind_->setEnabled(selectable);
  mnFindNext_->setEnabled(atRest && page.pbFindNextEnabled);
  if (!page.selectButtonsEnabled) {
    txFind_->clear();
    missing_->hide();
  } else if (!txFind_->hasFocus() && !page.FindText.empty()) {
    txFind_->setText(toQt(page.FindText));
  }
  tree_->refresh();
  options_->refresh();
}

}  // namespace korvenal::ui

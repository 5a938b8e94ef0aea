#include "ui/RestoreOptionsView.h"

#include <QCheckBox>
#include <QDropEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QRadioButton>
#include <QToolButton>
#include <QUrl>

#include "core/SizeText.h"
#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

namespace {

/// The one folder or file that is being dropped; empty for anything else.
QString droppedPath(const QMimeData* data) {
  const QList<QUrl> urls = data->urls();
  return urls.size() == 1 ? urls.front().toLocalFile() : QString();
}

}  // namespace

RestoreOptionsView::RestoreOptionsView(const Context& context, QWidget* parent)
    : Page(context, parent) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(makeTarget());
  column->addWidget(makeOptions());
}

QString RestoreOptionsView::noFolderText() {
  return tr("There is no such folder.");
}

QWidget* RestoreOptionsView::makeTarget() {
  auto* whole = new QWidget(this);
  auto* row = new QHBoxLayout(whole);
  row->setContentsMargins(0, 0, 0, 0);
  txRestoreTo_ = new QLineEdit(whole);
  txRestoreTo_->setObjectName(QStringLiteral("txRestoreTo"));
  txRestoreTo_->setPlaceholderText(tr("The folder that the files are written into"));
  txRestoreTo_->installEventFilter(this);
  auto* label = new QLabel(tr("Restore t&o:"), whole);
  label->setBuddy(txRestoreTo_);
  browse_ = new QToolButton(whole);
  browse_->setObjectName(QStringLiteral("browseRestoreTo"));
  browse_->setText(tr("Bro&wse..."));
  browse_->setIcon(Theme::icon(QStringLiteral("folder-open")));
  browse_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  browse_->setFocusPolicy(Qt::StrongFocus);
  room_ = new QLabel(whole);
  room_->setObjectName(QStringLiteral("targetRoom"));
  room_->setTextFormat(Qt::PlainText);
  room_->setMinimumWidth(fontMetrics().horizontalAdvance(noFolderText()));
  row->addWidget(label);
  row->addWidget(txRestoreTo_, 1);
  row->addWidget(browse_);
  row->addWidget(room_);
  connect(txRestoreTo_, &QLineEdit::textEdited, this, [this](const QString& text) {
    main().restorePage.txRestoreTo = fromQt(text);
    doShowRoom();
  });
  connect(txRestoreTo_, &QLineEdit::editingFinished, this,
          [this] { doSetTarget(txRestoreTo_->text()); });
  connect(browse_, &QToolButton::clicked, this,
          [this] { act([this] { main().indexOpening.doBrowseTarget(); }); });
  return whole;
}

QWidget* RestoreOptionsView::makeOptions() {
  auto* whole = new QWidget(this);
  auto* row = new QHBoxLayout(whole);
  row->setContentsMargins(0, 0, 0, 0);
  auto* existing = new QGroupBox(tr("When a file is there already"), whole);
  auto* modes = new QGridLayout(existing);
  for (int mode = 0; mode < static_cast<int>(RestoreOpt_.size()); ++mode) {
    const auto at = static_cast<std::size_t>(mode);
    auto* button = new QRadioButton(toQt(RestoreOptTexts[at]).trimmed(), existing);
    button->setObjectName(QStringLiteral("RestoreOpt%1").arg(mode));
    modes->addWidget(button, mode / 2, mode % 2);
    connect(button, &QRadioButton::clicked, this,
            [this, mode] { act([this, mode] { main().restorePage.RestoreOpt = mode; }); });
    RestoreOpt_[at] = button;
  }
  modes->setColumnStretch(2, 1);
  auto* what = new QGroupBox(tr("What is left out"), whole);
  auto* boxes = new QGridLayout(what);
  boxes->addWidget(
      makeBox("SkipOpen", tr("Skip opened file"),
              tr("A file that another program has open is left as it is."), &RestorePage::SkipOpen),
      0, 0);
  boxes->addWidget(makeBox("SkipSystem", tr("Skip system file"),
                           tr("A file that is marked as belonging to the system is left as it is."),
                           &RestorePage::SkipSystem),
                   1, 0);
  boxes->addWidget(makeBox("OnlyRestoreFile", tr("Only restore file"),
                           tr("All files land in the target folder itself, without their folders."),
                           &RestorePage::OnlyRestoreFile),
                   2, 0);
  row->addWidget(existing, 1);
  row->addWidget(what);
  return whole;
}

QCheckBox* RestoreOptionsView::makeBox(const char* name, const QString& text,
                                       const QString& explanation, bool RestorePage::*option) {
  auto* box = new QCheckBox(text, this);
  box->setObjectName(QLatin1String(name));
  box->setToolTip(explanation);
  connect(box, &QCheckBox::clicked, this, [this, option](bool on) {
    act([this, option, on] { main().restorePage.*option = on; });
  });
  boxes_.push_back({box, option});
  return box;
}

void RestoreOptionsView::doSetTarget(const QString& folder) {
  act([this, &folder] { main().indexOpening.doSetTarget(fromQt(folder)); });
  doShowRoom();
}

void RestoreOptionsView::refresh() {
  const RestorePage& page = main().restorePage;
  const bool atRest = mayBegin(Command::ChangePage, main().state);
  txRestoreTo_->setReadOnly(!atRest);
  browse_->setEnabled(atRest);
  if (const QString target = toQt(page.txRestoreTo); target != txRestoreTo_->text()) {
    txRestoreTo_->setText(target);
    doShowRoom();
  }
  for (std::size_t mode = 0; mode < RestoreOpt_.size(); ++mode) {
    RestoreOpt_[mode]->setChecked(static_cast<int>(mode) == page.RestoreOpt);
    RestoreOpt_[mode]->setEnabled(atRest);
  }
  for (const Box& box : boxes_) {
    box.box->setChecked(page.*box.option);
    box.box->setEnabled(atRest);
  }
}

void RestoreOptionsView::doShowRoom() {
  const std::string& target = main().restorePage.txRestoreTo;
  const bool missing = !target.empty() && !context().files.doFolderExists(target);
  const auto volume =
      target.empty() || missing ? std::nullopt : context().files.doGetVolumeInfo(target);
  QPalette colors = palette();
  colors.setColor(QPalette::WindowText, missing ? Theme::discColor(RunDiscState::Failed, colors)
                                                : Theme::explanation(colors));
  room_->setPalette(colors);
  if (missing)
    room_->setText(noFolderText());
  else
    room_->setText(volume ? tr("%1 free").arg(toQt(formatSizeText(volume->freeBytes, true)))
                          : QString());
}

void RestoreOptionsView::showEvent(QShowEvent* event) {
  Page::showEvent(event);
  // What was restored or deleted meanwhile has changed the room.
  doShowRoom();
}

void RestoreOptionsView::changeEvent(QEvent* event) {
  Page::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && isVisible()) doShowRoom();
}

bool RestoreOptionsView::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::DragEnter || event->type() == QEvent::Drop) {
    // A drop event is a drag event with the same data.
    auto* drop = static_cast<QDropEvent*>(event);
    const QString path = droppedPath(drop->mimeData());
    if (!path.isEmpty() && context().files.doFolderExists(fromQt(path)) &&
        mayBegin(Command::ChangePage, main().state)) {
      drop->acceptProposedAction();
      if (event->type() == QEvent::Drop) doSetTarget(path);
      return true;
    }
  }
  return Page::eventFilter(watched, event);
}

}  // namespace korvenal::ui

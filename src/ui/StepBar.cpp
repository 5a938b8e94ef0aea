#include "ui/StepBar.h"

#include <QHBoxLayout>
#include <QPushButton>

#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

namespace {

constexpr int GoToStart = 1;

}  // namespace

StepBar::StepBar(int action, const Context& context, QWidget* parent)
    : Page(context, parent), action_(action) {
  const auto makeButton = [this](const char* name, const QString& text, const QString& icon) {
    auto* button = new QPushButton(Theme::icon(icon), text, this);
    button->setObjectName(QLatin1String(name) + QString::number(action_));
    return button;
  };
  PBSTART_ = makeButton("PBSTART", tr("Start Page"), QStringLiteral("go-home"));
  PBSTART_->setToolTip(tr("Leaves this page for the start page"));
  PBBack_ = makeButton("PBBack", tr("< &Back"), QStringLiteral("go-previous"));
  pbStop_ = makeButton("pbStop", tr("&Stop"), QStringLiteral("process-stop"));
  PBNext_ = makeButton("PBNext", tr("&Next"), QStringLiteral("go-next"));
  PBNext_->setDefault(true);

  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(PBSTART_);
  row->addWidget(PBBack_);
  row->addStretch();
  row->addWidget(pbStop_);
  row->addWidget(PBNext_);

  ActionController& controller = main().controller;
  connect(PBSTART_, &QPushButton::clicked, this,
          [this] { act([this] { main().doChangeTask(GoToStart); }); });
  connect(PBBack_, &QPushButton::clicked, this,
          [this, &controller] { act([this, &controller] { controller.PBBack(action_); }); });
  connect(PBNext_, &QPushButton::clicked, this,
          [this, &controller] { act([this, &controller] { controller.PBNext(action_); }); });
  connect(pbStop_, &QPushButton::clicked, this,
          [this, &controller] { act([this, &controller] { controller.pbStop(action_); }); });
}

int StepBar::step() const {
  const ActionController& controller = main().controller;
  if (action_ == ActionController::Erase) return ActionController::RunStep;
  return action_ == ActionController::Backup ? controller.BackupTab : controller.RestoreTab;
}

QString StepBar::nextText() const {
  if (action_ == ActionController::Erase) return tr("&Erase");
  return toQt(main().controller.nextCaption(action_));
}

void StepBar::refresh() {
  const RunPage& page = main().runPages[static_cast<std::size_t>(action_)];
  const bool atRest = mayBegin(Command::ChangePage, main().state);
  PBSTART_->setVisible(page.buttonsVisible);
  PBSTART_->setEnabled(atRest);
  PBBack_->setVisible(page.buttonsVisible && action_ != ActionController::Erase);
  PBBack_->setEnabled(atRest && step() == ActionController::RunStep);
  PBNext_->setVisible(page.buttonsVisible);
  PBNext_->setEnabled(atRest && !main().state.ActionBusy);
  PBNext_->setText(nextText());
  pbStop_->setVisible(page.pbStopVisible);
  pbStop_->setEnabled(page.pbStopEnabled);
}

}  // namespace korvenal::ui

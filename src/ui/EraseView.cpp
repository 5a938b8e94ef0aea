#include "ui/EraseView.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QRadioButton>
#include <QVBoxLayout>

#include "ui/RunView.h"

namespace korvenal::ui {

EraseView::EraseView(const Context& context, QWidget* parent)
    : Page(context, parent),
      EraseMode_(new QGroupBox(tr("Erase mode"), this)),
      optEraseMode_(new QButtonGroup(this)),
      run_(new RunView(ActionController::Erase, context, this)) {
  EraseMode_->setObjectName(QStringLiteral("EraseMode"));
  auto* modes = new QVBoxLayout(EraseMode_);
  const QString captions[] = {tr("&Quick - Up to 3 minutes each disc."),
                              tr("&Full - Up to 40 minutes each disc.")};
  for (int mode = 0; mode < 2; ++mode) {
    auto* option = new QRadioButton(captions[mode], EraseMode_);
    option->setObjectName(QStringLiteral("optEraseMode%1").arg(mode));
    optEraseMode_->addButton(option, mode);
    modes->addWidget(option);
  }
  connect(optEraseMode_, &QButtonGroup::idClicked, this, [this](int mode) {
    act([this, mode] {
      main().erase.optEraseMode = mode;
      main().controller.doRefreshSummary();
    });
  });
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(EraseMode_);
  column->addWidget(run_, 1);
}

void EraseView::refresh() {
  EraseMode_->setEnabled(main().erase.EraseMode);
  optEraseMode_->button(main().erase.optEraseMode)->setChecked(true);
  run_->refresh();
}

}  // namespace korvenal::ui

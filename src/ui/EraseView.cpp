#include "ui/EraseView.h"

#include <QGroupBox>
#include <QRadioButton>
#include <QVBoxLayout>

#include "ui/RunView.h"

namespace korvenal::ui {

EraseView::EraseView(const Context& context, QWidget* parent)
    : Page(context, parent),
      EraseMode_(new QGroupBox(tr("Erase mode"), this)),
      run_(new RunView(ActionController::Erase, context, this)) {
  EraseMode_->setObjectName(QStringLiteral("EraseMode"));
  auto* modes = new QVBoxLayout(EraseMode_);
  const std::array<QString, 2> texts = {tr("&Quick - Up to 3 minutes each disc."),
                                        tr("F&ull - Up to 40 minutes each disc.")};
  for (std::size_t mode = 0; mode < texts.size(); ++mode) {
    QRadioButton* option = new QRadioButton(texts[mode], EraseMode_);
    option->setObjectName(QStringLiteral("optEraseMode%1").arg(mode));
    modes->addWidget(option);
    connect(option, &QRadioButton::clicked, this, [this, mode] {
      act([this, mode] {
        if (!mayBegin(Command::ChangePage, main().state)) return;
        main().erase.optEraseMode = static_cast<int>(mode);
        main().controller.doRefreshSummary();
      });
    });
    optEraseMode_[mode] = option;
  }
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(EraseMode_);
  column->addWidget(run_, 1);
}

void EraseView::refresh() {
  const EraseRun& erase = main().erase;
  EraseMode_->setEnabled(erase.EraseMode);
  optEraseMode_[erase.optEraseMode == 0 ? 0 : 1]->setChecked(true);
  run_->refresh();
}

}  // namespace korvenal::ui

#include "ui/WorkerDialog.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

WorkerDialog::WorkerDialog(frmAddFiles& form, QWidget* parent)
    : FormDialog(form, parent), form_(form), doing_(new QLabel(this)), path_(new QLabel(this)) {
  setObjectName(QStringLiteral("frmAddFiles"));
  setWindowFlag(Qt::WindowCloseButtonHint, false);
  setWindowTitle(toQt(form.caption));
  for (QLabel* label : {doing_, path_}) label->setTextFormat(Qt::PlainText);
  // Paths of all lengths go by: the dialog keeps its size.
  setMinimumWidth(fontMetrics().averageCharWidth() * 76);
  auto* moving = new QProgressBar(this);
  moving->setRange(0, 0);
  moving->setTextVisible(false);
  auto* stop = new QPushButton(Theme::icon(QStringLiteral("process-stop")), tr("&Stop"), this);
  stop->setObjectName(QStringLiteral("CMD"));
  stop->setAutoDefault(false);
  auto* row = new QHBoxLayout;
  row->addStretch();
  row->addWidget(stop);
  auto* column = new QVBoxLayout(this);
  column->addWidget(doing_);
  column->addWidget(path_);
  column->addWidget(moving);
  column->addLayout(row);
  connect(stop, &QPushButton::clicked, this, [this] { act([this] { form_.CMD(); }); });
}

void WorkerDialog::refresh() {
  doing_->setText(toQt(form_.MsgGrid[0]));
  path_->setText(fontMetrics().elidedText(toQt(form_.MsgGrid[1]), Qt::ElideMiddle,
                                          width() - fontMetrics().averageCharWidth() * 4));
}

}  // namespace korvenal::ui

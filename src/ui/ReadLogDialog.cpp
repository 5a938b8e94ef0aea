#include "ui/ReadLogDialog.h"

#include <QHeaderView>
#include <QTableView>

#include "ui/DialogParts.h"
#include "ui/Texts.h"

namespace korvenal::ui {

ReadLogDialog::ReadLogDialog(frmReadLog& form, QWidget* parent)
    : FormDialog(form, parent),
      form_(form),
      model_(form.vsIndex),
      vsIndex_(new QTableView(this)),
      message_(new QLabel(this)) {
  setObjectName(QStringLiteral("frmReadLog"));
  setWindowTitle(tr("Select Backup Index"));
  vsIndex_->setObjectName(QStringLiteral("vsIndex"));
  vsIndex_->setModel(&model_);
  vsIndex_->setColumnHidden(ReadLogName, true);
  vsIndex_->setSelectionBehavior(QAbstractItemView::SelectRows);
  vsIndex_->setSelectionMode(QAbstractItemView::SingleSelection);
  vsIndex_->setShowGrid(false);
  vsIndex_->setTabKeyNavigation(false);
  vsIndex_->verticalHeader()->hide();
  vsIndex_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  vsIndex_->horizontalHeader()->setSectionResizeMode(ReadLogJob, QHeaderView::Stretch);
  vsIndex_->setMinimumSize(fontMetrics().averageCharWidth() * 70, fontMetrics().height() * 10);
  vsIndex_->selectRow(0);
  message_->setTextFormat(Qt::PlainText);
  pbOK_ = namedButton("pbOK", tr("&OK"), this);
  pbOK_->setDefault(true);
  pbCancel_ = namedButton("pbCancel", tr("&Cancel"), this);

  auto* column = new QVBoxLayout(this);
  column->addWidget(wrappedLabel(
      tr("Several backups are on the discs loaded. Which one is to be opened?"), 60, this));
  column->addWidget(vsIndex_);
  column->addWidget(message_);
  column->addLayout(buttonRow({}, {pbCancel_, pbOK_}));

  connect(vsIndex_, &QTableView::doubleClicked, this, [this](const QModelIndex& at) {
    act([this, at] { form_.doOpenRow(TableModel::tableRow(at)); });
  });
  connect(pbOK_, &QPushButton::clicked, this, [this] {
    act([this] {
      const QModelIndex at = vsIndex_->currentIndex();
      if (at.isValid()) form_.vsIndex.Row = TableModel::tableRow(at);
      form_.pbOK();
    });
  });
  connect(pbCancel_, &QPushButton::clicked, this, [this] { act([this] { form_.pbCancel(); }); });
}

void ReadLogDialog::refresh() {
  model_.refresh();
  message_->setText(toQt(form_.message));
  pbOK_->setEnabled(form_.buttonsEnabled);
  pbCancel_->setEnabled(form_.buttonsEnabled);
}

}  // namespace korvenal::ui

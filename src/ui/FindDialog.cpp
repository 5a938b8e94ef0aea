#include "ui/FindDialog.h"

#include <QCheckBox>
#include <QLineEdit>

#include "ui/DialogParts.h"
#include "ui/Texts.h"

namespace korvenal::ui {

FindDialog::FindDialog(frmFind& form, QWidget* parent)
    : FormDialog(form, parent),
      form_(form),
      txName_(new QLineEdit(toQt(form.txName), this)),
      matchCase_(new QCheckBox(tr("&Match case"), this)),
      pbOK_(namedButton("pbOK", tr("&Find"), this)) {
  setObjectName(QStringLiteral("frmFind"));
  setWindowTitle(tr("Find Name"));
  txName_->setObjectName(QStringLiteral("txName"));
  txName_->setMinimumWidth(fontMetrics().averageCharWidth() * 46);
  txName_->selectAll();
  matchCase_->setObjectName(QStringLiteral("matchCase"));
  matchCase_->setChecked(form.matchCase);
  pbOK_->setDefault(true);
  auto* caption = new QLabel(tr("&Name, or a part of it:"), this);
  caption->setBuddy(txName_);
  auto* cancel = namedButton("pbCancel", tr("&Cancel"), this);
  auto* column = new QVBoxLayout(this);
  column->addWidget(caption);
  column->addWidget(txName_);
  column->addWidget(matchCase_);
  column->addLayout(buttonRow({}, {cancel, pbOK_}));
  connect(txName_, &QLineEdit::textChanged, this,
          [this](const QString& text) { act([this, text] { form_.txName = fromQt(text); }); });
  connect(matchCase_, &QCheckBox::toggled, this,
          [this](bool on) { act([this, on] { form_.matchCase = on; }); });
  connect(pbOK_, &QPushButton::clicked, this, [this] {
    act([this] { form_.pbOK(); });
    // Nothing was found: the next try begins with a key press.
    txName_->selectAll();
    txName_->setFocus();
  });
  connect(cancel, &QPushButton::clicked, this, [this] { act([this] { form_.pbCancel(); }); });
}

void FindDialog::refresh() {
  pbOK_->setEnabled(form_.pbOKEnabled());
}

}  // namespace korvenal::ui

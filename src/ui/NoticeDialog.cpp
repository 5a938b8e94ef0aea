#include "ui/NoticeDialog.h"

#include <QCheckBox>

#include "ui/DialogParts.h"
#include "ui/Texts.h"

namespace korvenal::ui {

NoticeDialog::NoticeDialog(frmNotice& form, QWidget* parent)
    : FormDialog(form, parent),
      form_(form),
      ckShowNoMore_(new QCheckBox(toQt(form.ckShowNoMoreText), this)) {
  setObjectName(QStringLiteral("frmNotice"));
  setWindowTitle(toQt(form.caption));
  ckShowNoMore_->setObjectName(QStringLiteral("ckShowNoMore"));
  auto* column = new QVBoxLayout(this);
  column->addLayout(withIcon(*this, QStringLiteral("dialog-information"),
                             wrappedLabel(toQt(form.text), 60, this)));
  column->addWidget(ckShowNoMore_);
  auto* ok = namedButton("pbOK", tr("&OK"), this);
  auto* stop = namedButton("pbStop", tr("&Stop Action"), this);
  ok->setDefault(true);
  column->addLayout(buttonRow({stop}, {ok}));
  connect(ckShowNoMore_, &QCheckBox::toggled, this,
          [this](bool on) { act([this, on] { form_.ckShowNoMore = on; }); });
  connect(ok, &QPushButton::clicked, this, [this] { act([this] { form_.pbOK(); }); });
  connect(stop, &QPushButton::clicked, this, [this] { act([this] { form_.pbStop(); }); });
  ok->setFocus();
}

void NoticeDialog::refresh() {
  ckShowNoMore_->setChecked(form_.ckShowNoMore);
}

}  // namespace korvenal::ui

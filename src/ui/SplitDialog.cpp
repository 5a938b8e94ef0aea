#include "ui/SplitDialog.h"

#include "ui/DialogParts.h"
#include "ui/Texts.h"

namespace korvenal::ui {

SplitDialog::SplitDialog(frmSplit& form, QWidget* parent) : FormDialog(form, parent) {
  setObjectName(QStringLiteral("frmSplit"));
  setWindowTitle(toQt(form.title));
  auto* column = new QVBoxLayout(this);
  column->addLayout(withIcon(*this, QStringLiteral("dialog-question"),
                             wrappedLabel(toQt(form.message), 62, this)));
  column->addLayout(fileFacts(*this, toQt(form.fileName),
                              {toQt(form.sizeLabel + " " + form.sizeText), toQt(form.dateText)}));
  struct Choice {
    const char* name;
    QString text;
    void (frmSplit::*press)();
  };
  const Choice choices[] = {{"pbSplitIt", tr("S&plit It"), &frmSplit::pbSplitIt},
                            {"pbSplitAll", tr("Split &All"), &frmSplit::pbSplitAll},
                            {"pbSkipIt", tr("S&kip It"), &frmSplit::pbSkipIt},
                            {"pbStop", tr("&Stop"), &frmSplit::pbStop}};
  auto* row = new QHBoxLayout;
  row->addStretch();
  for (const Choice& choice : choices) {
    QPushButton* button = namedButton(choice.name, choice.text, this);
    row->addWidget(button);
    connect(button, &QPushButton::clicked, this,
            [this, &form, press = choice.press] { act([&form, press] { (form.*press)(); }); });
  }
  auto* first = findChild<QPushButton*>(QStringLiteral("pbSplitIt"));
  first->setDefault(true);
  first->setFocus();
  column->addLayout(row);
}

}  // namespace korvenal::ui

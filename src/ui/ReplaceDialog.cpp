#include "ui/ReplaceDialog.h"

#include "ui/DialogParts.h"
#include "ui/Texts.h"

namespace korvenal::ui {

ReplaceDialog::ReplaceDialog(frmReplace& form, QWidget* parent) : FormDialog(form, parent) {
  setObjectName(QStringLiteral("frmReplace"));
  setWindowTitle(tr("Replace File?"));
  auto* column = new QVBoxLayout(this);
  column->addLayout(withIcon(*this, QStringLiteral("dialog-question"),
                             wrappedLabel(toQt(form.message), 60, this)));
  const QString headings[] = {tr("Would you like to replace the existing file"),
                              tr("with the one on disc?")};
  for (std::size_t i = 0; i < form.files.size(); ++i) {
    const ReplaceFile& file = form.files[i];
    column->addWidget(explanationLabel(headings[i], this));
    column->addLayout(
        fileFacts(*this, toQt(file.name), {toQt(file.sizeText), toQt(file.dateText)}));
  }
  struct Choice {
    const char* name;
    QString text;
    void (frmReplace::*press)();
  };
  const Choice choices[] = {{"pbYes", tr("&Yes"), &frmReplace::pbYes},
                            {"pbReplaceAll", tr("&Replace All"), &frmReplace::pbReplaceAll},
                            {"pbNo", tr("&No"), &frmReplace::pbNo},
                            {"pbCancel", tr("Cancel"), &frmReplace::pbCancel}};
  auto* row = new QHBoxLayout;
  row->addStretch();
  for (const Choice& choice : choices) {
    QPushButton* button = namedButton(choice.name, choice.text, this);
    row->addWidget(button);
    connect(button, &QPushButton::clicked, this,
            [this, &form, press = choice.press] { act([&form, press] { (form.*press)(); }); });
  }
  // What is on the hard disc is not lost by a slip of the hand.
  auto* no = findChild<QPushButton*>(QStringLiteral("pbNo"));
  no->setDefault(true);
  no->setFocus();
  column->addLayout(row);
}

}  // namespace korvenal::ui

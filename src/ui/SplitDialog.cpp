#include "ui/SplitDialog.h"

#include "ui/DialogParts.h"
#include "ui/Texts.h"

namespace korvenal::ui {

SplitDialog::SplitDialog(frmSplit& form, QWidget* parent) : QuestionDialog(form, parent) {
  setObjectName(QStringLiteral("frmSplit"));
  setWindowTitle(toQt(form.title));
  doBuild(toQt(form.message),
          fileFacts(*this, toQt(form.fileName),
                    {toQt(form.sizeLabel + " " + form.sizeText), toQt(form.dateText)}),
          {{"pbSplitIt", tr("S&plit It"), tr("Puts the parts of the file on several discs"),
            [&form] { form.pbSplitIt(); }},
           {"pbSplitAll", tr("Split &All"), tr("Splits every such file that follows, too"),
            [&form] { form.pbSplitAll(); }},
           {"pbSkipIt", tr("S&kip It"), tr("Leaves the file out of the backup"),
            [&form] { form.pbSkipIt(); }},
           {"pbStop", tr("&Stop"), {}, [&form] { form.pbStop(); }}},
          0);
}

}  // namespace korvenal::ui

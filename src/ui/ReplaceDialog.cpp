#include "ui/ReplaceDialog.h"

#include <QGroupBox>

#include "ui/DialogParts.h"
#include "ui/Texts.h"

namespace korvenal::ui {

ReplaceDialog::ReplaceDialog(frmReplace& form, QWidget* parent) : QuestionDialog(form, parent) {
  setObjectName(QStringLiteral("frmReplace"));
  setWindowTitle(tr("Replace File?"));
  auto* files = new QHBoxLayout;
  files->addWidget(filePanel("existing", tr("Existing file"), form.files[0]), 1);
  files->addWidget(filePanel("onDisc", tr("File on disc"), form.files[1]), 1);
  // What is on the hard disc is not lost by a slip of the hand.
  constexpr std::size_t No = 2;
  doBuild(toQt(form.message) + QLatin1Char('\n') +
              tr("Would you like to replace the existing file with the one on disc?"),
          files,
          {{"pbYes", tr("&Yes"), {}, [&form] { form.pbYes(); }},
           {"pbReplaceAll", tr("&Replace All"), tr("Replaces every file that follows, too"),
            [&form] { form.pbReplaceAll(); }},
           {"pbNo", tr("&No"), tr("Keeps the existing file (Esc)"), [&form] { form.pbNo(); }},
           {"pbCancel", tr("Cancel"), tr("Keeps the existing file and ends the restore"),
            [&form] { form.pbCancel(); }}},
          No);
}

QWidget* ReplaceDialog::filePanel(const char* name, const QString& title, const ReplaceFile& file) {
  auto* panel = new QGroupBox(title, this);
  panel->setObjectName(QLatin1String(name));
  panel->setLayout(fileFacts(*panel, toQt(file.name), {toQt(file.sizeText), toQt(file.dateText)}));
  return panel;
}

}  // namespace korvenal::ui

#include "ui/DefaultDialog.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QRadioButton>
#include <QShortcut>

#include "job/Job.h"
#include "restore/RestorePage.h"
#include "ui/DialogParts.h"
#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

DefaultDialog::DefaultDialog(frmDefault& form, const DialogServices& services, QWidget* parent)
    : FormDialog(form, parent), form_(form), services_(services) {
  setObjectName(QStringLiteral("frmDefault"));
  setWindowTitle(tr("Default Options"));
  auto* help = namedButton("pbHelp", tr("&Help"), this);
  auto* reset = namedButton("pbDefault", tr("Reset &Default"), this);
  auto* cancel = namedButton("pbCancel", tr("&Cancel"), this);
  auto* ok = namedButton("pbOK", tr("&OK"), this);
  ok->setDefault(true);
  auto* columns = new QHBoxLayout;
  auto* left = new QVBoxLayout;
  left->addWidget(splitPart());
  left->addWidget(backupPart());
  left->addStretch();
  auto* right = new QVBoxLayout;
  right->addWidget(fileSystemPart());
  right->addWidget(restorePart());
  right->addStretch();
  columns->addLayout(left);
  columns->addLayout(right);
  auto* whole = new QVBoxLayout(this);
  whole->addWidget(explanationLabel(
      tr("What new jobs and restores begin with. The job at hand keeps its own options."), this));
  whole->addLayout(columns);
  whole->addLayout(buttonRow({reset, help}, {cancel, ok}));

  connect(reset, &QPushButton::clicked, this, [this] { act([this] { form_.pbDefault(); }); });
  connect(cancel, &QPushButton::clicked, this, [this] { act([this] { form_.pbCancel(); }); });
  connect(ok, &QPushButton::clicked, this, [this] { act([this] { form_.pbOK(); }); });
  const auto showHelp = [this] { services_.showHelp("Default Options"); };
  connect(help, &QPushButton::clicked, this, showHelp);
  connect(new QShortcut(QKeySequence::HelpContents, this), &QShortcut::activated, this, showHelp);
}

void DefaultDialog::addFlag(QVBoxLayout& column, const char* name, const QString& text,
                            bool frmDefault::*field) {
  auto* box = new QCheckBox(text, this);
  box->setObjectName(QLatin1String(name));
  column.addWidget(box);
  flags_.push_back({box, field});
  connect(box, &QCheckBox::toggled, this,
          [this, field](bool on) { act([this, field, on] { form_.*field = on; }); });
}

QButtonGroup* DefaultDialog::addChoice(int frmDefault::*field) {
  auto* group = new QButtonGroup(this);
  choices_.push_back({group, field});
  connect(group, &QButtonGroup::idClicked, this,
          [this, field](int id) { act([this, field, id] { form_.*field = id; }); });
  return group;
}

void DefaultDialog::addOption(QVBoxLayout& column, QButtonGroup& group, const char* name,
                              const QString& text) {
  const int id = static_cast<int>(group.buttons().size());
  auto* option = new QRadioButton(text, this);
  option->setObjectName(QLatin1String(name) + QString::number(id));
  group.addButton(option, id);
  column.addWidget(option);
}

QComboBox* DefaultDialog::addSizes(const char* name, std::span<const int> megabytes,
                                   int frmDefault::*field) {
  auto* list = new QComboBox(this);
  list->setObjectName(QLatin1String(name));
  for (const int size : megabytes) list->addItem(QStringLiteral("%1 MB").arg(size));
  lists_.emplace_back(list, field);
  connect(list, &QComboBox::activated, this,
          [this, field](int index) { act([this, field, index] { form_.*field = index; }); });
  return list;
}

QWidget* DefaultDialog::splitPart() {
  auto* part = new QGroupBox(tr("Split-and-Span"), this);
  auto* column = new QVBoxLayout(part);
  QButtonGroup* group = addChoice(&frmDefault::optSplitAndSpan);
  addOption(*column, *group, "optSplitAndSpan", tr("Don't split any file if possible"));
  addOption(*column, *group, "optSplitAndSpan", tr("Split files and span discs"));
  column->addWidget(explanationLabel(
      tr("If a file is larger than the disc space remaining, put it on next disc, or split it and "
         "span across discs when:"),
      this));
  auto* grid = new QGridLayout;
  grid->addWidget(new QLabel(tr("the file is larger than"), this), 0, 0);
  grid->addWidget(addSizes("FileSize", SplitFileMegabytes, &frmDefault::FileSize), 0, 1);
  grid->addWidget(new QLabel(tr("and the disc free space remaining is more than"), this), 1, 0);
  grid->addWidget(addSizes("DiscSize", SplitDiscMegabytes, &frmDefault::DiscSize), 1, 1);
  column->addLayout(grid);
  auto* help = namedButton("pbSplitHelp", tr("About Split-and-Span"), this);
  help->setIcon(Theme::icon(QStringLiteral("help-contents")));
  connect(help, &QPushButton::clicked, this, [this] { services_.showHelp("Split-and-Span"); });
  column->addWidget(help, 0, Qt::AlignLeft);
  return part;
}

QWidget* DefaultDialog::backupPart() {
  auto* part = new QGroupBox(tr("Backup"), this);
  auto* column = new QVBoxLayout(part);
  addFlag(*column, "FinalizeDisc", tr("Finalize disc (No further writing possible)"),
          &frmDefault::FinalizeDisc);
  addFlag(*column, "AutoErase",
          tr("Automatically erase non-empty rewritable disc (CD-RW, DVD-RW, DVD+RW)"),
          &frmDefault::AutoErase);
  addFlag(*column, "SkipError",
          tr("Automatically skip error file (Don't interrupt the backup action)"),
          &frmDefault::SkipError);
  addFlag(*column, "ExcludeTopFolder",
          tr("Don't include top level folder if there is only one folder specified"),
          &frmDefault::ExcludeTopFolder);
  addFlag(*column, "ExcludeEmptyFolder", tr("Don't backup empty folders"),
          &frmDefault::ExcludeEmptyFolder);
  return part;
}

QWidget* DefaultDialog::fileSystemPart() {
  auto* part = new QGroupBox(tr("Disc File System"), this);
  auto* column = new QVBoxLayout(part);
  QButtonGroup* group = addChoice(&frmDefault::optFileSystem);
  const QString texts[] = {tr("Files above 2 GB on a DVD are cut into pieces; the program asks."),
                           tr("Large files stay whole when they fit on a disc.")};
  for (int option = 0; option < 2; ++option) {
    addOption(*column, *group, "optFileSystem", toQt(FileSystemTexts[option]));
    QLabel* text = explanationLabel(texts[option], this);
    text->setIndent(fontMetrics().averageCharWidth() * 3);
    fileSystemTexts_.push_back(text);
    column->addWidget(text);
  }
  return part;
}

QWidget* DefaultDialog::restorePart() {
  auto* part = new QGroupBox(tr("Restore"), this);
  auto* column = new QVBoxLayout(part);
  QButtonGroup* group = addChoice(&frmDefault::RestoreOpt);
  for (const std::string& text : RestoreOptTexts)
    addOption(*column, *group, "RestoreOpt", toQt(text).trimmed());
  addFlag(*column, "SkipSystem", tr("Skip system file"), &frmDefault::SkipSystem);
  addFlag(*column, "SkipOpen", tr("Skip opened file"), &frmDefault::SkipOpen);
  return part;
}

void DefaultDialog::refresh() {
  for (const Flag& flag : flags_) {
    const QSignalBlocker quiet(flag.box);
    flag.box->setChecked(form_.*flag.field);
  }
  for (const Choice& choice : choices_)
    if (auto* button = choice.buttons->button(form_.*choice.field)) button->setChecked(true);
  for (const auto& [list, field] : lists_) list->setCurrentIndex(form_.*field);
  for (int option = 0; option < static_cast<int>(fileSystemTexts_.size()); ++option)
    fileSystemTexts_[static_cast<std::size_t>(option)]->setEnabled(option == form_.optFileSystem);
}

}  // namespace korvenal::ui

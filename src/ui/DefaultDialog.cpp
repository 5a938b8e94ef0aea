#include "ui/DefaultDialog.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QRadioButton>
#include <QShortcut>

#include "ui/DialogParts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

DefaultDialog::DefaultDialog(frmDefault& form, const DialogServices& services, QWidget* parent)
    : FormDialog(form, parent), form_(form), services_(services) {
  setObjectName(QStringLiteral("frmDefault"));
  setWindowTitle(tr("Default Options"));
  // In the order in which the window is read: that is the order of Tab, too.
  auto* whole = new QVBoxLayout(this);
  whole->addWidget(explanationLabel(
      tr("What new jobs and restores begin with. The job at hand keeps its own options."), this));
  whole->addWidget(splitPart());
  auto* left = new QVBoxLayout;
  left->addWidget(backupPart());
  left->addWidget(fileSystemPart(), 1);
  auto* columns = new QHBoxLayout;
  columns->addLayout(left, 1);
  columns->addWidget(restorePart());
  whole->addLayout(columns);
  whole->addLayout(buttons());
  connect(new QShortcut(QKeySequence::HelpContents, this), &QShortcut::activated, this,
          [this] { services_.showHelp("Default Options"); });
}

QHBoxLayout* DefaultDialog::buttons() {
  auto* reset = namedButton("pbDefault", tr("Reset &Default"), this);
  auto* help = namedButton("pbHelp", tr("&Help"), this);
  auto* cancel = namedButton("pbCancel", tr("&Cancel"), this);
  auto* ok = namedButton("pbOK", tr("&OK"), this);
  ok->setDefault(true);
  connect(reset, &QPushButton::clicked, this, [this] { act([this] { form_.pbDefault(); }); });
  connect(help, &QPushButton::clicked, this, [this] { services_.showHelp("Default Options"); });
  connect(cancel, &QPushButton::clicked, this, [this] { act([this] { form_.pbCancel(); }); });
  connect(ok, &QPushButton::clicked, this, [this] { act([this] { form_.pbOK(); }); });
  return buttonRow({reset, help}, {cancel, ok});
}

void DefaultDialog::addFlag(QBoxLayout& column, const char* name, const QString& text,
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

void DefaultDialog::addOption(QBoxLayout& column, QButtonGroup& group, const char* name,
                              const QString& text) {
  const int id = static_cast<int>(group.buttons().size());
  auto* option = new QRadioButton(text, this);
  option->setObjectName(QLatin1String(name) + QString::number(id));
  group.addButton(option, id);
  column.addWidget(option);
}

void DefaultDialog::addSizes(QBoxLayout& row, const QString& caption, const char* name,
                             std::span<const int> megabytes, int frmDefault::*field) {
  auto* list = new QComboBox(this);
  list->setObjectName(QLatin1String(name));
  for (const int size : megabytes) list->addItem(QStringLiteral("%1 MB").arg(size));
  auto* label = new QLabel(caption, this);
  label->setBuddy(list);
  row.addWidget(label);
  row.addWidget(list);
  lists_.emplace_back(list, field);
  connect(list, &QComboBox::activated, this,
          [this, field](int index) { act([this, field, index] { form_.*field = index; }); });
}

QWidget* DefaultDialog::splitPart() {
  auto* part = new QGroupBox(tr("Split-and-Span"), this);
  auto* column = new QVBoxLayout(part);
  QButtonGroup* group = addChoice(&frmDefault::optSplitAndSpan);
  addOption(*column, *group, "optSplitAndSpan", tr("Do&n't split any file if possible"));
  addOption(*column, *group, "optSplitAndSpan",
            tr("If a file is larger than the disc space remaining, p&ut it on next disc, or split "
               "it and span across discs when:"));
  auto* row = new QHBoxLayout;
  row->addSpacing(fontMetrics().averageCharWidth() * 4);
  addSizes(*row, tr("the file is &larger than"), "FileSize", SplitFileMegabytes,
           &frmDefault::FileSize);
  addSizes(*row, tr("and the disc free space remainin&g is more than"), "DiscSize",
           SplitDiscMegabytes, &frmDefault::DiscSize);
  row->addStretch();
  auto* help = namedButton("pbSplitHelp", tr("A&bout Split-and-Span"), this);
  help->setIcon(Theme::icon(QStringLiteral("help-contents")));
  connect(help, &QPushButton::clicked, this, [this] { services_.showHelp("Split-and-Span"); });
  row->addWidget(help);
  column->addLayout(row);
  return part;
}

QWidget* DefaultDialog::backupPart() {
  auto* part = new QGroupBox(tr("Backup"), this);
  auto* column = new QVBoxLayout(part);
  addFlag(*column, "FinalizeDisc", tr("Finali&ze disc (No further writing possible)"),
          &frmDefault::FinalizeDisc);
  addFlag(*column, "AutoErase",
          tr("Auto&matically erase non-empty rewritable disc (CD-RW, DVD-RW, DVD+RW)"),
          &frmDefault::AutoErase);
  addFlag(*column, "SkipError",
          tr("Automatically s&kip error file (Don't interrupt the backup action)"),
          &frmDefault::SkipError);
  addFlag(*column, "ExcludeTopFolder",
          tr("Don't include &top level folder if there is only one folder specified"),
          &frmDefault::ExcludeTopFolder);
  addFlag(*column, "ExcludeEmptyFolder", tr("Don't backup empt&y folders"),
          &frmDefault::ExcludeEmptyFolder);
  column->addStretch();
  return part;
}

QWidget* DefaultDialog::fileSystemPart() {
  auto* part = new QGroupBox(tr("Disc File System"), this);
  auto* column = new QVBoxLayout(part);
  QButtonGroup* group = addChoice(&frmDefault::optFileSystem);
  const QString names[] = {tr("&Joliet"), tr("UD&F 1.50")};
  const QString texts[] = {tr("Files above 2 GB on a DVD are cut into pieces; the program asks."),
                           tr("Large files stay whole when they fit on a disc.")};
  for (int option = 0; option < 2; ++option) {
    addOption(*column, *group, "optFileSystem", names[option]);
    QLabel* text = explanationLabel(texts[option], this);
    text->setObjectName(QStringLiteral("fileSystemText%1").arg(option));
    text->setIndent(fontMetrics().averageCharWidth() * 4);
    fileSystemTexts_.push_back(text);
    column->addWidget(text);
  }
  return part;
}

QWidget* DefaultDialog::restorePart() {
  auto* part = new QGroupBox(tr("Restore"), this);
  auto* column = new QVBoxLayout(part);
  QButtonGroup* group = addChoice(&frmDefault::RestoreOpt);
  for (const QString& text :
       {tr("&Replace ALL"), tr("&Ask before replacing existing file"),
        tr("Replace e&xisting file if date is older"), tr("Sk&ip existing file")})
    addOption(*column, *group, "RestoreOpt", text);
  addFlag(*column, "SkipSystem", tr("Skip &system file"), &frmDefault::SkipSystem);
  addFlag(*column, "SkipOpen", tr("Skip o&pened file"), &frmDefault::SkipOpen);
  column->addStretch();
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
  // What is said of the chosen one stands out like any text; an explanation keeps its grey in the
  // role of window text.
  for (int option = 0; option < static_cast<int>(fileSystemTexts_.size()); ++option)
    fileSystemTexts_[static_cast<std::size_t>(option)]->setForegroundRole(
        option == form_.optFileSystem ? QPalette::Text : QPalette::WindowText);
}

}  // namespace korvenal::ui

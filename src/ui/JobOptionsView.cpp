#include "ui/JobOptionsView.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTabWidget>

#include "core/Settings.h"
#include "ui/DialogParts.h"
#include "ui/Texts.h"

namespace korvenal::ui {

namespace {

constexpr int SplitTab = 2;
constexpr int AttributeBoxes = 4;

}  // namespace

JobOptionsView::JobOptionsView(const Context& context, QWidget* parent)
    : Page(context, parent), tabs_(new QTabWidget(this)) {
  tabs_->setObjectName(QStringLiteral("OptionsTab"));
  tabs_->addTab(discTab(), tr("&Disc"));
  tabs_->addTab(filterTab(), tr("File Filte&rs"));
  tabs_->addTab(splitTab(), {});
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(tabs_);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
}

QCheckBox* JobOptionsView::addFlag(const char* name, const QString& text,
                                   std::function<bool(const Job&)> value,
                                   std::function<void(JobControls&, bool)> change) {
  auto* box = new QCheckBox(text, this);
  box->setObjectName(QLatin1String(name));
  connect(box, &QCheckBox::clicked, this, [this, change = std::move(change)](bool on) {
    act([this, &change, on] { change(main().jobControls, on); });
  });
  drawings_.emplace_back(
      [this, box, value = std::move(value)] { box->setChecked(value(main().job)); });
  return box;
}

QButtonGroup* JobOptionsView::addChoice(const char* name, const QStringList& texts, int Job::*field,
                                        bool (JobControls::*change)(int)) {
  auto* group = new QButtonGroup(this);
  for (int option = 0; option < texts.size(); ++option) {
    auto* button = new QRadioButton(texts[option], this);
    button->setObjectName(QLatin1String(name) + QString::number(option));
    group->addButton(button, option);
  }
  connect(group, &QButtonGroup::idClicked, this, [this, change](int id) {
    act([this, change, id] { (main().jobControls.*change)(id); });
  });
  drawings_.emplace_back([this, group, field] {
    if (auto* button = group->button(main().job.*field)) button->setChecked(true);
  });
  return group;
}

QComboBox* JobOptionsView::addText(const char* name, std::string Job::*field,
                                   void (JobControls::*change)(std::string_view)) {
  auto* list = new QComboBox(this);
  list->setObjectName(QLatin1String(name));
  list->setEditable(true);
  list->setInsertPolicy(QComboBox::NoInsert);
  list->addItems({QStringLiteral("*"), QStringLiteral("*.jpg;*.png;*.tif;*.raw"),
                  QStringLiteral("*.odt;*.ods;*.pdf;*.doc;*.xls"),
                  QStringLiteral("*.tmp;*.bak;*~")});
  connect(list, &QComboBox::editTextChanged, this, [this, change](const QString& text) {
    act([this, change, text] { (main().jobControls.*change)(fromQt(text)); });
  });
  drawings_.emplace_back([this, list, field] {
    const QString text = toQt(main().job.*field);
    if (list->currentText() == text) return;
    const QSignalBlocker quiet(list);
    list->setEditText(text);
  });
  return list;
}

QComboBox* JobOptionsView::addSizes(const char* name, std::span<const int> megabytes,
                                    std::string Job::*field,
                                    bool (JobControls::*change)(std::string_view)) {
  auto* list = new QComboBox(this);
  list->setObjectName(QLatin1String(name));
  for (const int size : megabytes) list->addItem(QStringLiteral("%1 MB").arg(size));
  connect(list, &QComboBox::textActivated, this, [this, change](const QString& text) {
    act([this, change, text] { (main().jobControls.*change)(fromQt(text)); });
  });
  drawings_.emplace_back([this, list, field] {
    list->setCurrentText(toQt(main().job.*field));
    list->setEnabled(main().job.optSplitAndSpan == 1);
  });
  return list;
}

QWidget* JobOptionsView::discTab() {
  auto* tab = new QWidget(this);
  auto* comboDiscType = new QComboBox(tab);
  comboDiscType->setObjectName(QStringLiteral("comboDiscType"));
  for (const std::string& text : DiscTypeTexts) comboDiscType->addItem(toQt(text));
  connect(comboDiscType, &QComboBox::activated, this, [this](int index) {
    if (mayBegin(Command::ChangeOption, main().state))
      act([this, index] { main().jobControls.setDiscType(index); });
  });
  drawings_.emplace_back(
      [this, comboDiscType] { comboDiscType->setCurrentIndex(main().job.comboDiscType); });
  auto* caption = new QLabel(tr("Disc t&ype:"), tab);
  caption->setBuddy(comboDiscType);
  auto* systems = addChoice("optFileSystem", {toQt(FileSystemTexts[0]), toQt(FileSystemTexts[1])},
                            &Job::optFileSystem, &JobControls::setFileSystem);
  auto* grid = new QGridLayout(tab);
  auto* first = new QHBoxLayout;
  first->addWidget(caption);
  first->addWidget(comboDiscType);
  first->addSpacing(fontMetrics().averageCharWidth() * 3);
  first->addWidget(new QLabel(tr("File system:"), tab));
  for (QAbstractButton* button : systems->buttons()) first->addWidget(button);
  first->addStretch();
  grid->addLayout(first, 0, 0, 1, 2);
  grid->addWidget(addFlag(
                      "BurnBackupIndex", tr("Burn backup &index"),
                      [](const Job& job) { return job.BurnBackupIndex; },
                      [](JobControls& controls, bool on) { controls.setBurnBackupIndex(on); }),
                  1, 0);
  grid->addWidget(addFlag(
                      "FinalizeDisc", tr("Finali&ze disc (No further writing possible)"),
                      [](const Job& job) { return job.FinalizeDisc; },
                      [](JobControls& controls, bool on) { controls.setFinalizeDisc(on); }),
                  1, 1);
  grid->addWidget(addFlag(
                      "BurnRestoreKit", tr("Burn restore &kit installer"),
                      [](const Job& job) { return job.BurnRestoreKit; },
                      [](JobControls& controls, bool on) { controls.setBurnRestoreKit(on); }),
                  2, 0);
  grid->addWidget(
      addFlag(
          "AutoErase", tr("Automatically erase non-empty rewritable disc (CD-RW, DVD-RW, DVD+RW)"),
          [](const Job& job) { return job.AutoErase; },
          [](JobControls& controls, bool on) { controls.setAutoErase(on); }),
      2, 1);
  grid->addWidget(
      addFlag(
          "SkipError", tr("Automatically skip error file (Don't interrupt the backup action)"),
          [](const Job& job) { return job.SkipError; },
          [](JobControls& controls, bool on) { controls.setSkipError(on); }),
      3, 1);
  grid->setColumnStretch(1, 1);
  grid->setRowStretch(4, 1);
  return tab;
}

QWidget* JobOptionsView::dateFilter() {
  auto* whole = new QWidget(this);
  auto* row = new QHBoxLayout(whole);
  row->setContentsMargins(0, 0, 0, 0);
  auto* box = addFlag(
      "chkDateFilter", tr("Only files changed &within"),
      [](const Job& job) { return job.chkDateFilter; },
      [](JobControls& controls, bool on) { controls.setDateFilter(on); });
  auto* days = new QLineEdit(whole);
  days->setObjectName(QStringLiteral("txDateFilter"));
  days->setMaximumWidth(fontMetrics().averageCharWidth() * 8);
  auto* label = new QLabel(tr("days"), whole);
  label->setObjectName(QStringLiteral("lblDateFilter"));
  row->addWidget(box);
  row->addWidget(days);
  row->addWidget(label);
  row->addStretch();
  connect(days, &QLineEdit::textEdited, this, [this](const QString& text) {
    act([this, text] { main().jobControls.setDays(fromQt(text)); });
  });
  drawings_.emplace_back([this, days, label] {
    days->setEnabled(main().job.chkDateFilter);
    label->setEnabled(main().job.chkDateFilter);
    const QString text = toQt(main().job.txDateFilter);
    if (days->text() != text) days->setText(text);
  });
  return whole;
}

QWidget* JobOptionsView::filterTab() {
  auto* tab = new QWidget(this);
  auto* grid = new QGridLayout(tab);
  auto* include = addText("comboInclude", &Job::comboInclude, &JobControls::setInclude);
  auto* exclude = addText("comboExclude", &Job::comboExclude, &JobControls::setExclude);
  connect(exclude->lineEdit(), &QLineEdit::editingFinished, this,
          [this] { act([this] { main().jobControls.doLeaveExclude(); }); });
  const auto addRow = [this, tab, grid](int row, const QString& text, QWidget* field) {
    auto* caption = new QLabel(text, tab);
    caption->setBuddy(field);
    grid->addWidget(caption, row, 0);
    grid->addWidget(field, row, 1);
  };
  addRow(0, tr("In&clude files:"), include);
  addRow(1, tr("E&xclude files and folders:"), exclude);
  grid->addWidget(explanationLabel(tr("Patterns with * and ?, separated by \";\""), tab), 2, 1);
  grid->addWidget(dateFilter(), 3, 0, 1, 2);
  auto* attributes = new QHBoxLayout;
  attributes->addWidget(new QLabel(tr("File-attributes filter:  (Uncheck to exclude)"), tab));
  const QString captions[] = {tr("Read-&Only"), tr("H&idden"), tr("S&ystem"), tr("Com&pressed")};
  for (int box = 0; box < AttributeBoxes; ++box) {
    const QByteArray name = "chkAttribute" + QByteArray::number(box);
    attributes->addWidget(addFlag(
        name.constData(), captions[box],
        [box](const Job& job) { return job.chkAttribute[static_cast<std::size_t>(box)]; },
        [box](JobControls& controls, bool on) { controls.setAttribute(box, on); }));
  }
  attributes->addStretch();
  grid->addLayout(attributes, 4, 0, 1, 2);
  grid->setColumnStretch(1, 1);
  grid->setRowStretch(5, 1);
  return tab;
}

QWidget* JobOptionsView::splitTab() {
  auto* tab = new QWidget(this);
  auto* column = new QVBoxLayout(tab);
  auto* rules = addChoice("optSplitAndSpan",
                          {tr("D&on't split any file if possible"),
                           tr("&If a file is larger than the disc space remaining, put it on next "
                              "disc, or split it and "
                              "span across discs when:")},
                          &Job::optSplitAndSpan, &JobControls::setSplitAndSpan);
  for (QAbstractButton* button : rules->buttons()) column->addWidget(button);
  auto* grid = new QGridLayout;
  grid->setColumnMinimumWidth(0, fontMetrics().averageCharWidth() * 3);
  grid->addWidget(new QLabel(tr("the file is larger than"), tab), 0, 1);
  grid->addWidget(
      addSizes("FileSize", SplitFileMegabytes, &Job::FileSize, &JobControls::setFileSize), 0, 2);
  grid->addWidget(new QLabel(tr("and the disc free space remaining is more than"), tab), 1, 1);
  grid->addWidget(
      addSizes("DiscSize", SplitDiscMegabytes, &Job::DiscSize, &JobControls::setDiscSize), 1, 2);
  grid->setColumnStretch(3, 1);
  column->addLayout(grid);
  auto* help = namedButton("pbSplitHelp", tr("About Split-and-Span"), tab);
  connect(help, &QPushButton::clicked, this, [this] { context().showHelp("Split-and-Span"); });
  column->addWidget(help, 0, Qt::AlignLeft);
  column->addStretch();
  return tab;
}

void JobOptionsView::refresh() {
  const QString split = toQt(main().job.splitTabText());
  if (tabs_->tabText(SplitTab) != split) tabs_->setTabText(SplitTab, split);
  tabs_->setEnabled(mayBegin(Command::AddItems, main().state));
  for (const Drawing& draw : drawings_) draw();
}

}  // namespace korvenal::ui

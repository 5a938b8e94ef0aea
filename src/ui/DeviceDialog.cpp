#include "ui/DeviceDialog.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QShortcut>
#include <QStackedWidget>

#include "ui/DialogParts.h"
#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

namespace {

constexpr int MostErrors = 5;

QStringList toList(const std::vector<std::string>& texts) {
  QStringList list;
  for (const std::string& text : texts) list.append(toQt(text));
  return list;
}

QStringList errorCounts() {
  QStringList list;
  for (int count = 1; count <= MostErrors; ++count) list.append(QString::number(count));
  return list;
}

}  // namespace

DeviceDialog::DeviceDialog(frmDevice& form, const DialogServices& services, QWidget* parent)
    : FormDialog(form, parent),
      form_(form),
      services_(services),
      modes_(new QButtonGroup(this)),
      pages_(new QStackedWidget(this)) {
  setObjectName(QStringLiteral("frmDevice"));
  setWindowTitle(tr("Device Settings"));
  pages_->addWidget(singlePage());
  pages_->addWidget(multiPage());
  pages_->addWidget(autoloaderPage());
  pbRefresh_ = namedButton("pbRefresh", tr("&Refresh Drives"), this);
  pbRefresh_->setIcon(Theme::icon(QStringLiteral("view-refresh")));
  auto* help = namedButton("pbHelp", tr("&Help"), this);
  auto* ok = namedButton("pbOK", tr("&OK"), this);
  ok->setDefault(true);
  auto* column = new QVBoxLayout(this);
  column->addWidget(modePart());
  column->addWidget(pages_);
  column->addWidget(speedPart());
  column->addWidget(explanationLabel(tr("Every way out of this window keeps the settings."), this));
  column->addLayout(buttonRow({pbRefresh_, help}, {ok}));
  connect(pbRefresh_, &QPushButton::clicked, this, [this] { act([this] { form_.pbRefresh(); }); });
  connect(ok, &QPushButton::clicked, this, [this] {
    act([this] { form_.pbOK(); });
    focusMultiDrive();
  });
  const auto showHelp = [this] { services_.showHelp("Device Mode"); };
  connect(help, &QPushButton::clicked, this, showHelp);
  connect(new QShortcut(QKeySequence::HelpContents, this), &QShortcut::activated, this, showHelp);
  ok->setFocus();
}

QWidget* DeviceDialog::modePart() {
  auto* part = new QWidget(this);
  auto* row = new QHBoxLayout(part);
  row->setContentsMargins(0, 0, 0, 0);
  const struct {
    QString text;
    const char* icon;
  } modes[] = {{tr("&Single-drive"), "single-drive"},
               {tr("&Multiple-drive"), "multiple-drives"},
               {tr("&Autoloader"), "autoloader"}};
  for (int mode = 0; mode < 3; ++mode) {
    auto* option = new QRadioButton(modes[mode].text, part);
    option->setObjectName(QStringLiteral("OptDevice%1").arg(mode));
    option->setIcon(Theme::ownIcon(QLatin1String(modes[mode].icon)));
    modes_->addButton(option, mode);
    row->addWidget(option);
  }
  row->addStretch();
  connect(modes_, &QButtonGroup::idClicked, this,
          [this](int mode) { act([this, mode] { form_.OptDevice = mode; }); });
  return part;
}

void DeviceDialog::addDrive(QGridLayout& grid, const QString& caption, const QString& name,
                            const QString& buttons, int* choice) {
  const int row = grid.rowCount();
  auto* list = new QComboBox(this);
  list->setObjectName(name);
  list->setMinimumWidth(fontMetrics().averageCharWidth() * 38);
  auto* label = new QLabel(caption, this);
  label->setBuddy(list);
  auto* eject = new QPushButton(Theme::icon(QStringLiteral("media-eject")), tr("Eject"), this);
  eject->setObjectName(buttons.arg(QStringLiteral("Eject")));
  auto* close = new QPushButton(tr("Close"), this);
  close->setObjectName(buttons.arg(QStringLiteral("Close")));
  for (QPushButton* button : {eject, close}) button->setAutoDefault(false);
  grid.addWidget(label, row, 0);
  grid.addWidget(list, row, 1);
  grid.addWidget(eject, row, 2);
  grid.addWidget(close, row, 3);
  drives_.push_back({list, eject, close, choice});
  connect(list, &QComboBox::activated, this,
          [this, choice](int index) { act([choice, index] { *choice = index; }); });
  const auto moveTray = [this, choice](bool closing) {
    act([this, choice, closing] { form_.doDriveTray(*choice, closing); });
  };
  connect(eject, &QPushButton::clicked, this, [moveTray] { moveTray(false); });
  connect(close, &QPushButton::clicked, this, [moveTray] { moveTray(true); });
}

void DeviceDialog::addNumbers(QGridLayout& grid, const QString& caption, const char* name,
                              const QStringList& entries, int* value, int first) {
  const int row = grid.rowCount();
  auto* list = new QComboBox(this);
  list->setObjectName(QLatin1String(name));
  list->addItems(entries);
  auto* label = new QLabel(caption, this);
  label->setBuddy(list);
  grid.addWidget(label, row, 0);
  grid.addWidget(list, row, 1, Qt::AlignLeft);
  numbers_.push_back({list, value, first});
  connect(list, &QComboBox::activated, this, [this, value, first](int index) {
    act([value, index, first] { *value = index + first; });
  });
}

QCheckBox* DeviceDialog::addBox(QBoxLayout& column, const char* name, const QString& text,
                                const bool* value, std::function<void(bool)> change) {
  auto* box = new QCheckBox(text, this);
  box->setObjectName(QLatin1String(name));
  column.addWidget(box);
  boxes_.push_back({box, value});
  connect(box, &QCheckBox::toggled, this,
          [this, change = std::move(change)](bool on) { act([&change, on] { change(on); }); });
  return box;
}

QWidget* DeviceDialog::singlePage() {
  auto* part = new QGroupBox(tr("Single-drive"), this);
  auto* column = new QVBoxLayout(part);
  auto* grid = new QGridLayout;
  addDrive(*grid, tr("D&rive:"), QStringLiteral("singleDrive"), QStringLiteral("Single%1"),
           &form_.singleDrive);
  column->addLayout(grid);
  addBox(*column, "chkSingleEject", tr("&Eject disc tray at each prompt and when a disc is done"),
         &form_.chkSingleEject, [this](bool on) { form_.doCheckSingleEject(on); });
  addBox(*column, "chkSSkipEjectFirst", tr("But &not at the first prompt"),
         &form_.chkSSkipEjectFirst, [this](bool on) { form_.doCheckSingleSkipFirst(on); });
  column->addStretch();
  return part;
}

QWidget* DeviceDialog::multiPage() {
  auto* part = new QGroupBox(tr("Multiple-drive"), this);
  auto* column = new QVBoxLayout(part);
  auto* grid = new QGridLayout;
  for (std::size_t i = 0; i < form_.multiDrive.size(); ++i)
    addDrive(*grid, tr("Drive &%1:").arg(i + 1), QStringLiteral("multiDrive%1").arg(i),
             QStringLiteral("multi%1") + QString::number(i), &form_.multiDrive[i]);
  addNumbers(*grid, tr("Stop when so many discs &failed:"), "MultiErrorMax", errorCounts(),
             &form_.MultiErrorMax, 1);
  column->addLayout(grid);
  addBox(*column, "chkMultiEject", tr("&Eject disc trays at each prompt and when a disc is done"),
         &form_.chkMultiEject, [this](bool on) { form_.doCheckMultiEject(on); });
  addBox(*column, "chkMSkipEjectFirst", tr("But &not at the first prompt"),
         &form_.chkMSkipEjectFirst, [this](bool on) { form_.doCheckMultiSkipFirst(on); });
  column->addStretch();
  return part;
}

QWidget* DeviceDialog::autoloaderPage() {
  auto* part = new QGroupBox(tr("Autoloader"), this);
  auto* column = new QVBoxLayout(part);
  auto* grid = new QGridLayout;
  addDrive(*grid, tr("Autoloader Drive:"), QStringLiteral("AL01"), QStringLiteral("AL%1"),
           &form_.AL01);
  addNumbers(*grid, tr("Stop when so many discs &failed:"), "AutoloaderErrorMax", errorCounts(),
             &form_.AutoloaderErrorMax, 1);
  column->addLayout(grid);
  addBox(*column, "AutoloaderBadDisc", tr("&Put bad discs out apart"), &form_.AutoloaderBadDisc,
         [this](bool on) { form_.AutoloaderBadDisc = on; });
  column->addWidget(new QLabel(tr("Autoloader Command Line:"), this));
  auto* lines = new QGridLayout;
  const QString captions[] = {tr("Reset CD/DVD &Drive"), tr("&Load Disc"), tr("&Eject and Output"),
                              tr("Re&move Bad Disc"), tr("Further")};
  for (std::size_t i = 0; i < commands_.size(); ++i) {
    auto* edit = new QLineEdit(this);
    edit->setObjectName(QStringLiteral("AutoloaderCommand%1").arg(i));
    auto* label = new QLabel(captions[i], this);
    label->setBuddy(edit);
    lines->addWidget(label, static_cast<int>(i), 0);
    lines->addWidget(edit, static_cast<int>(i), 1);
    commands_[i] = edit;
    connect(edit, &QLineEdit::textEdited, this,
            [this, i](const QString& text) { form_.AutoloaderCommand[i] = fromQt(text); });
  }
  column->addLayout(lines);
  column->addWidget(explanationLabel(
      tr("The command lines are kept with the settings. No run of this program starts them."),
      this));
  column->addStretch();
  return part;
}

QWidget* DeviceDialog::speedPart() {
  auto* part = new QGroupBox(tr("Speed"), this);
  auto* row = new QHBoxLayout(part);
  const QStringList cd = toList(frmDevice::speedChoicesCD());
  const QStringList dvd = toList(frmDevice::speedChoicesDVD());
  auto* left = new QGridLayout;
  addNumbers(*left, tr("Write CD:"), "WriteSpeedCD", cd, &form_.WriteSpeedCD, 0);
  addNumbers(*left, tr("Read CD:"), "ReadSpeedCD", cd, &form_.ReadSpeedCD, 0);
  auto* right = new QGridLayout;
  addNumbers(*right, tr("Write DVD:"), "WriteSpeedDVD", dvd, &form_.WriteSpeedDVD, 0);
  addNumbers(*right, tr("Read DVD:"), "ReadSpeedDVD", dvd, &form_.ReadSpeedDVD, 0);
  row->addLayout(left);
  row->addLayout(right);
  row->addStretch();
  return part;
}

void DeviceDialog::refreshDrive(const DriveList& drive) {
  const QSignalBlocker quiet(drive.list);
  const QStringList choices = toList(form_.driveChoices);
  QStringList shown;
  for (int i = 0; i < drive.list->count(); ++i) shown.append(drive.list->itemText(i));
  if (shown != choices) {
    drive.list->clear();
    drive.list->addItems(choices);
  }
  drive.list->setCurrentIndex(*drive.choice);
  drive.eject->setEnabled(*drive.choice > 0);
  drive.close->setEnabled(*drive.choice > 0);
}

void DeviceDialog::focusMultiDrive() {
  if (form_.isClosed() || form_.focusedMultiDrive < 0) return;
  const auto* focused = &form_.multiDrive[static_cast<std::size_t>(form_.focusedMultiDrive)];
  for (const DriveList& drive : drives_)
    if (drive.choice == focused) drive.list->setFocus();
}

void DeviceDialog::refresh() {
  modes_->button(form_.OptDevice)->setChecked(true);
  pages_->setCurrentIndex(form_.OptDevice);
  for (const DriveList& drive : drives_) refreshDrive(drive);
  for (const NumberList& numbers : numbers_) {
    const QSignalBlocker quiet(numbers.list);
    numbers.list->setCurrentIndex(*numbers.value - numbers.first);
  }
  for (const Box& box : boxes_) {
    const QSignalBlocker quiet(box.box);
    box.box->setChecked(*box.value);
  }
  for (std::size_t i = 0; i < commands_.size(); ++i)
    if (commands_[i]->text() != toQt(form_.AutoloaderCommand[i]))
      commands_[i]->setText(toQt(form_.AutoloaderCommand[i]));
  pbRefresh_->setEnabled(form_.refreshEnabled);
}

}  // namespace korvenal::ui

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
#include "ui/DiscTexts.h"
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
  doBuild();
  connect(new QShortcut(QKeySequence::HelpContents, this), &QShortcut::activated, this,
          [this] { services_.showHelp("Device Mode"); });
}

/// In the order in which the window is read: that is the order of Tab, too.
void DeviceDialog::doBuild() {
  auto* column = new QVBoxLayout(this);
  column->addWidget(modePart());
  pages_->addWidget(singlePage());
  pages_->addWidget(multiPage());
  pages_->addWidget(autoloaderPage());
  column->addWidget(pages_, 1);
  column->addWidget(speedPart());
  column->addWidget(explanationLabel(tr("Every way out of this window keeps the settings."), this));
  column->addLayout(buttons());
}

QHBoxLayout* DeviceDialog::buttons() {
  pbRefresh_ = namedButton("pbRefresh", tr("&Refresh Drives"), this);
  pbRefresh_->setIcon(Theme::icon(QStringLiteral("view-refresh")));
  auto* help = namedButton("pbHelp", tr("&Help"), this);
  auto* ok = namedButton("pbOK", tr("&OK"), this);
  ok->setDefault(true);
  ok->setFocus();
  connect(pbRefresh_, &QPushButton::clicked, this, [this] { act([this] { form_.pbRefresh(); }); });
  connect(help, &QPushButton::clicked, this, [this] { services_.showHelp("Device Mode"); });
  connect(ok, &QPushButton::clicked, this, [this] {
    act([this] { form_.pbOK(); });
    focusMultiDrive();
  });
  return buttonRow({pbRefresh_, help}, {ok});
}

QWidget* DeviceDialog::modePart() {
  auto* part = new QWidget(this);
  auto* grid = new QGridLayout(part);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setHorizontalSpacing(fontMetrics().averageCharWidth() * 3);
  const struct {
    QString text;
    QString explanation;
    const char* icon;
  } modes[] = {{tr("&Single-drive"), tr("One drive takes disc after disc."), "single-drive"},
               {tr("M&ultiple-drive"), tr("Two to five drives work in turn."), "multiple-drives"},
               {tr("&Autoloader"), tr("A disc changer feeds the drive."), "autoloader"}};
  for (int mode = 0; mode < 3; ++mode) {
    auto* option = new QRadioButton(modes[mode].text, part);
    option->setObjectName(QStringLiteral("OptDevice%1").arg(mode));
    option->setIcon(Theme::ownIcon(QLatin1String(modes[mode].icon)));
    option->setIconSize({fontMetrics().height(), fontMetrics().height()});
    modes_->addButton(option, mode);
    grid->addWidget(option, 0, mode);
    grid->addWidget(explanationLabel(modes[mode].explanation, part), 1, mode, Qt::AlignTop);
    grid->setColumnStretch(mode, 1);
  }
  connect(modes_, &QButtonGroup::idClicked, this,
          [this](int mode) { act([this, mode] { form_.OptDevice = mode; }); });
  return part;
}

QLabel* DeviceDialog::buddyLabel(const QString& caption, QWidget* field) {
  auto* label = new QLabel(caption, this);
  label->setBuddy(field);
  return label;
}

QLabel* DeviceDialog::addDrive(const DriveCaptions& captions, int* choice) {
  auto* list = new QComboBox(this);
  list->setObjectName(captions.listName);
  list->setMinimumWidth(fontMetrics().averageCharWidth() * 30);
  auto* disc = explanationLabel({}, this);
  disc->setObjectName(captions.listName + QStringLiteral("Disc"));
  disc->setMinimumWidth(fontMetrics().averageCharWidth() * 24);
  const auto trayButton = [&](const QString& text, const char* name, bool closing) {
    auto* button = new QPushButton(text, this);
    button->setObjectName(captions.buttonPrefix + QLatin1String(name) + captions.number);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, choice, closing] {
      act([this, choice, closing] { form_.doDriveTray(*choice, closing); });
    });
    return button;
  };
  QPushButton* eject = trayButton(captions.eject, "Eject", false);
  eject->setIcon(Theme::icon(QStringLiteral("media-eject")));
  QPushButton* close = trayButton(captions.close, "Close", true);
  drives_.push_back({list, disc, eject, close, choice});
  connect(list, &QComboBox::activated, this,
          [this, choice](int index) { act([choice, index] { *choice = index; }); });
  return buddyLabel(captions.drive, list);
}

QComboBox* DeviceDialog::addNumbers(const char* name, const QStringList& entries, int* value,
                                    int first) {
  auto* list = new QComboBox(this);
  list->setObjectName(QLatin1String(name));
  list->addItems(entries);
  numbers_.push_back({list, value, first});
  connect(list, &QComboBox::activated, this, [this, value, first](int index) {
    act([value, index, first] { *value = index + first; });
  });
  return list;
}

QHBoxLayout* DeviceDialog::errorRow(const char* name, int* value) {
  QComboBox* list = addNumbers(name, errorCounts(), value, 1);
  auto* row = new QHBoxLayout;
  row->addWidget(buddyLabel(tr("Stop when so man&y discs failed:"), list));
  row->addWidget(list);
  row->addStretch();
  return row;
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
  auto* column = new QVBoxLayout;
  QLabel* caption = addDrive({.drive = tr("&Drive:"),
                              .eject = tr("E&ject"),
                              .close = tr("C&lose"),
                              .listName = QStringLiteral("singleDrive"),
                              .buttonPrefix = QStringLiteral("Single"),
                              .number = {}},
                             &form_.singleDrive);
  const DriveList& drive = drives_.back();
  auto* grid = new QGridLayout;
  grid->setColumnStretch(1, 1);
  grid->addWidget(caption, 0, 0);
  grid->addWidget(drive.list, 0, 1);
  grid->addWidget(drive.eject, 0, 2);
  grid->addWidget(drive.close, 0, 3);
  grid->addWidget(drive.disc, 1, 1, 1, 3);
  column->addLayout(grid);
  column->addStretch();
  addBox(*column, "chkSingleEject", tr("&Eject disc tray at each prompt and when a disc is done"),
         &form_.chkSingleEject, [this](bool on) { form_.doCheckSingleEject(on); });
  addBox(*column, "chkSSkipEjectFirst", tr("But &not at the first prompt"),
         &form_.chkSSkipEjectFirst, [this](bool on) { form_.doCheckSingleSkipFirst(on); });
  column->addStretch();
  column->addWidget(explanationLabel(
      tr("A drive that is missing in the list: connect it, then press Refresh Drives."), this));
  column->addStretch();
  auto* row = new QHBoxLayout(part);
  row->addWidget(
      iconLabel(Theme::ownIcon(QStringLiteral("single-drive")), fontMetrics().height() * 5, part),
      0, Qt::AlignTop);
  row->addSpacing(fontMetrics().averageCharWidth());
  row->addLayout(column, 1);
  return part;
}

QWidget* DeviceDialog::multiPage() {
  auto* part = new QGroupBox(tr("Multiple-drive"), this);
  auto* column = new QVBoxLayout(part);
  auto* grid = new QGridLayout;
  grid->setColumnStretch(2, 1);
  for (std::size_t i = 0; i < form_.multiDrive.size(); ++i) {
    QLabel* caption = addDrive({.drive = tr("Drive &%1:").arg(i + 1),
                                .eject = tr("Eject"),
                                .close = tr("Close"),
                                .listName = QStringLiteral("multiDrive%1").arg(i),
                                .buttonPrefix = QStringLiteral("multi"),
                                .number = QString::number(i)},
                               &form_.multiDrive[i]);
    placeRow(*grid, static_cast<int>(i), caption);
  }
  column->addLayout(grid);
  addBox(*column, "chkMultiEject", tr("&Eject disc trays at each prompt and when a disc is done"),
         &form_.chkMultiEject, [this](bool on) { form_.doCheckMultiEject(on); });
  addBox(*column, "chkMSkipEjectFirst", tr("But &not at the first prompt"),
         &form_.chkMSkipEjectFirst, [this](bool on) { form_.doCheckMultiSkipFirst(on); });
  column->addLayout(errorRow("MultiErrorMax", &form_.MultiErrorMax));
  column->addStretch();
  return part;
}

void DeviceDialog::placeRow(QGridLayout& grid, int row, QLabel* caption) {
  const DriveList& drive = drives_.back();
  int column = 0;
  for (QWidget* part :
       std::initializer_list<QWidget*>{caption, drive.list, drive.disc, drive.eject, drive.close})
    grid.addWidget(part, row, column++);
}

QWidget* DeviceDialog::autoloaderPage() {
  auto* part = new QGroupBox(tr("Autoloader"), this);
  auto* column = new QVBoxLayout(part);
  auto* grid = new QGridLayout;
  grid->setColumnStretch(2, 1);
  placeRow(*grid, 0,
           addDrive({.drive = tr("Au&toloader Drive:"),
                     .eject = tr("E&ject"),
                     .close = tr("Close"),
                     .listName = QStringLiteral("AL01"),
                     .buttonPrefix = QStringLiteral("AL"),
                     .number = {}},
                    &form_.AL01));
  column->addLayout(grid);
  QHBoxLayout* bounds = errorRow("AutoloaderErrorMax", &form_.AutoloaderErrorMax);
  addBox(*bounds, "AutoloaderBadDisc", tr("&Put bad discs out apart"), &form_.AutoloaderBadDisc,
         [this](bool on) { form_.AutoloaderBadDisc = on; });
  column->addLayout(bounds);
  column->addWidget(commandPart());
  column->addStretch();
  return part;
}

QWidget* DeviceDialog::commandPart() {
  auto* part = new QWidget(this);
  auto* grid = new QGridLayout(part);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->addWidget(new QLabel(tr("Autoloader Command Line:"), part), 0, 0, 1, 2);
  const QString captions[] = {tr("Reset CD/DVD &Drive"), tr("&Load Disc"), tr("&Eject and Output"),
                              tr("Re&move Bad Disc"), tr("&Further")};
  for (std::size_t i = 0; i < commands_.size(); ++i) {
    const int row = static_cast<int>(i) + 1;
    auto* edit = new QLineEdit(part);
    edit->setObjectName(QStringLiteral("AutoloaderCommand%1").arg(i));
    grid->addWidget(buddyLabel(captions[i], edit), row, 0);
    grid->addWidget(edit, row, 1);
    commands_[i] = edit;
    connect(edit, &QLineEdit::textEdited, this, [this, i](const QString& text) {
      act([this, i, &text] { form_.doSetCommand(i, fromQt(text)); });
    });
  }
  grid->addWidget(
      explanationLabel(
          tr("The command lines are kept with the settings. No run of this program starts them."),
          part),
      grid->rowCount(), 0, 1, 2);
  return part;
}

QWidget* DeviceDialog::speedPart() {
  auto* part = new QGroupBox(tr("Speed"), this);
  auto* grid = new QGridLayout(part);
  grid->setHorizontalSpacing(fontMetrics().averageCharWidth() * 3);
  const QStringList cd = toList(frmDevice::speedChoicesCD());
  const QStringList dvd = toList(frmDevice::speedChoicesDVD());
  const struct {
    QString caption;
    const char* name;
    const QStringList& entries;
    int* value;
  } lists[] = {{tr("&Write CD:"), "WriteSpeedCD", cd, &form_.WriteSpeedCD},
               {tr("Read &CD:"), "ReadSpeedCD", cd, &form_.ReadSpeedCD},
               {tr("Wr&ite DVD:"), "WriteSpeedDVD", dvd, &form_.WriteSpeedDVD},
               {tr("Read D&VD:"), "ReadSpeedDVD", dvd, &form_.ReadSpeedDVD}};
  int column = 0;
  for (const auto& each : lists) {
    QComboBox* list = addNumbers(each.name, each.entries, each.value, 0);
    grid->addWidget(buddyLabel(each.caption, list), 0, column);
    grid->addWidget(list, 1, column);
    grid->setColumnStretch(column++, 1);
  }
  grid->addWidget(
      explanationLabel(tr("A drive that is slower than that takes its fastest speed."), part), 2, 0,
      1, column);
  return part;
}

QString DeviceDialog::discText(int choice) const {
  if (!form_.isImageDrive(choice)) return {};
  const QString disc = discDescription(form_.discIn(choice));
  return form_.isOpen(choice) ? tr("%1 (tray open)").arg(disc) : disc;
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
  drive.disc->setText(discText(*drive.choice));
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

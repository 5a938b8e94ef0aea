#include "ui/LoadDiscDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QShortcut>
#include <algorithm>

#include "device/frmPickDisc.h"
#include "ui/DialogParts.h"
#include "ui/DiscMenu.h"
#include "ui/DiscTexts.h"
#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

/// What lies in a drive and the name it has on the shelf. The name gives way where there is no
/// room: its middle is left out.
class DriveLine : public ExplanationLabel {
 public:
  explicit DriveLine(QWidget* parent) : ExplanationLabel({}, parent) {
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    setMinimumWidth(fontMetrics().averageCharWidth() * LeastCharacters);
  }
  void setDisc(const ImageDisc& disc, bool isTrayOpen) {
    description_ = discDescription(disc);
    if (isTrayOpen) description_ += LoadDiscDialog::tr(", tray open");
    name_ = disc.file.empty() ? QString() : QStringLiteral(" \u2013 ") + toQt(shelfNameOf(disc));
    doFit();
  }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    ExplanationLabel::resizeEvent(event);
    doFit();
  }

 private:
  static constexpr int LeastCharacters = 52;

  void doFit() {
    const int room = width() - fontMetrics().horizontalAdvance(description_);
    const QString whole = description_ + name_;
    const QString fitting = description_ + fontMetrics().elidedText(name_, Qt::ElideMiddle, room);
    setText(fitting);
    setToolTip(fitting == whole ? QString() : whole);
    setAccessibleName(whole);
  }

  QString description_;
  QString name_;
};

namespace {

constexpr int SmallIconPixels = 20;

QString pictureOf(int deviceMode) {
  if (deviceMode == 1) return QStringLiteral("multiple-drives");
  return deviceMode == 2 ? QStringLiteral("autoloader") : QStringLiteral("single-drive");
}

/// '&' of a name is no mark of a key.
QString unmarked(QString text) {
  return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

const char* topicOf(int purpose) {
  if (purpose == WorkerBurn) return "Backup Window";
  return purpose == WorkerErase ? "Erase Rewritable Disc" : "Restore Window";
}

void fillNumbers(QComboBox& list, int count, int chosen) {
  const QSignalBlocker quiet(list);
  if (list.count() != count) {
    list.clear();
    for (int number = 1; number <= count; ++number) list.addItem(QString::number(number));
  }
  list.setCurrentIndex(chosen - 1);
}

}  // namespace

LoadDiscDialog::LoadDiscDialog(frmLoadDisc& form, const DialogServices& services, QWidget* parent)
    : FormDialog(form, parent), form_(form) {
  setObjectName(QStringLiteral("frmLoadDisc"));
  setWindowTitle(tr("Load Disc"));
  sentence_ = wrappedLabel({}, 66, this);
  sentence_->setObjectName(QStringLiteral("DESC0"));
  QFont large = sentence_->font();
  large.setPointSizeF(large.pointSizeF() * 1.2);
  sentence_->setFont(large);

  auto* column = new QVBoxLayout(this);
  column->setSpacing(column->spacing() * 2);
  column->addLayout(withIcon(*this, QStringLiteral("media-optical"), sentence_));
  doBuildRange(*column);
  doBuildDrives(*column);
  DriveAction_ = explanationLabel({}, this);
  DriveAction_->setObjectName(QStringLiteral("DriveAction"));
  column->addWidget(DriveAction_);
  column->addStretch();
  doBuildButtons(*column);
  pbOK_->setFocus();
  connect(new QShortcut(QKeySequence::HelpContents, this), &QShortcut::activated, this,
          [showHelp = services.showHelp, topic = topicOf(form.purpose())] { showHelp(topic); });
}

void LoadDiscDialog::doBuildRange(QVBoxLayout& column) {
  BackupDisc_ = new QWidget(this);
  auto* row = new QHBoxLayout(BackupDisc_);
  row->setContentsMargins(0, 0, 0, 0);
  fromCaption_ = new QLabel(BackupDisc_);
  FromDisc_ = new QComboBox(BackupDisc_);
  FromDisc_->setObjectName(QStringLiteral("FromDisc"));
  toCaption_ = new QLabel(BackupDisc_);
  ToDisc_ = new QComboBox(BackupDisc_);
  ToDisc_->setObjectName(QStringLiteral("ToDisc"));
  fromCaption_->setBuddy(FromDisc_);
  toCaption_->setBuddy(ToDisc_);
  for (QWidget* part :
       std::initializer_list<QWidget*>{fromCaption_, FromDisc_, toCaption_, ToDisc_})
    row->addWidget(part);
  row->addStretch();
  column.addWidget(BackupDisc_);
  connect(FromDisc_, &QComboBox::activated, this,
          [this](int index) { act([this, index] { form_.doChooseFromDisc(index + 1); }); });
  connect(ToDisc_, &QComboBox::activated, this,
          [this](int index) { act([this, index] { form_.ToDisc = index + 1; }); });

  ckSkipBlank_ = new QCheckBox(tr("S&kip discs that are blank already"), this);
  ckSkipBlank_->setObjectName(QStringLiteral("ckSkipBlank"));
  connect(ckSkipBlank_, &QCheckBox::toggled, this,
          [this](bool on) { act([this, on] { form_.ckSkipBlank = on; }); });
  column.addWidget(ckSkipBlank_);

  InfoIcon_ = iconLabel(Theme::icon(QStringLiteral("dialog-information")), SmallIconPixels, this);
  DiscInfo_ = wrappedLabel({}, 50, this);
  DiscInfo_->setObjectName(QStringLiteral("DiscInfo"));
  auto* hint = new QHBoxLayout;
  hint->addWidget(InfoIcon_, 0, Qt::AlignTop);
  hint->addWidget(DiscInfo_, 1);
  column.addLayout(hint);
  MissingDisc_ = wrappedLabel({}, 50, this);
  MissingDisc_->setObjectName(QStringLiteral("MissingDisc"));
  column.addWidget(MissingDisc_);
}

void LoadDiscDialog::doBuildDrives(QVBoxLayout& column) {
  vsDrive_ = new QWidget(this);
  vsDrive_->setObjectName(QStringLiteral("vsDrive"));
  // Where the focus rests after a tray has moved: a key typed there moves none again.
  vsDrive_->setFocusPolicy(Qt::ClickFocus);
  auto* grid = new QGridLayout(vsDrive_);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setVerticalSpacing(0);
  grid->setColumnStretch(0, 1);
  for (int row = 0; row < frmLoadDisc::MaxDrives; ++row) doBuildDrive(*grid, row);
  column.addWidget(vsDrive_);
  noDrive_ = explanationLabel(
      tr("No drive is ready for use. The device settings tell which drives there are."), this);
  column.addWidget(noDrive_);
}

void LoadDiscDialog::doBuildDrive(QGridLayout& grid, int row) {
  DriveRow& drive = drives_[static_cast<std::size_t>(row)];
  const auto numbered = [this, row](const char* name, const QString& text) {
    auto* button = namedButton(name, text, vsDrive_);
    button->setObjectName(QLatin1String(name) + QString::number(row));
    return button;
  };
  drive.name = new QLabel(vsDrive_);
  drive.name->setTextFormat(Qt::PlainText);
  drive.disc = new DriveLine(vsDrive_);
  drive.disc->setObjectName(QStringLiteral("disc%1").arg(row));
  drive.tray = numbered("tray", tr("Change Disc"));
  drive.tray->setToolTip(tr("Puts another disc into this image drive"));
  drive.tray->setMenu(new DiscMenu(
      form_, row, [this](const auto& wish) { act(wish); }, drive.tray));
  drive.eject = numbered("multiEject", tr("Eject"));
  drive.eject->setIcon(Theme::icon(QStringLiteral("media-eject")));
  drive.close = numbered("multiClose", tr("Close"));
  connect(drive.eject, &QPushButton::clicked, this, [this, row] {
    act([this, row] { form_.multiEject(row); });
    vsDrive_->setFocus();
  });
  connect(drive.close, &QPushButton::clicked, this, [this, row] {
    act([this, row] { form_.multiClose(row); });
    vsDrive_->setFocus();
  });
  auto* texts = new QVBoxLayout;
  texts->setSpacing(0);
  texts->addWidget(drive.name);
  texts->addWidget(drive.disc);
  texts->setContentsMargins(0, fontMetrics().height() / 4, 0, fontMetrics().height() / 4);
  grid.addLayout(texts, row, 0);
  grid.addWidget(drive.tray, row, 1);
  grid.addWidget(drive.eject, row, 2);
  grid.addWidget(drive.close, row, 3);
}

void LoadDiscDialog::doBuildButtons(QVBoxLayout& column) {
  pbSetDevice_ = namedButton("pbSetDevice", tr("Device Se&ttings..."), this);
  pbEject_ = namedButton("pbEject", tr("Eject &All"), this);
  pbCloseTray_ = namedButton("pbCloseTray", tr("Close A&ll"), this);
  pbStop_ = namedButton("pbStop", {}, this);
  pbOK_ = namedButton("pbOK", tr("&OK"), this);
  pbOK_->setDefault(true);
  column.addLayout(buttonRow({pbSetDevice_, pbEject_, pbCloseTray_}, {pbStop_, pbOK_}));
  const auto onPress = [this](QPushButton* button, void (frmLoadDisc::*deed)(), QWidget* focus) {
    connect(button, &QPushButton::clicked, this, [this, deed, focus] {
      act([this, deed] { (form_.*deed)(); });
      // Buttons are disabled while drives work, and the focus would end at the one that gives up.
      focus->setFocus();
    });
  };
  onPress(pbSetDevice_, &frmLoadDisc::pbSetDevice, pbOK_);
  onPress(pbEject_, &frmLoadDisc::pbEject, vsDrive_);
  onPress(pbCloseTray_, &frmLoadDisc::pbCloseTray, vsDrive_);
  onPress(pbStop_, &frmLoadDisc::pbStop, pbOK_);
  onPress(pbOK_, &frmLoadDisc::pbOK, pbOK_);
}

bool LoadDiscDialog::isMnemonicFree(QChar letter) const {
  const std::initializer_list<const QAbstractButton*> buttons = {
      pbSetDevice_, pbEject_, pbCloseTray_, pbStop_, pbOK_, ckSkipBlank_};
  return std::none_of(buttons.begin(), buttons.end(), [letter](const QAbstractButton* button) {
    return button->text().contains(QLatin1Char('&') + letter, Qt::CaseInsensitive);
  });
}

void LoadDiscDialog::doRefreshDrive(int row) {
  const DriveRow& drive = drives_[static_cast<std::size_t>(row)];
  const frmLoadDisc::DriveButtons& buttons = form_.driveButtons[static_cast<std::size_t>(row)];
  const bool image = buttons.shown && form_.isImageDrive(row);
  const QString letter = toQt(form_.vsDrive.text(row + 1, 0));
  // The key of its letter leads to the drive.
  const bool marked = !letter.isEmpty() && isMnemonicFree(letter.front());
  drive.name->setBuddy(image ? static_cast<QWidget*>(drive.tray) : drive.eject);
  drive.name->setText(QStringLiteral("%1%2  %3")
                          .arg(marked ? QStringLiteral("&") : QString(), letter,
                               unmarked(toQt(form_.vsDrive.text(row + 1, 1)))));
  if (image) drive.disc->setDisc(form_.discInTray(row), form_.isTrayOpen(row));
  drive.eject->setAccessibleName(tr("Eject %1").arg(letter));
  drive.close->setAccessibleName(tr("Close %1").arg(letter));
  drive.tray->setAccessibleName(tr("Change disc in %1").arg(letter));
  for (QWidget* part : std::initializer_list<QWidget*>{drive.name, drive.eject, drive.close})
    part->setVisible(buttons.shown);
  for (QWidget* part : std::initializer_list<QWidget*>{drive.tray, drive.disc})
    part->setVisible(image);
  drive.tray->setEnabled(form_.commandsEnabled);
  drive.eject->setEnabled(buttons.enabled);
  drive.close->setEnabled(buttons.enabled);
}

void LoadDiscDialog::doRefreshRange() {
  BackupDisc_->setVisible(form_.BackupDiscShown);
  fromCaption_->setText(toQt(form_.DESC[1]));
  toCaption_->setText(toQt(form_.DESC[2]));
  toCaption_->setVisible(form_.ToDiscShown);
  ToDisc_->setVisible(form_.ToDiscShown);
  fillNumbers(*FromDisc_, form_.discChoices, form_.FromDisc);
  fillNumbers(*ToDisc_, form_.discChoices, form_.ToDisc);
}

void LoadDiscDialog::refreshMissing() {
  MissingDisc_->setVisible(!form_.MissingDisc.empty());
  MissingDisc_->setText(toQt(form_.MissingDisc));
  QPalette colors = palette();
  colors.setColor(QPalette::WindowText, Theme::eventText(EventStyle::Color::Red, colors));
  MissingDisc_->setPalette(colors);
}

void LoadDiscDialog::refresh() {
  sentence_->setText(toQt(form_.DESC[0]));
  doRefreshRange();
  const QSignalBlocker quiet(ckSkipBlank_);
  ckSkipBlank_->setVisible(form_.ckSkipBlankShown);
  ckSkipBlank_->setChecked(form_.ckSkipBlank);
  InfoIcon_->setVisible(!form_.DiscInfo.empty());
  DiscInfo_->setVisible(!form_.DiscInfo.empty());
  DiscInfo_->setText(toQt(form_.DiscInfo));
  refreshMissing();
  DriveAction_->setText(toQt(form_.DriveAction));
  noDrive_->setVisible(form_.isWithoutDrive());
  pbEject_->setVisible(form_.trayButtonsShown);
  pbCloseTray_->setVisible(form_.trayButtonsShown);
  pbSetDevice_->setIcon(Theme::ownIcon(pictureOf(form_.deviceMode)));
  pbStop_->setText(toQt(form_.pbStopCaption));
  for (QPushButton* button : {pbOK_, pbEject_, pbCloseTray_})
    button->setEnabled(form_.commandsEnabled);
  // Behind the buttons, whose keys the drives leave alone.
  for (int row = 0; row < frmLoadDisc::MaxDrives; ++row) doRefreshDrive(row);
}

}  // namespace korvenal::ui

#include "ui/LoadDiscDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDesktopServices>
#include <QGridLayout>
#include <QMenu>
#include <QMessageBox>
#include <QToolButton>
#include <QUrl>
#include <algorithm>

#include "ui/DialogParts.h"
#include "ui/DiscTexts.h"
#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

namespace {

constexpr int SmallIconPixels = 20;
/// So many discs of the shelf stand in a menu; the others are picked as files.
constexpr std::size_t MostShelfEntries = 25;
constexpr std::int64_t UsualCapacity = 0;
const std::string BlankName = "Disc";

QString pictureOf(int deviceMode) {
  if (deviceMode == 1) return QStringLiteral("multiple-drives");
  return deviceMode == 2 ? QStringLiteral("autoloader") : QStringLiteral("single-drive");
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

LoadDiscDialog::LoadDiscDialog(frmLoadDisc& form, QWidget* parent)
    : FormDialog(form, parent), form_(form) {
  setObjectName(QStringLiteral("frmLoadDisc"));
  setWindowTitle(tr("Load Disc"));
  sentence_ = wrappedLabel({}, 58, this);
  sentence_->setObjectName(QStringLiteral("DESC0"));
  QFont large = sentence_->font();
  large.setPointSizeF(large.pointSizeF() * 1.2);
  sentence_->setFont(large);

  auto* column = new QVBoxLayout(this);
  column->setSpacing(column->spacing() * 2);
  column->addLayout(withIcon(*this, QStringLiteral("media-optical"), sentence_));
  doBuildRange(*column);
  auto* grid = new QGridLayout;
  doBuildDrives(*grid);
  column->addLayout(grid);
  DriveAction_ = explanationLabel({}, this);
  DriveAction_->setObjectName(QStringLiteral("DriveAction"));
  column->addWidget(DriveAction_);
  column->addStretch();
  doBuildButtons(*column);
  pbOK_->setFocus();
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
}

void LoadDiscDialog::doBuildDrives(QGridLayout& grid) {
  grid.setColumnStretch(1, 1);
  for (int row = 0; row < frmLoadDisc::MaxDrives; ++row) {
    DriveRow& drive = drives_[static_cast<std::size_t>(row)];
    const auto numbered = [this, row](const char* name, const QString& text) {
      auto* button = namedButton(name, text, this);
      button->setObjectName(QLatin1String(name) + QString::number(row));
      return button;
    };
    drive.name = new QLabel(this);
    drive.name->setTextFormat(Qt::PlainText);
    drive.disc = explanationLabel({}, this);
    drive.disc->setObjectName(QStringLiteral("disc%1").arg(row));
    drive.tray = new QToolButton(this);
    drive.tray->setObjectName(QStringLiteral("tray%1").arg(row));
    drive.tray->setText(tr("Disc"));
    drive.tray->setToolTip(tr("Puts another disc into this image drive"));
    drive.tray->setPopupMode(QToolButton::InstantPopup);
    auto* menu = new QMenu(drive.tray);
    menu->setObjectName(QStringLiteral("trayMenu%1").arg(row));
    drive.tray->setMenu(menu);
    connect(menu, &QMenu::aboutToShow, this, [this, menu, row] { doFillTrayMenu(*menu, row); });
    drive.eject = numbered("multiEject", tr("Eject"));
    drive.eject->setIcon(Theme::icon(QStringLiteral("media-eject")));
    drive.close = numbered("multiClose", tr("Close"));
    connect(drive.eject, &QPushButton::clicked, this,
            [this, row] { act([this, row] { form_.multiEject(row); }); });
    connect(drive.close, &QPushButton::clicked, this,
            [this, row] { act([this, row] { form_.multiClose(row); }); });
    grid.addWidget(drive.name, row, 0);
    grid.addWidget(drive.disc, row, 1);
    grid.addWidget(drive.tray, row, 2);
    grid.addWidget(drive.eject, row, 3);
    grid.addWidget(drive.close, row, 4);
  }
}

void LoadDiscDialog::doBuildButtons(QVBoxLayout& column) {
  pbSetDevice_ = namedButton("pbSetDevice", tr("&Device..."), this);
  pbEject_ = namedButton("pbEject", tr("&Eject All"), this);
  pbCloseTray_ = namedButton("pbCloseTray", tr("&Close All"), this);
  pbStop_ = namedButton("pbStop", {}, this);
  pbOK_ = namedButton("pbOK", tr("&OK"), this);
  pbOK_->setDefault(true);
  column.addLayout(buttonRow({pbSetDevice_, pbEject_, pbCloseTray_}, {pbStop_, pbOK_}));
  connect(pbSetDevice_, &QPushButton::clicked, this,
          [this] { act([this] { form_.pbSetDevice(); }); });
  connect(pbEject_, &QPushButton::clicked, this, [this] { act([this] { form_.pbEject(); }); });
  connect(pbCloseTray_, &QPushButton::clicked, this,
          [this] { act([this] { form_.pbCloseTray(); }); });
  connect(pbStop_, &QPushButton::clicked, this, [this] { act([this] { form_.pbStop(); }); });
  connect(pbOK_, &QPushButton::clicked, this, [this] { act([this] { form_.pbOK(); }); });
}

void LoadDiscDialog::doPutIn(const std::function<bool()>& change) {
  bool done = false;
  act([&] { done = change(); });
  if (!done) QMessageBox::warning(this, windowTitle(), tr("That disc cannot go in now."));
}

void LoadDiscDialog::doFillTrayMenu(QMenu& menu, int row) {
  menu.clear();
  QMenu* blank = menu.addMenu(tr("&New Blank Disc"));
  for (const std::uint8_t type : blankDiscTypes()) {
    blank->addAction(discTypeText(type), this, [this, row, type] {
      doPutIn(
          [this, row, type] { return form_.doInsertBlank(row, type, BlankName, UsualCapacity); });
    });
  }
  doFillShelfMenu(*menu.addMenu(tr("Disc from the &Shelf")), row);
  const ImageDisc disc = form_.discInTray(row);
  QAction* out = menu.addAction(tr("&Take Out"), this, [this, row] {
    doPutIn([this, row] { return form_.doTakeOut(row); });
  });
  QAction* show = menu.addAction(tr("Show in the &File Manager"), this, [disc] {
    const QString file = toQt(disc.file);
    QDesktopServices::openUrl(QUrl::fromLocalFile(file.section(QLatin1Char('/'), 0, -2)));
  });
  out->setEnabled(!disc.file.empty());
  show->setEnabled(!disc.file.empty());
}

void LoadDiscDialog::doFillShelfMenu(QMenu& menu, int row) {
  std::vector<ImageDisc> discs = form_.discsOnShelf();
  std::sort(discs.begin(), discs.end(),
            [](const ImageDisc& a, const ImageDisc& b) { return a.modified > b.modified; });
  if (discs.size() > MostShelfEntries) discs.resize(MostShelfEntries);
  for (const ImageDisc& disc : discs) {
    const QString name = toQt(disc.file).section(QLatin1Char('/'), -1);
    menu.addAction(QStringLiteral("%1  (%2)").arg(name, discDescription(disc)), this,
                   [this, row, file = disc.file] {
                     doPutIn([this, row, file] { return form_.doInsertFromShelf(row, file); });
                   });
  }
  menu.setEnabled(!discs.empty());
}

void LoadDiscDialog::doRefreshDrive(int row) {
  const DriveRow& drive = drives_[static_cast<std::size_t>(row)];
  const frmLoadDisc::DriveButtons& buttons = form_.driveButtons[static_cast<std::size_t>(row)];
  const bool image = buttons.shown && form_.isImageDrive(row);
  drive.name->setText(QStringLiteral("%1  %2").arg(toQt(form_.vsDrive.text(row + 1, 0)),
                                                   toQt(form_.vsDrive.text(row + 1, 1))));
  drive.disc->setText(image ? discDescription(form_.discInTray(row)) : QString());
  for (QWidget* part :
       std::initializer_list<QWidget*>{drive.name, drive.disc, drive.eject, drive.close})
    part->setVisible(buttons.shown);
  drive.tray->setVisible(image);
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

void LoadDiscDialog::refresh() {
  sentence_->setText(toQt(form_.DESC[0]));
  doRefreshRange();
  const QSignalBlocker quiet(ckSkipBlank_);
  ckSkipBlank_->setVisible(form_.ckSkipBlankShown);
  ckSkipBlank_->setChecked(form_.ckSkipBlank);
  InfoIcon_->setVisible(!form_.DiscInfo.empty());
  DiscInfo_->setVisible(!form_.DiscInfo.empty());
  DiscInfo_->setText(toQt(form_.DiscInfo));
  DriveAction_->setText(toQt(form_.DriveAction));
  for (int row = 0; row < frmLoadDisc::MaxDrives; ++row) doRefreshDrive(row);
  pbEject_->setVisible(form_.trayButtonsShown);
  pbCloseTray_->setVisible(form_.trayButtonsShown);
  pbSetDevice_->setIcon(Theme::ownIcon(pictureOf(form_.deviceMode)));
  pbStop_->setText(toQt(form_.pbStopCaption));
  for (QPushButton* button : {pbOK_, pbEject_, pbCloseTray_})
    button->setEnabled(form_.commandsEnabled);
}

}  // namespace korvenal::ui

#include "Tour.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTabWidget>
#include <QTreeView>

#include "SampleData.h"
#include "core/Workspace.h"
#include "platform/Profile.h"
#include "restore/frmReadLog.h"
#include "ui/Texts.h"

namespace korvenal::tools {

namespace {

Workspace workspaceBelow(const QString& work) {
  const std::string app = ui::fromQt(work) + "app/";
  Workspace places = Workspace::below(app, app + "BIN/", ui::fromQt(work));
  places.TempFolder = ui::fromQt(work) + "scratch/";
  return places;
}

}  // namespace

Tour::Tour(const QString& work, const QString& pictures) : work_(work), camera_(pictures) {
  makeSampleData(work_ + QStringLiteral("ann/"));
  LinuxFiles files(nullptr);
  const Workspace places = workspaceBelow(work_);
  files.doCreateFolderPath(places.applicationFolder);
  files.doCreateFolderPath(places.TempFolder);
  files.doCreateFolderPath(ui::fromQt(work_) + "Restored");
  Profile profile(files, places.gSettingsFile);
  profile.doWriteProfile("Browser", "Default", sample("Photos 2025/Sea"));
  platform_ = std::make_unique<LinuxPlatform>(LinuxPlatform::Places{
      .applicationFolder = places.applicationFolder,
      .imageDrives = {.folder = places.applicationFolder + "Discs/", .drives = 1, .feeder = true}});
  const Ports ports = platform_->ports(desktop_);
  program_ = std::make_unique<frmMain>(ports, places);
  life_ = std::make_unique<Lifecycle>(*program_, desktop_, tray_);
  window_ = std::make_unique<ui::MainWindow>(*program_, *life_, desktop_, ports);
  guide_.window = window_.get();
}

std::string Tour::sample(const char* name) const {
  return ui::fromQt(work_) + "ann/" + name;
}

void Tour::show(const QString& picture) {
  window_->refresh();
  camera_.take(*window_, picture);
}

void Tour::press(const char* button) {
  if (!Guide::press(*window_, QLatin1String(button))) qWarning("Nothing to press: %s", button);
}

void Tour::expect(const char* dialog, const QString& picture, const QString& button) {
  const QString name = QLatin1String(dialog);
  guide_.at(name, [this, name, picture, button](QWidget& shown) {
    guide_.forget(name);
    QApplication::processEvents();
    camera_.take(shown, picture);
    if (!Guide::press(shown, button)) shown.close();
  });
}

int Tour::run() {
  doFirstStart();
  doComposeJob();
  doTakeJobDialogs();
  doBackup();
  doRestore();
  doTakeIndexChoice();
  doErase();
  doTakeTheRest();
  return camera_.taken();
}

void Tour::doFirstStart() {
  guide_.at(QStringLiteral("frmDevice"), [this](QWidget& settings) {
    guide_.forget(QStringLiteral("frmDevice"));
    camera_.take(settings, QStringLiteral("device-settings"));
    Guide::press(settings, QStringLiteral("OptDevice1"));
    camera_.take(settings, QStringLiteral("device-settings-several"));
    Guide::press(settings, QStringLiteral("OptDevice0"));
    Guide::press(settings, QStringLiteral("pbOK"));
  });
  life_->doStart();
  window_->showNormal();
  window_->resize(1040, 740);
  show(QStringLiteral("start-first"));
}

void Tour::doComposeJob() {
  act([this] { program_->doChangeTask(BackupTask); });
  show(QStringLiteral("job-empty"));
  act([this] {
    program_->jobControls.setJobName("Family");
    program_->jobControls.setDiscType(0);
    program_->addItems.doDropItems({sample("Photos 2025"), sample("Photos 2026"),
                                    sample("Documents"), sample("Music"),
                                    sample("Films/Summer at the lake.mkv"), sample("notes.txt")});
    int folder = 0;
    program_->addItems.doCreateItem(folder, "Archive of the club", "/mnt/club/Archive");
  });
  show(QStringLiteral("job"));
  for (auto* tabs : window_->findChildren<QTabWidget*>(QStringLiteral("OptionsTab"))) {
    for (int tab = 1; tab < tabs->count(); ++tab) {
      tabs->setCurrentIndex(tab);
      show(QStringLiteral("job-options-%1").arg(tab));
    }
    tabs->setCurrentIndex(0);
  }
}

void Tour::doTakeJobDialogs() {
  guide_.at(QStringLiteral("frmBrowse"), [this](QWidget& dialog) {
    guide_.forget(QStringLiteral("frmBrowse"));
    Guide::press(dialog, QStringLiteral("SelectAll"));
    // The folders of this machine are nobody's business.
    for (auto* folders : dialog.findChildren<QTreeView*>(QStringLiteral("folders")))
      folders->setRootIndex(folders->currentIndex().parent().parent());
    camera_.take(dialog, QStringLiteral("browse"));
    dialog.close();
  });
  press("PBAddFiles");
  expect("frmCreateItem", QStringLiteral("create-item"), QStringLiteral("pbCancel"));
  press("pbCreateItem");
  // A file that no disc takes is asked about while nothing is to be split.
  act([this] { program_->jobControls.setSplitAndSpan(0); });
  expect("frmSplit", QStringLiteral("split"), QStringLiteral("pbSplitIt"));
  press("pbEstimate");
  act([this] { program_->jobControls.setSplitAndSpan(1); });
  expect("frmEstimateInfo", QStringLiteral("estimate"), QStringLiteral("pbClose"));
  press("pbEstimate");
  show(QStringLiteral("job-estimated"));
}

void Tour::doBackup() {
  press("PBNext0");
  show(QStringLiteral("backup-ready"));
  expect("frmNotice", QStringLiteral("notice"), QStringLiteral("pbOK"));
  expect("frmLoadDisc", QStringLiteral("load-disc"), QStringLiteral("pbOK"));
  bool taken = false;
  guide_.onRun = [this, &taken](QWidget& window) {
    const Progress& progress = program_->grids.etProgress[0];
    if (taken || program_->backup.request().DiscsBurned < 1 || progress.bytesTotal == 0 ||
        progress.bar < 35 || progress.bar > 80)
      return;
    taken = true;
    camera_.take(window, QStringLiteral("backup-running"));
  };
  press("PBNext0");
  guide_.onRun = nullptr;
  show(QStringLiteral("backup-finished"));
  act([this] { program_->grids.doShowDiscReport(1); });
  for (auto* tabs : window_->findChildren<QTabWidget*>(QStringLiteral("RunTab0"))) {
    for (int tab = 1; tab < tabs->count(); ++tab) {
      tabs->setCurrentIndex(tab);
      show(QStringLiteral("backup-tab-%1").arg(tab));
    }
    tabs->setCurrentIndex(0);
  }
  act([this] { program_->job.doMarkChanged(false); });
}

void Tour::doRestore() {
  guide_.at(QStringLiteral("messageBox"), [this](QWidget& box) {
    guide_.forget(QStringLiteral("messageBox"));
    camera_.take(box, QStringLiteral("question"));
    Guide::press(box, QStringLiteral("No"));
  });
  act([this] {
    program_->restorePage.txRestoreTo = ui::fromQt(work_) + "Restored";
    program_->doChangeTask(RestoreTask);
  });
  act([this] {
    program_->restorePage.txRestoreTo = ui::fromQt(work_) + "Restored";
    program_->selection.pbExpand();
    program_->selection.doSelectMatching("Sea");
  });
  show(QStringLiteral("restore"));
  expect("frmFind", QStringLiteral("find"), QStringLiteral("pbCancel"));
  press("pbFind");
  press("PBNext1");
  show(QStringLiteral("restore-ready"));
  press("PBNext1");
  show(QStringLiteral("restore-finished"));
  expect("frmReplace", QStringLiteral("replace"), QStringLiteral("pbReplaceAll"));
  press("PBNext1");
}

void Tour::doTakeIndexChoice() {
  expect("frmReadLog", QStringLiteral("choose-index"), QStringLiteral("pbCancel"));
  frmReadLog form({{"V:", "Family(2026-11-20-18-30-F)"}, {"V:", "Letters(2026-11-21-09-05-D)"}},
                  [](const FoundIndex&) {});
  desktop_.doShowModal(form);
}

void Tour::doPickOtherDisc(QWidget& prompt) {
  const QString name = QStringLiteral("frmLoadDisc");
  guide_.at(name, [](QWidget&) {});  // until the list is open
  guide_.at(QStringLiteral("frmPickDisc"), [this, name](QWidget& list) {
    guide_.forget(QStringLiteral("frmPickDisc"));
    camera_.take(list, QStringLiteral("pick-disc"));
    guide_.at(name, [this, name](QWidget& again) {
      guide_.forget(name);
      Guide::press(again, QStringLiteral("pbStop"));
    });
    Guide::press(list, QStringLiteral("pbCancel"));
  });
  auto* menu = prompt.findChild<QMenu*>(QStringLiteral("trayMenu0"));
  emit menu->aboutToShow();
  auto* other = menu->findChild<QAction*>(QStringLiteral("otherDisc0"));
  // Behind this look: the guide does not look while it is looking.
  QMetaObject::invokeMethod(other, &QAction::trigger, Qt::QueuedConnection);
}

void Tour::doErase() {
  act([this] { program_->doChangeTask(EraseTask); });
  show(QStringLiteral("erase"));
  guide_.at(QStringLiteral("frmLoadDisc"), [this](QWidget& prompt) {
    camera_.take(prompt, QStringLiteral("load-disc-to-erase"));
    doPickOtherDisc(prompt);
  });
  press("PBNext2");
}

void Tour::doTakeTheRest() {
  expect("frmDefault", QStringLiteral("default-options"), QStringLiteral("pbCancel"));
  act([this] { program_->doDefault(); });
  act([this] { program_->doChangeTask(ScheduleTask); });
  show(QStringLiteral("schedule"));
  expect("frmAbout", QStringLiteral("about"), QStringLiteral("pbOK"));
  for (auto* action : window_->findChildren<QAction*>(QStringLiteral("mnAbout"))) action->trigger();
  act([this] { program_->doChangeTask(StartTask); });
  show(QStringLiteral("start"));
}

}  // namespace korvenal::tools

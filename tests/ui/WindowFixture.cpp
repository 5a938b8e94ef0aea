#include "ui/WindowFixture.h"

#include "platform/Profile.h"

namespace korvenal::ui {

namespace {

class PlacedWindow : public MainWindow {
 public:
  using MainWindow::MainWindow;
  void doPlace(const MainWindowPlace&) override { resize(1000, 720); }
};

}  // namespace

WindowFixture::WindowFixture() {
  source = temp.makeFolder("source") + "/";
  target = temp.makeFolder("target");
  set("Devices", "dvcS_Name", "V");
  set("Backup", "Notice", "1");
}

WindowFixture::~WindowFixture() {
  doEnd();
}

Workspace WindowFixture::workspace() {
  const std::string app = temp.makeFolder("app") + "/";
  Workspace places = Workspace::below(app, app + "BIN/", temp.path());
  places.TempFolder = temp.makeFolder("scratch") + "/";
  return places;
}

void WindowFixture::set(const std::string& section, const std::string& key,
                        const std::string& value) {
  LinuxFiles files(nullptr);
  Profile(files, workspace().gSettingsFile).doWriteProfile(section, key, value);
}

void WindowFixture::doStart() {
  const Workspace places = workspace();
  platform = std::make_unique<LinuxPlatform>(LinuxPlatform::Places{
      .applicationFolder = places.applicationFolder,
      .imageDrives = {
          .folder = places.applicationFolder + "Discs/", .drives = imageDrives, .feeder = feeder}});
  desktop = std::make_unique<QtDesktop>();
  const Ports ports = platform->ports(*desktop);
  program = std::make_unique<frmMain>(ports, places);
  life = std::make_unique<Lifecycle>(*program, *desktop, tray);
  if (ownPlace)
    window_ = std::make_unique<PlacedWindow>(*program, *life, *desktop, ports);
  else
    window_ = std::make_unique<MainWindow>(*program, *life, *desktop, ports);
  life->doStart();
  window_->refresh();
}

void WindowFixture::doBackUpSource() {
  static_cast<MainWindow&>(window()).act([this] {
    program->doTask01();
    program->jobControls.setDiscType(0);
    program->addItems.doDropItems({temp.path() + "source"});
    program->job.doMarkChanged(false);
  });
  press("PBNext0");
  person.answers("frmLoadDisc", "pbOK");
  press("PBNext0");
  ASSERT_EQ(program->backupResult.end, BackupResult::End::Finished) << events(0);
}

void WindowFixture::doEnd() {
  if (!program) return;
  if (!life->isUnloaded()) program->doUnload();
  window_.reset();
  life.reset();
  program.reset();
  desktop.reset();
  platform.reset();
}

std::string WindowFixture::events(int action) {
  const Table& table = program->grids.vsEvent[static_cast<std::size_t>(action)];
  std::string all;
  for (int row = 1; row < table.Rows(); ++row) all += table.text(row, 1) + "\n";
  return all;
}

}  // namespace korvenal::ui

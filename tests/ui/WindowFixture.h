#pragma once

#include <gmock/gmock.h>

#include <memory>

#include "app/Lifecycle.h"
#include "platform/linux/LinuxPlatform.h"
#include "support/TempDir.h"
#include "ui/MainWindow.h"
#include "ui/Person.h"
#include "ui/QtDesktop.h"

namespace korvenal::ui {

/// A tray that is there when the test says so, and remembers what is in it.
class MemoryTray : public TrayArea {
 public:
  bool present = false;
  bool icon = false;
  std::vector<std::string> notices;

  bool isPresent() const override { return present; }
  void doAddIcon(const std::string&) override { icon = present; }
  void doRemoveIcon() override { icon = false; }
  void doNotify(const std::string& text) override { notices.push_back(text); }
};

/// The whole program in its window, over real files and image drives in a folder of its own. The
/// first image drive is chosen already, unless a test starts it otherwise.
class WindowFixture : public testing::Test {
 protected:
  WindowFixture();
  ~WindowFixture() override;

  /// Starts the program and shows the window. What a test wants changed first goes before.
  void doStart();
  /// Ends the program; another start finds what this one left.
  void doEnd();
  /// Backs the folder `source` up to a CD; what is ready to be restored.
  void doBackUpSource();
  /// A setting as a file holds it, before the start.
  void set(const std::string& section, const std::string& key, const std::string& value);

  QWidget& window() { return *window_; }
  template <typename Widget = QWidget>
  Widget& find(const std::string& name) {
    return Person::find<Widget>(*window_, name);
  }
  void press(const std::string& button) { Person::press(*window_, button); }
  /// Texts of the events of a page in the window's own table.
  std::string events(int action);

  test::TempDir temp;
  std::string source;  ///< with '/' at the end
  std::string target;
  int imageDrives = 1;
  bool feeder = true;
  Person person;
  std::unique_ptr<LinuxPlatform> platform;
  std::unique_ptr<QtDesktop> desktop;
  std::unique_ptr<frmMain> program;
  MemoryTray tray;
  bool ownPlace = true;  ///< the window comes up as large as tests want it, not as it was left
  std::unique_ptr<Lifecycle> life;

 private:
  Workspace workspace();

  std::unique_ptr<MainWindow> window_;
};

}  // namespace korvenal::ui

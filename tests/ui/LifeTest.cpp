#include <sys/stat.h>

#include <QApplication>
#include <QLocalSocket>
#include <QMenu>
#include <filesystem>

#include "start/ProgramStart.h"
#include "ui/FileTypes.h"
#include "ui/ShowRequests.h"
#include "ui/TrayIcon.h"
#include "ui/WindowFixture.h"

namespace korvenal::ui {
namespace {

using testing::ElementsAre;

class LifeTest : public WindowFixture {
 protected:
  /// The close box of the window's frame.
  void pressCloseBox() {
    QCloseEvent event;
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(&window(), &event);
  }
  void choose(const std::string& action) { find<QAction>(action).trigger(); }
  void doChangeJob() {
    temp.write("source/a.txt", "a");
    choose("page1");
    program->addItems.doDropItems({source + "a.txt"});
    ASSERT_TRUE(program->job.Modified);
  }
};

TEST_F(LifeTest, TheCloseBoxAsksAboutTheJobAndEnds) {
  doStart();
  doChangeJob();
  person.answers("messageBox", "Cancel");
  pressCloseBox();
  EXPECT_TRUE(window().isVisible());
  person.answers("messageBox", "No");
  pressCloseBox();
  EXPECT_FALSE(window().isVisible());
  EXPECT_TRUE(life->isUnloaded());
}

TEST_F(LifeTest, InTheTrayTheWindowHidesAndComesBackWhereItWas) {
  tray.present = true;
  set("Action", "SystemTray", "1");
  doStart();
  EXPECT_TRUE(tray.icon);
  doChangeJob();
  pressCloseBox();
  EXPECT_FALSE(window().isVisible());
  EXPECT_FALSE(life->isUnloaded());
  life->commander.doLeftClick();
  EXPECT_TRUE(window().isVisible());
  EXPECT_TRUE(program->job.hasItems());
  choose("mnClose");
  EXPECT_FALSE(window().isVisible());
}

TEST_F(LifeTest, WithoutATrayNothingHides) {
  set("Action", "SystemTray", "1");
  doStart();
  choose("mnClose");
  EXPECT_TRUE(life->isUnloaded());
}

TEST_F(LifeTest, AWorkingWindowStaysOpenWithoutAWord) {
  doStart();
  const FlagScope running(program->state.ActionRunning);
  pressCloseBox();
  choose("mnExitProgram");
  window().close();
  EXPECT_TRUE(window().isVisible());
  EXPECT_FALSE(life->isUnloaded());
}

TEST_F(LifeTest, ThePlaceOutlastsTheProgram) {
  ownPlace = false;
  const QSize screen = QGuiApplication::primaryScreen()->availableSize();
  set("MainWin", "State", "0");
  set("MainWin", "Width", "5000");
  set("MainWin", "Left", std::to_string(screen.width() * 15 * 9 / 10));
  doStart();
  EXPECT_EQ(window().width(), std::max(screen.width(), MainWindow::MinimumWidth));
  EXPECT_EQ(window().x(), 0);
  window().move(30, 45);
  pressCloseBox();
  doEnd();
  doStart();
  EXPECT_EQ(window().pos(), QPoint(30, 45));
}

TEST_F(LifeTest, TheTrayMenuFollowsTheProgram) {
  TrayIcon icon;
  doStart();
  icon.commander = &life->commander;
  icon.act = [](const std::function<void()>& wish) { wish(); };
  icon.doAddIcon("tip");
  const auto item = [&](const char* name) {
    return icon.menu()->findChild<QAction*>(QLatin1String(name));
  };
  const auto open = [&] {
    emit icon.menu()->aboutToShow();
    emit icon.menu()->aboutToHide();
  };
  open();
  EXPECT_FALSE(item("mnHide")->isVisible());
  EXPECT_FALSE(item("mnOpen")->isEnabled());
  item("mnSchedule")->trigger();
  EXPECT_EQ(program->controller.mainTab, ActionController::SchedulePage);
  life->doSetSystemTray(true);
  open();
  EXPECT_FALSE(item("mnSchedule")->isEnabled());
  EXPECT_TRUE(item("mnHide")->isVisible());
  item("mnHide")->trigger();
  EXPECT_FALSE(window().isVisible());
  person.when("frmDevice", [](QWidget& device) { QTest::keyClick(&device, Qt::Key_Escape); });
  item("mnDevice")->trigger();
  item("mnExit")->trigger();
  EXPECT_TRUE(life->isUnloaded());
}

TEST_F(LifeTest, AMessageOnTheSocketBringsTheWindowUp) {
  tray.present = true;
  doStart();
  choose("mnClose");
  const QString folder = QString::fromStdString(temp.path());
  temp.write("KORVEN2.socket", "left over");
  const ShowRequests requests(folder, [this] { life->doShow(); });
  struct stat info {};
  ASSERT_EQ(stat(ShowRequests::socketIn(folder).toLocal8Bit().constData(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0600U);

  const auto send = [&](const char* text) {
    QLocalSocket socket;
    socket.connectToServer(ShowRequests::socketIn(folder));
    ASSERT_TRUE(socket.waitForConnected());
    socket.write(text);
    EXPECT_TRUE(QTest::qWaitFor([&] { return socket.state() == QLocalSocket::UnconnectedState; }));
  };
  send("2036");
  EXPECT_FALSE(window().isVisible());
  send("2035\n");
  EXPECT_TRUE(window().isVisible());
}

TEST_F(LifeTest, AboutIsModalAndTellsTheVersion) {
  doStart();
  person.when("frmAbout", [this](QWidget& about) {
    EXPECT_TRUE(program->state.IgnoreEvents);
    EXPECT_EQ(Person::find<QLabel>(about, "ProductName").text(), QStringLiteral("Korvenal to DVD"));
    EXPECT_EQ(Person::find<QLabel>(about, "Version").text(), QStringLiteral("Version 2.0"));
    QTest::keyClick(&about, Qt::Key_Escape);
  });
  choose("mnAbout");
  EXPECT_TRUE(person.isDone());
  EXPECT_FALSE(program->state.IgnoreEvents);
}

TEST(FileTypes, AreToldOnceAndAgainWhenTheProgramMoved) {
  const test::TempDir temp;
  const QString data = QString::fromStdString(temp.path());
  const auto written = [&] {
    return std::filesystem::last_write_time(temp / "applications/korvenal.desktop");
  };
  doRegisterFileTypes(data, QStringLiteral("/opt/korvenal"));
  EXPECT_THAT(test::TempDir::read(temp / "applications/korvenal.desktop"),
              testing::HasSubstr("\nExec=\"/opt/korvenal\"\n"));
  EXPECT_THAT(test::TempDir::read(temp / "mime/packages/korvenal.xml"),
              testing::AllOf(testing::HasSubstr("*.jbf"), testing::HasSubstr("Backup Job File")));
  EXPECT_TRUE(std::filesystem::exists(
      temp / "icons/hicolor/scalable/mimetypes/application-x-korvenal2dvd.svg"));

  const auto longAgo = written() - std::chrono::hours(1);
  std::filesystem::last_write_time(temp / "applications/korvenal.desktop", longAgo);
  doRegisterFileTypes(data, QStringLiteral("/opt/korvenal"));
  EXPECT_EQ(written(), longAgo);
  doRegisterFileTypes(data, QStringLiteral("/opt/100%/$x"));
  EXPECT_THAT(test::TempDir::read(temp / "applications/korvenal.desktop"),
              testing::HasSubstr("\nExec=\"/opt/100%%/\\\\$x\"\n"));
}

TEST(ProgramStarts, OnlyOneStartsInAFolder) {
  const test::TempDir temp;
  StartFailure failure;
  const auto first = doStartProgram({.applicationFolder = temp / "app", .shelf = {}}, failure);
  ASSERT_TRUE(first);
  EXPECT_FALSE(doStartProgram({.applicationFolder = temp / "app", .shelf = {}}, failure));
  EXPECT_TRUE(failure.alreadyRunning);
}

/// The program itself, started as a process in a home of its own.
class StartedProgram : public testing::Test {
 protected:
  void start(QProcess& program) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QString home = QString::fromStdString(temp.path());
    for (const char* name : {"HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR", "TMPDIR"})
      environment.insert(QLatin1String(name), home);
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(QStringLiteral(KORVENAL_WINDOW), {});
  }
  /// True once the program listens for messages and signals.
  bool listens() {
    QLocalSocket socket;
    socket.connectToServer(ShowRequests::socketIn(QString::fromStdString(app)));
    return socket.waitForConnected();
  }
  int endOf(QProcess& program) {
    program.terminate();
    return program.waitForFinished() && program.exitStatus() == QProcess::NormalExit
               ? program.exitCode()
               : -1;
  }
  std::map<std::string, std::string> filesOfProgram() {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(app)) {
      const auto time = entry.last_write_time().time_since_epoch().count();
      files[entry.path().string()] =
          std::to_string(time) + (entry.is_regular_file() ? test::TempDir::read(entry.path()) : "");
    }
    return files;
  }

  test::TempDir temp;
  std::string app = temp.path() + "korvenal/";
};

TEST_F(StartedProgram, ASecondStartEndsInSilenceAndTouchesNothing) {
  temp.write("korvenal/KORVEN2.dat", "[Devices]\ndvcS_Name=V\n");
  StartFailure failure;
  const auto first = doStartProgram({.applicationFolder = app, .shelf = {}}, failure);
  ASSERT_TRUE(first);
  const auto before = filesOfProgram();
  QProcess second;
  start(second);
  ASSERT_TRUE(second.waitForFinished());
  EXPECT_EQ(second.exitCode(), 0);
  EXPECT_EQ(second.readAll().toStdString(), "");
  EXPECT_EQ(filesOfProgram(), before);
}

TEST_F(StartedProgram, TwoProcessesAreOneProgram) {
  temp.write("korvenal/KORVEN2.dat", "[Devices]\ndvcS_Name=V\n");
  QProcess first, second;
  start(first);
  ASSERT_TRUE(QTest::qWaitFor([this] { return listens(); }, 30000));
  start(second);
  ASSERT_TRUE(second.waitForFinished());
  EXPECT_EQ(second.exitCode(), 0);
  EXPECT_EQ(first.state(), QProcess::Running);
  EXPECT_EQ(endOf(first), 0);
  EXPECT_THAT(test::TempDir::read(app + "KORVEN2.dat"), testing::HasSubstr("[MainWin]"));
}

TEST_F(StartedProgram, ASignalEndsItWhileItsFirstDialogIsOpen) {
  QProcess program;
  start(program);
  ASSERT_TRUE(QTest::qWaitFor([this] { return listens(); }, 30000));
  EXPECT_EQ(endOf(program), 0);
  EXPECT_TRUE(std::filesystem::exists(temp / "mime/packages/korvenal.xml"));
}

}  // namespace
}  // namespace korvenal::ui

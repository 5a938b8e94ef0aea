#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QToolButton>
#include <ctime>
#include <filesystem>

#include "LoopWatch.h"
#include "PairedRounds.h"
#include "PlanBench.h"
#include "SampleIndex.h"
#include "start/ProgramStart.h"
#include "ui/MainWindow.h"
#include "ui/QtDesktop.h"
#include "ui/TrayIcon.h"

// The window: how long its event loop is kept waiting by an index of a million rows and, with a
// folder, by the estimate of that; with a second folder, by a backup and a restore of that; and how
// long a start takes until the window can be used. Usage: bench_window [FOLDER [FOLDER]], trees of
// make_tree.

namespace {

using namespace korvenal;
namespace fs = std::filesystem;

constexpr const char* StartOption = "--start";
constexpr int Rounds = 5;
constexpr int Dvd = 1;  ///< of the list of disc types: takes all files of a tree

/// Says yes to every question, and closes dialogs that wait for a person after some looks at them.
class AgreeingDesktop : public ui::QtDesktop {
 public:
  AgreeingDesktop() {
    QObject::connect(&looks_, &QTimer::timeout, &looks_, [this] { doLook(); });
    looks_.start(50);
  }
  Answer doShowMessage(const MessageBox& message) override {
    if (onRefresh) onRefresh();
    // A box that waits for a person leaves the loop its turns.
    QCoreApplication::processEvents();
    return message.buttons == MessageButtons::YesNo ? Answer::Yes : Answer::Ok;
  }
  std::string doAskSaveFile(const FileDialog&) override { return saveAs; }

  std::string saveAs;  ///< the file that a person would choose

 private:
  void doLook() {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || dialog->objectName() == QLatin1String("frmAddFiles")) {
      seen_ = 0;
      return;
    }
    if (dialog->objectName() == QLatin1String("frmBrowse")) return doBrowse(*dialog);
    if (dialog->objectName() == QLatin1String("frmLoadDisc")) {
      // A run that goes wrong asks for a disc without end.
      const char* way = ++prompts_ > MostPrompts ? "pbStop" : "pbOK";
      if (auto* button = dialog->findChild<QPushButton*>(QLatin1String(way))) button->click();
      return;
    }
    if (++seen_ < 10) {
      QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
      if (QWidget* focus = dialog->focusWidget()) QCoreApplication::sendEvent(focus, &down);
    } else {
      dialog->reject();
    }
  }

  /// Filters as one types, ticks all, looks at the entries in every way, and closes.
  void doBrowse(QDialog& dialog) {
    auto& filter = *dialog.findChild<QLineEdit*>(QStringLiteral("filter"));
    const QList<QAction*> views =
        dialog.findChild<QToolButton*>(QStringLiteral("view"))->menu()->actions();
    const QString typed = QStringLiteral("12 level");
    const int look = seen_++;
    if (look < typed.size()) return filter.setText(typed.left(look + 1));
    if (look == typed.size()) return filter.clear();
    if (look == typed.size() + 1)
      return dialog.findChild<QCheckBox*>(QStringLiteral("SelectAll"))->click();
    const int view = look - static_cast<int>(typed.size()) - 2;
    if (view < views.size()) return views[view]->trigger();
    dialog.reject();
  }

  static constexpr int MostPrompts = 100;

  QTimer looks_;
  int seen_ = 0;
  int prompts_ = 0;
};

/// A program in its window, with an application folder of its own.
class Program {
 public:
  /// The browser opens on the folder `browsed`.
  Program(const std::string& folder, const std::string& browsed) {
    StartFailure failure;
    start_ = doStartProgram({.applicationFolder = folder, .shelf = folder + "discs"}, failure);
    if (!start_) throw std::runtime_error(failure.text);
    const Ports ports = start_->platform->ports(desktop_);
    Profile profile(ports.files, start_->workspace.gSettingsFile);
    profile.doWriteProfile("Devices", "dvcS_Name", "V");
    profile.doWriteProfile("Browser", "Default", browsed);
    desktop_.saveAs = folder + "exported.txt";
    main_ = std::make_unique<frmMain>(ports, start_->workspace);
    life_ = std::make_unique<Lifecycle>(*main_, desktop_, noTray_);
    window_ = std::make_unique<ui::MainWindow>(*main_, *life_, desktop_, ports);
    life_->doStart();
  }
  frmMain& main() { return *main_; }
  ui::MainWindow& window() { return *window_; }

  void press(const char* button) {
    window_->findChild<QPushButton*>(QLatin1String(button))->click();
  }
  template <typename Widget>
  Widget& find(const char* name) {
    return *window_->findChild<Widget*>(QLatin1String(name));
  }
  void key(QWidget& widget, int key, const QString& text = {}) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&widget, &press);
  }

 private:
  AgreeingDesktop desktop_;
  std::optional<ProgramStart> start_;
  std::unique_ptr<frmMain> main_;
  ui::TrayIcon noTray_;  ///< never added
  std::unique_ptr<Lifecycle> life_;
  std::unique_ptr<ui::MainWindow> window_;
};

void measureIndex(Program& program, bench::LoopWatch& watch, const std::string& folder) {
  const std::string text = folder + "text", index = folder + "index.bdx";
  bench::writeSampleIndex(text);
  LinuxFiles files(nullptr);
  ZipIndexArchive archive(files);
  if (archive.compress(index, text, IndexPassword, {}) != 0) return;

  frmMain& main = program.main();
  ui::MainWindow& window = program.window();
  watch.measure("restore page", [&] { window.act([&] { main.doTask02(); }); });
  main.restorePage.txRestoreTo = folder;
  watch.measure("index opened, all selected",
                [&] { window.act([&] { main.indexOpening.doOpenIndexFile(index); }); });
  std::printf("%d rows\n", main.restorePage.vsRestore.Rows() - 1);
  auto& tree = program.find<QTableView>("vsRestore");
  auto& field = program.find<QLineEdit>("txFind");
  watch.measure("invert", [&] { program.press("pbInvertSelection"); });
  watch.measure("select all", [&] { program.press("pbSelectALL"); });
  watch.measure("collapse all", [&] { program.press("pbCollapse"); });
  watch.measure("check at the root", [&] { program.key(tree, Qt::Key_Space); });
  watch.measure("open the root", [&] { program.key(tree, Qt::Key_Right); });
  watch.measure("expand all", [&] { program.press("pbExpand"); });
  watch.measure("close the root", [&] { program.key(tree, Qt::Key_Left); });
  watch.measure("open it again", [&] { program.key(tree, Qt::Key_Right); });
  watch.measure("to the last row", [&] { program.key(tree, Qt::Key_End); });
  watch.measure("find while typing", [&] {
    for (const char letter : {'4', '1', '6', '6', ' ', 'l', 'e', 'v', 'e', 'l', ' ', '1', '2'}) {
      program.key(field, 0, QString(QLatin1Char(letter)));
      QCoreApplication::processEvents();
    }
  });
  watch.measure("find what is nowhere",
                [&] { program.key(field, Qt::Key_X, QStringLiteral("x")); });
  main.selection.doSelectAllRows();
  watch.measure("discs listed for the run", [&] { main.restore.doGetRestoreDisc(); });
  watch.measure("a new visit of the page",
                [&] { window.act([&] { main.selection.doInitRestoreGrid(); }); });
}

void measureEstimate(Program& program, bench::LoopWatch& watch, const std::string& tree) {
  frmMain& main = program.main();
  ui::MainWindow& window = program.window();
  watch.measure("backup page", [&] { window.act([&] { main.doTask01(); }); });
  watch.measure("browser", [&] { window.act([&] { main.PBAddFiles(); }); });
  watch.measure("item added", [&] { window.act([&] { main.addItems.doPickItems({tree}); }); });
  watch.measure("estimate", [&] { window.act([&] { main.estimate.pbEstimate(); }); });
  std::printf("%d rows, %s\n", main.plan.vsBuffer.Rows() - 1, main.estimate.EstimateDisc.c_str());
  watch.measure("report", [&] { window.act([&] { main.estimate.pbEstimateInfo(); }); });
}

void measureRuns(Program& program, bench::LoopWatch& watch, const std::string& tree,
                 const std::string& folder) {
  frmMain& main = program.main();
  ui::MainWindow& window = program.window();
  window.act([&] {
    main.doChangeTask(1);
    main.doTask01();
    main.jobControls.setDiscType(Dvd);
    main.addItems.doPickItems({tree});
    main.job.doMarkChanged(false);
  });
  watch.measure("to the backup run", [&] { program.press("PBNext0"); });
  watch.measure("backup and verification", [&] { program.press("PBNext0"); });
  std::printf("%d discs\n", main.plan.TotalDiscs);
  watch.measure("report of the disc shown",
                [&] { window.act([&] { main.grids.doShowDiscReport(1); }); });
  std::printf("%d rows in it\n", main.grids.vsError[0].Rows() - 1);
  for (const char* rows : {"only files with errors", "all files again"})
    watch.measure(rows, [&] { program.find<QCheckBox>("OnlyShowErrorFile").click(); });
  watch.measure("report saved as a text",
                [&] { window.act([&] { main.doExport(main.grids.vsError[0]); }); });
  watch.measure("the run page anew", [&] {
    program.press("PBBack0");
    program.press("PBNext0");
  });
  const std::string target = folder + "target";
  fs::create_directory(target);
  watch.measure("index read from the disc", [&] {
    window.act([&] {
      main.doTask02();
      main.restorePage.txRestoreTo = target;
      main.doLoadDisc();
    });
  });
  watch.measure("to the restore run", [&] { program.press("PBNext1"); });
  watch.measure("restore", [&] { program.press("PBNext1"); });
  std::printf("%d files wanted, %s\n", main.restorePage.SelectedFiles,
              main.restoreResult.end == RestoreResult::End::Finished ? "all restored" : "failed");
}

double monotonicSeconds() {
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

/// Ends the program at the first turn of its loop after the window was painted.
class FirstPaint : public QObject {
 public:
  bool painted = false;
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::UpdateRequest)
      QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    return QObject::eventFilter(watched, event);
  }
};

int startOnce(const std::string& folder, double begun) {
  FirstPaint watcher;
  qApp->installEventFilter(&watcher);
  const Program program(folder, folder);
  if (!watcher.painted) QApplication::exec();
  std::printf("start %.0f ms, resident memory %.1f MiB\n", (monotonicSeconds() - begun) * 1000,
              static_cast<double>(bench::memoryKilobytes("VmRSS:")) / 1024);
  return 0;
}

void measureStarts(const std::string& self, const std::string& folder) {
  for (int round = 0; round < Rounds; ++round) {
    std::fflush(stdout);
    const std::string begun = std::to_string(monotonicSeconds());
    const pid_t child = ::fork();
    if (child == 0) {
      ::execl(self.c_str(), self.c_str(), StartOption, folder.c_str(), begun.c_str(), nullptr);
      ::_exit(127);
    }
    ::waitpid(child, nullptr, 0);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
    qputenv("QT_QPA_PLATFORM", "offscreen");
  const std::string self = fs::read_symlink("/proc/self/exe");
  std::string folder = (fs::temp_directory_path() / "korvenal-bench-XXXXXX").string();
  if (argc == 4 && std::strcmp(argv[1], StartOption) == 0) {
    QApplication application(argc, argv);
    return startOnce(argv[2], std::atof(argv[3]));
  }
  if (::mkdtemp(folder.data()) == nullptr) return 1;
  folder += "/";
  measureStarts(self, folder);
  {
    QApplication application(argc, argv);
    Program program(folder, argc > 1 ? argv[1] : folder);
    bench::LoopWatch watch;
    measureIndex(program, watch, folder);
    if (argc > 1) measureEstimate(program, watch, argv[1]);
    if (argc > 2) measureRuns(program, watch, argv[2], folder);
    std::printf("longest wait of all %.1f ms\n", watch.worstMilliseconds());
  }
  fs::remove_all(folder);
}

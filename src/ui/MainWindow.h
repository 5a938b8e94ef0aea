#pragma once

#include <QMainWindow>
#include <array>
#include <vector>

#include "app/Lifecycle.h"
#include "ui/Page.h"
#include "ui/QtDesktop.h"

class QLabel;
class QStackedWidget;

namespace korvenal::ui {

/// The main window: its menus, the bar of pages and the pages. It shows the program and owns none
/// of its state.
class MainWindow : public QMainWindow, public MainFrame {
  Q_OBJECT
 public:
  static constexpr int MinimumWidth = 860;   ///< pixels
  static constexpr int MinimumHeight = 660;  ///< pixels

  /// All arguments outlive the window, which becomes the frame of this life.
  MainWindow(frmMain& main, Lifecycle& life, QtDesktop& desktop, const Ports& ports);
  ~MainWindow() override;

  /// Shows what has changed.
  void refresh();
  /// Runs what a person asked for, then shows what became of it.
  void act(const std::function<void()>& wish);

  /// Called when the program is unloaded and the event loop is to end.
  std::function<void()> onEnd;

  void doPlace(const MainWindowPlace& stored) override;
  MainWindowPlace place() const override;
  void doShow() override;
  void doHide() override;
  void doEnd() override;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void doBuildPages();
  void doBuildPageBar();
  void doBuildMenus();
  QWidget* steps(int action, Page* define, Page* run);
  void doShowAbout();

  frmMain& main_;
  Lifecycle& life_;
  QtDesktop& desktop_;
  Context context_;
  std::vector<Page*> pages_;  ///< every part that is refreshed, owned by their parents
  QStackedWidget* pageStack_ = nullptr;
  std::array<QStackedWidget*, 2> stepStacks_{};  ///< backup, restore
  std::vector<QAction*> pageActions_;            ///< by main page number
  QAction* newJob_ = nullptr;
  QAction* openJob_ = nullptr;
  QAction* saveJob_ = nullptr;
  QAction* openExplorer_ = nullptr;
  std::array<QAction*, 2> settings_{};
  QLabel* deviceName_ = nullptr;
};

}  // namespace korvenal::ui

#pragma once

#include <QMainWindow>
#include <array>
#include <vector>

#include "app/frmMain.h"
#include "ui/Page.h"
#include "ui/QtDesktop.h"

class QLabel;
class QStackedWidget;

namespace korvenal::ui {

/// The main window: its menus, the bar of pages and the pages. It shows the program and owns none
/// of its state.
class MainWindow : public QMainWindow {
  Q_OBJECT
 public:
  static constexpr int MinimumWidth = 860;   ///< pixels
  static constexpr int MinimumHeight = 660;  ///< pixels

  /// All arguments outlive the window.
  MainWindow(frmMain& main, QtDesktop& desktop, const Ports& ports);
  ~MainWindow() override;

  /// Shows what has changed.
  void refresh();
  /// Runs what a person asked for, then shows what became of it.
  void act(const std::function<void()>& wish);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void doBuildPages();
  void doBuildPageBar();
  void doBuildMenus();
  QWidget* steps(int action, Page* define, Page* run);
  void doShowHelp(const std::string& topic);
  void doShowAbout();

  frmMain& main_;
  QtDesktop& desktop_;
  Context context_;
  std::vector<Page*> pages_;  ///< every part that is refreshed, owned by their parents
  QStackedWidget* pageStack_ = nullptr;
  std::array<QStackedWidget*, 2> stepStacks_{};  ///< backup, restore
  std::vector<QAction*> pageActions_;            ///< by main page number
  QAction* newJob_ = nullptr;
  QAction* openJob_ = nullptr;
  QAction* saveJob_ = nullptr;
  QLabel* deviceName_ = nullptr;
};

}  // namespace korvenal::ui

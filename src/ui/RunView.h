#pragma once

#include <vector>

#include "app/RunDiscs.h"
#include "core/RunPace.h"
#include "ui/DiscBar.h"
#include "ui/Page.h"

class QCheckBox;
class QLabel;
class QProgressBar;
class QTabWidget;
class QToolButton;

namespace korvenal::ui {

class GridView;

/// A run page: its discs as bars, its progress, events, records and report.
class RunView : public Page {
  Q_OBJECT
 public:
  /// Action 0 backup, 1 restore, 2 erase.
  RunView(int action, const Context& context, QWidget* parent = nullptr);

  void refresh() override;

 private:
  QWidget* withMenu(GridView* grid, const char* menuName, const Table& table,
                    std::function<QString()> title);
  QWidget* reportTab();
  QWidget* progressRow();
  std::vector<RunDisc> discs() const;
  void refreshDiscs();
  void refreshProgress();
  void refreshTabs();
  void doShowReport(int record);
  int countErrors();

  std::size_t at() const { return static_cast<std::size_t>(action_); }

  int action_;
  RunPace pace_;
  std::vector<RunDisc> shown_;
  DiscStrip* strip_;
  QTabWidget* tabs_;
  GridView* vsEvent_ = nullptr;
  GridView* vsOutput_ = nullptr;
  GridView* vsError_ = nullptr;  ///< null for erasing, which has no report
  int reportRows_ = 1;           ///< lines of the report counted so far, its header included
  int reportErrors_ = 0;         ///< those of them that are no pass
  QCheckBox* OnlyShowErrorFile_ = nullptr;
  std::vector<QToolButton*> menus_;
  QWidget* ProgressPanel_ = nullptr;
  QLabel* etProgress_ = nullptr;
  QProgressBar* bar_ = nullptr;
};

}  // namespace korvenal::ui

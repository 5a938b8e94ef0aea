#pragma once

#include <QElapsedTimer>
#include <QPropertyAnimation>

#include "core/RunPace.h"
#include "ui/Page.h"

class QCheckBox;
class QLabel;
class QProgressBar;

namespace korvenal::ui {

class DiscStrip;
class GridMenu;
class RecordTable;
class RecordTabs;

/// A run page: its discs, its progress, events, records and report.
class RunView : public Page {
  Q_OBJECT
 public:
  /// Action 0 backup, 1 restore, 2 erase.
  RunView(int action, const Context& context, QWidget* parent = nullptr);

  void refresh() override;

 private:
  /// A tab: its table and the menu beside the tabs.
  struct Tab {
    RecordTable* table = nullptr;
    GridMenu* menu = nullptr;
    int index = -1;  ///< in the tabs; -1 for none
  };

  QLayout* progressLine();
  void addTab(Tab& tab, QWidget* content, const QString& caption);
  void doBuildEvents();
  void doBuildRecords();
  void doBuildErrors();
  void doRefreshProgress();
  void doRefreshErrors();
  void doMarkErrors();
  void doMarkTab(const Tab& tab, const QString& caption, int failures);
  void doShowReport(int row);
  bool hasErrors() const;
  bool isBackup() const { return action_ == ActionController::Backup; }

  int action_;
  DiscStrip* discs_;
  QWidget* ProgressPanel_ = nullptr;
  QLabel* etProgress_ = nullptr;
  QLabel* pace_ = nullptr;
  QProgressBar* bar_ = nullptr;
  QPropertyAnimation way_;  ///< of the bar to where the run is
  RecordTabs* tabs_;
  Tab events_;
  Tab records_;
  Tab errors_;
  QCheckBox* OnlyShowErrorFile_ = nullptr;
  RunPace runPace_;
  QElapsedTimer clock_;
};

}  // namespace korvenal::ui

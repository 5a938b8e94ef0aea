#pragma once

#include <vector>

#include "ui/Page.h"

class QCheckBox;
class QMenu;
class QTabWidget;

namespace korvenal::ui {

class GridView;

/// The start page: what one can do, and the records of what was done.
class StartPageView : public Page {
  Q_OBJECT
 public:
  explicit StartPageView(const Context& context, QWidget* parent = nullptr);

  void refresh() override;

 private:
  QWidget* taskBar();
  QWidget* options();
  QWidget* records();
  QWidget* recordTab(GridView* grid, const char* name, QMenu* menu);
  void doKey(const QString& key);
  void doSyncRow(const GridView& grid, Table& table);
  QMenu* recentMenu();
  QMenu* logMenu();

  std::vector<QWidget*> tasks_;
  QCheckBox* playSound_ = nullptr;
  QCheckBox* systemTray_ = nullptr;
  GridView* vsRecent_ = nullptr;
  GridView* vsLog_ = nullptr;
};

}  // namespace korvenal::ui

#pragma once

#include <array>
#include <vector>

#include "ui/Page.h"

class QCheckBox;
class QGridLayout;
class QLabel;

namespace korvenal::ui {

class GridMenu;
class RecordTable;
class RecordTabs;
class TaskCard;

/// The start page: what one can do, the options of the program, and what was done before.
class StartPageView : public Page {
  Q_OBJECT
 public:
  explicit StartPageView(const Context& context, QWidget* parent = nullptr);

  void refresh() override;

 private:
  void doBuildTaskBar(QGridLayout& grid);
  QWidget* options();
  QWidget* records();
  void doBuildRecent();
  void doBuildLog();
  void doSetOption(const std::function<void(bool)>& set, bool on);
  void doOpenRecent(int row);

  std::vector<TaskCard*> cards_;
  std::array<QCheckBox*, 2> OPChk_{};
  QLabel* noTray_ = nullptr;
  RecordTabs* tabs_ = nullptr;
  RecordTable* vsRecent_ = nullptr;
  RecordTable* vsLog_ = nullptr;
  GridMenu* pbRecent_ = nullptr;
  GridMenu* pbLog_ = nullptr;
};

}  // namespace korvenal::ui

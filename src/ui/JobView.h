#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ui/Page.h"

class QAction;
class QButtonGroup;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QToolButton;

namespace korvenal::ui {

class ContentsView;
class JobOptionsView;

/// The first step of a backup: the job's items and options, and how many discs it needs.
class JobView : public Page {
  Q_OBJECT
 public:
  explicit JobView(const Context& context, QWidget* parent = nullptr);

  void refresh() override;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  using Wish = std::function<void()>;

  QWidget* nameRow();
  QWidget* itemTools();
  QWidget* estimateRow();
  QToolButton* addTool(const char* name, const QString& text, const QString& icon,
                       const QString& toolTip, Wish wish);
  void doShowMenu(const QPoint& at);
  void doDrop(const std::vector<std::string>& paths);
  void doPickItems();
  void doOfferName();
  void doDrawName();
  void doEstimate();
  bool mayEdit() const;

  QLineEdit* txJobName_ = nullptr;
  QButtonGroup* optBackupType_ = nullptr;
  QPushButton* PBNewJob_ = nullptr;
  QPushButton* PBOpenJob_ = nullptr;
  QPushButton* PBSaveJob_ = nullptr;
  QToolButton* PBAddFiles_ = nullptr;
  QToolButton* pbCreateItem_ = nullptr;
  QToolButton* pbImportM3U_ = nullptr;
  QToolButton* PBRename_ = nullptr;
  QToolButton* PBDeleteFile_ = nullptr;
  QToolButton* PBMoveUp_ = nullptr;
  QToolButton* PBMoveDown_ = nullptr;
  QToolButton* PBClearAllFiles_ = nullptr;
  ContentsView* vsContents_ = nullptr;
  JobOptionsView* options_ = nullptr;
  QLabel* EstimateDisc_ = nullptr;
  QPushButton* pbEstimate_ = nullptr;
  QPushButton* pbEstimateInfo_ = nullptr;
};

}  // namespace korvenal::ui

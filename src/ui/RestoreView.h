#pragma once

#include <array>

#include "ui/Page.h"

class QAction;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QToolButton;

namespace korvenal::ui {

class RestoreOptionsView;
class RestoreTreeView;

/// The first step of a restore: the index, the tree of what it lists, what is picked of it, and
/// where it goes.
class RestoreView : public Page {
  Q_OBJECT
 public:
  explicit RestoreView(const Context& context, QWidget* parent = nullptr);

  void refresh() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* makeHead();
  QWidget* makeIndexLine();
  QWidget* makeTools();
  QWidget* makeFoot();
  QPushButton* makeButton(const char* name, const QString& text, const QString& icon,
                          const QString& toolTip);
  QToolButton* makeTool(const char* name, const QString& text, const QString& icon);
  void makeActions();
  QAction* addTreeAction(const char* name, const QString& text, const QKeySequence& shortcut,
                         void (RestoreView::*wish)());

  bool mayChange() const;
  void doLoadDisc();
  void doOpenFile();
  void doSelectAll();
  void doInvert();
  void doExpand();
  void doCollapse();
  void doAskName();
  void doFindNext();
  void doFindTyped(const QString& text);
  void doGoToFind();
  void showMissing(bool missing);
  void refreshInfo();

  QPushButton* pbLoaddisc_ = nullptr;
  QPushButton* openFile_ = nullptr;
  QLabel* vsBackupIndex_ = nullptr;
  QProgressBar* bar_ = nullptr;
  /// A fact about the backup with its mark.
  struct Fact {
    QWidget* mark = nullptr;
    QLabel* text = nullptr;
  };
  std::array<Fact, 2> info_;
  QPushButton* pbSelectALL_ = nullptr;
  QPushButton* pbInvertSelection_ = nullptr;
  QPushButton* pbExpand_ = nullptr;
  QPushButton* pbCollapse_ = nullptr;
  QLineEdit* txFind_ = nullptr;
  QToolButton* pbFind_ = nullptr;
  QToolButton* pbFindNext_ = nullptr;
  RestoreTreeView* tree_ = nullptr;
  QLabel* totals_ = nullptr;
  QLabel* missing_ = nullptr;
  RestoreOptionsView* options_ = nullptr;
  QAction* mnSelectall_ = nullptr;
  QAction* mnInvertSelect_ = nullptr;
  QAction* mnFind_ = nullptr;
  QAction* mnFindNext_ = nullptr;
};

}  // namespace korvenal::ui

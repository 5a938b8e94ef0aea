#pragma once

#include <array>
#include <memory>

#include "ui/BrowseModel.h"
#include "ui/FormDialog.h"
#include "ui/FormDialogs.h"

class QAbstractFileIconProvider;
class QCheckBox;
class QFileSystemModel;
class QLabel;
class QLineEdit;
class QListView;
class QPushButton;
class QStackedWidget;
class QTableView;
class QTreeView;

namespace korvenal::ui {

/// The browser that picks items: the tree of folders, and the entries of one with a box each.
class BrowseDialog : public FormDialog {
  Q_OBJECT
 public:
  BrowseDialog(frmBrowse& form, const DialogServices& services, QWidget* parent);
  ~BrowseDialog() override;

 protected:
  void refresh() override;
  void hideEvent(QHideEvent* event) override;
  /// The keys of the entries.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* pathRow();
  QWidget* folders();
  QWidget* entries();
  QWidget* foot();
  void doShowFolder(const QString& path);
  void doOpen(const QModelIndex& index);
  void doTick(const QModelIndex& index);
  void doSelectAll();
  /// The state of the box over what the filter shows.
  Qt::CheckState allState() const;
  void doSetView(int view);
  void refreshFolder();
  void refreshPlace();

  frmBrowse& form_;
  DialogServices services_;
  BrowseModel model_;
  std::unique_ptr<QAbstractFileIconProvider> folderIcons_;
  std::unique_ptr<QFileSystemModel> folderModel_;  ///< its thread asks for icons
  QLineEdit* path_ = nullptr;
  QLineEdit* filter_ = nullptr;
  QTreeView* folders_ = nullptr;
  QStackedWidget* views_ = nullptr;
  QTableView* report_ = nullptr;
  QListView* icons_ = nullptr;
  QCheckBox* SelectAll_ = nullptr;
  QLabel* count_ = nullptr;
  std::array<QPushButton*, 2> CMD_{};
  QString folderShown_;
  std::size_t entriesShown_ = 0;
};

}  // namespace korvenal::ui

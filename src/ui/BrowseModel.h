#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "job/frmBrowse.h"
#include "ui/FileIcons.h"
#include "ui/Thumbnails.h"

namespace korvenal::ui {

/// The entries of the folder in view, each with its box. Entries whose names do not hold the text
/// typed are out of view; their boxes stay as they are.
class BrowseModel : public QAbstractTableModel {
  Q_OBJECT
 public:
  enum Column : int { NameColumn, SizeColumn, TypeColumn, ModifiedColumn, Columns };

  BrowseModel(frmBrowse& form, Desktop& desktop, QObject* parent = nullptr);

  /// Takes the folder over as it is now.
  void refresh();
  /// Boxes have changed.
  void refreshTicks();
  void setFilter(const QString& text);
  void setThumbnails(bool on);
  const frmBrowse::Entry& entry(const QModelIndex& index) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation,
                      int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 signals:
  void ticked(std::size_t entry, bool on);

 private:
  void fill();
  QIcon icon(const frmBrowse::Entry& entry) const;
  QString text(const frmBrowse::Entry& entry, int column) const;
  void showMade(const QString& path);

  frmBrowse& form_;
  Desktop& desktop_;
  FileIcons icons_;
  mutable Thumbnails thumbnails_;
  bool withThumbnails_ = false;
  QString filter_;
  std::vector<std::size_t> shown_;  ///< places in the form's entries
};

}  // namespace korvenal::ui

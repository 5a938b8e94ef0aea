#pragma once

#include <QAbstractTableModel>
#include <QHash>
#include <QTimer>
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

  /// Takes the folder over as it is now; a large one by and by, whenever the program has time.
  void refresh();
  /// Takes over what is left of it; yields.
  void finish();
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
  /// Any number of entries look otherwise: views paint what is in sight anew. Telling a list which
  /// rows would make it work out the place of each.
  void looksChanged();

 private:
  bool isBehind() const { return seen_ < form_.entries().size(); }
  bool isWanted(const frmBrowse::Entry& entry) const;
  void doLookOn(std::vector<std::size_t>& shown);
  void doTakeMore();
  QIcon icon(const frmBrowse::Entry& entry) const;
  QString text(const frmBrowse::Entry& entry, int column) const;
  void showMade(const QString& path);

  frmBrowse& form_;
  Desktop& desktop_;
  FileIcons icons_;
  mutable Thumbnails thumbnails_;
  bool withThumbnails_ = false;
  QString filter_;
  std::vector<std::size_t> shown_;  ///< places in the form's entries, ascending
  std::size_t seen_ = 0;            ///< of the form's entries
  QTimer more_;
  mutable QHash<QString, std::size_t> pictured_;  ///< entries whose pictures were asked for
};

}  // namespace korvenal::ui

#pragma once

#include <QTabWidget>

class QStackedLayout;

namespace korvenal::ui {

class GridMenu;
class RecordTable;

/// Tables behind tabs. The menu of the table in view stands at the right of the tabs.
class RecordTabs : public QTabWidget {
  Q_OBJECT
 public:
  RecordTabs(const QString& name, QWidget* parent);

  /// Adds a tab for a table with its menu, which the right mouse button opens as well. `page` holds
  /// the table, or is the table itself. The number of the tab, from 0.
  int addTable(QWidget* page, RecordTable& table, GridMenu& menu, const QString& caption);

 private:
  QStackedLayout* corner_;
};

}  // namespace korvenal::ui

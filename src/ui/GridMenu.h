#pragma once

#include <QToolButton>
#include <vector>

#include "ui/Page.h"

namespace korvenal::ui {

/// One item of a table's menu.
struct GridMenuItem {
  QString text;
  QString icon;
  std::function<void()> run;
  std::function<bool()> isEnabled;
  QKeySequence key;  ///< shown; the table itself listens to it
};

/// A button with the menu of a table. Items are numbered from 1: their object names are the
/// button's with "_" and the number. They are asked whether they are enabled as the menu opens, and
/// again as one is chosen.
class GridMenu : public QToolButton {
  Q_OBJECT
 public:
  GridMenu(const QString& name, const std::vector<GridMenuItem>& items, const Context& context,
           QWidget* parent = nullptr);

  /// Enables the items and the button as things are now.
  void refresh();
  /// Chooses an item by its number; nothing while it is disabled.
  void doChoose(int number);

 private:
  Context context_;
  std::vector<GridMenuItem> items_;
  std::vector<QAction*> actions_;
};

/// The two items that every table of a run has: 1 save to a text file, 2 print.
std::vector<GridMenuItem> saveAndPrint(const Context& context, const Table& table,
                                       const std::string& title,
                                       const std::function<bool()>& isEnabled);

}  // namespace korvenal::ui
